// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

// The file name pattern of an item whose spots are found by name: folder, fixed part, date part, extension.
struct FileNamePattern {
  QString directory;
  QString fixedPart;
  int variableCode = 0;    // 1 "ddmmyyyy", 2 "ddmmyyyyhh", 3 "ww", 4 "mm"; 0 = none
  QString format;          // the chosen entry's text, used as a date format
  int firstDayOfWeek = 0;  // 1 = Sunday to 7 = Saturday, 0 = system setting; for "ww" only
  QString extension;       // without the point
  bool severalSpots = false;
};

// The path for that moment; with several spots the name ends in "-x". Empty while folder or extension is missing, or
// when there is neither a fixed nor a variable part.
QString FileNameExample(const FileNamePattern& pattern, const QDateTime& moment);

// The same with a number from 1 in place of the "x": the file to play.
QString NumberedFileName(const FileNamePattern& pattern, const QDateTime& moment, int number);
