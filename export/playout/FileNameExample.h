// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

// The pattern of an item whose spots are found by name: a fixed part, a date part and an extension in one folder.
struct FileNamePattern {
  QString directory;
  QString fixedPart;
  int variableCode = 0;    // 1 "ddmmyyyy", 2 "ddmmyyyyhh", 3 "ww", 4 "mm"; 0 = none
  QString format;          // the chosen entry's text, used as a date format
  int firstDayOfWeek = 0;  // 1 = Sunday to 7 = Saturday, 0 = the system's own; for "ww" alone
  QString extension;       // without the point
  bool severalSpots = false;
};

// The name that the pattern gives at that moment, with its folder. Empty while folder or extension is missing, or when
// neither a fixed nor a variable part is given.
// With several spots it ends in "-x".
QString FileNameExample(const FileNamePattern& pattern, const QDateTime& moment);

// The same with a number, from 1 on, in place of the "x": the file that is looked for.
QString NumberedFileName(const FileNamePattern& pattern, const QDateTime& moment, int number);
