// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

namespace runtime {

// Day numbers count days since 30-12-1899 (day 0); earlier dates are negative. Range 1-1-100 to 31-12-9999.
qint32 DayNumber(QDate date);
QDate DateOfDayNumber(qint32 day);
// With the time of day as the fraction. The fraction counts forward within its day, also before day 0: -1.25 is
// 29-12-1899 06:00. MomentOfDayNumber throws an Error outside the range.
double DayNumber(const QDateTime& moment);
QDateTime MomentOfDayNumber(double day);

// A date as a user types it: day, month, year (dd-mm-yyyy, also with / or . and without leading zeros; two-digit years
// are in 1930 to 2029). Nothing when the text is not a date from 1-1-100 to 31-12-9999.
std::optional<QDate> ParseDate(const QString& text);

// The date as shown everywhere, "31-01-2024"; empty without a date.
QString DateText(const std::optional<QDate>& date);

// Week of the year, counted within the date's own year: the week of 1 January is week 1, so late December is week 53
// or 54. First day of the week: 1 = Sunday to 7 = Saturday; 0 = the system's setting.
int WeekOfYear(QDate date, int firstDayOfWeek);

// Formats by letters: d dd, m mm (minutes directly after h or hh), yy yyyy, h hh, n nn, s ss, ww (two digits); every
// other character is copied. Only ww uses firstDayOfWeek (as above).
QString FormatDate(const QDateTime& moment, const QString& format, int firstDayOfWeek = 1);

}  // namespace runtime
