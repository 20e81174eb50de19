// SPDX-License-Identifier: MIT
#include "platform/runtime/Dates.h"

#include "platform/runtime/Error.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

constexpr qint64 kMillisecondsADay = 86'400'000;
const QDate kDayZero(1899, 12, 30);
const QDate kFirstDate(100, 1, 1);
const QDate kLastDate(9999, 12, 31);
constexpr double kFirstDay = -657434;
constexpr double kLastDay = 2958465;

// 1 = Sunday to 7 = Saturday, from Qt's 1 = Monday to 7 = Sunday.
int SundayFirst(int qtDay) {
  return qtDay % 7 + 1;
}

QString Padded(int number, qsizetype width) {
  return u"%1"_s.arg(number, static_cast<int>(width), 10, QChar(u'0'));
}

// The value of one run of equal letters, e.g. "dd" or "yyyy". Nothing when the letter has no meaning.
std::optional<QString> FormatRun(const QDateTime& moment, QChar letter, qsizetype length, bool afterHour,
                                 int firstDayOfWeek) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  switch (letter.toLower().unicode()) {
    case u'd':
      return Padded(date.day(), length);
    case u'm':
      return Padded(afterHour ? time.minute() : date.month(), length);
    case u'y':
      return length > 2 ? Padded(date.year(), 4) : Padded(date.year() % 100, 2);
    case u'h':
      return Padded(time.hour(), length);
    case u'n':
      return Padded(time.minute(), length);
    case u's':
      return Padded(time.second(), length);
    case u'w':
      return length == 2 ? std::optional(Padded(WeekOfYear(date, firstDayOfWeek), 2)) : std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

qint32 DayNumber(QDate date) {
  return static_cast<qint32>(kDayZero.daysTo(date));
}
QDate DateOfDayNumber(qint32 day) {
  return kDayZero.addDays(day);
}

// Jet stores the time as the absolute fraction, so that -1.25 is 06:00 on day -1.
double DayNumber(const QDateTime& moment) {
  const double day = DayNumber(moment.date());
  const double fraction = double(moment.time().msecsSinceStartOfDay()) / double(kMillisecondsADay);
  return day < 0 ? day - fraction : day + fraction;
}

QDateTime MomentOfDayNumber(double day) {
  if (!(day > kFirstDay - 1 && day < kLastDay + 1)) {
    throw Error(u"Overloop: dagnummer %1 is geen datum van 1-1-100 tot 31-12-9999."_s.arg(day));
  }
  const double whole = std::trunc(day);
  QDate date = DateOfDayNumber(static_cast<qint32>(whole));
  qint64 ms = std::llround(std::abs(day - whole) * double(kMillisecondsADay));
  if (ms >= kMillisecondsADay) {
    date = date.addDays(1);
    ms = 0;
  }
  return {date, QTime::fromMSecsSinceStartOfDay(static_cast<int>(ms))};
}

std::optional<QDate> ParseDate(const QString& text) {
  static const QRegularExpression kForm(u"^ *(\\d{1,2})([-/.])(\\d{1,2})\\2(\\d{1,4}) *$"_s);
  const QRegularExpressionMatch match = kForm.match(text);
  if (!match.hasMatch()) return std::nullopt;
  int year = match.captured(4).toInt();
  if (match.captured(4).size() <= 2) year += year < 30 ? 2000 : 1900;
  const QDate date(year, match.captured(3).toInt(), match.captured(1).toInt());
  if (!date.isValid() || date < kFirstDate || date > kLastDate) return std::nullopt;
  return date;
}

int WeekOfYear(QDate date, int firstDayOfWeek) {
  const int first = firstDayOfWeek == 0 ? SundayFirst(QLocale::system().firstDayOfWeek()) : firstDayOfWeek;
  const int newYear = SundayFirst(QDate(date.year(), 1, 1).dayOfWeek());
  const int daysBefore = (newYear - first + 7) % 7;
  return (date.dayOfYear() - 1 + daysBefore) / 7 + 1;
}

QString DateText(const std::optional<QDate>& date) {
  return date ? date->toString(u"dd-MM-yyyy") : QString();
}

QString FormatDate(const QDateTime& moment, const QString& format, int firstDayOfWeek) {
  QString result;
  bool afterHour = false;
  for (qsizetype at = 0; at < format.size();) {
    qsizetype end = at;
    while (end < format.size() && format[end].toLower() == format[at].toLower())
      ++end;
    const QChar letter = format[at].toLower();
    const auto value = FormatRun(moment, letter, end - at, afterHour, firstDayOfWeek);
    result += value ? *value : format.mid(at, end - at);
    if (letter.isLetter()) afterHour = letter == u'h';
    at = end;
  }
  return result;
}

}  // namespace runtime
