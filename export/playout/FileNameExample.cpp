// SPDX-License-Identifier: MIT
#include "export/playout/FileNameExample.h"

#include "data/Text.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kWeekCode = 3;
constexpr int kSunday = 1;

QString VariablePart(const FileNamePattern& pattern, const QDateTime& moment) {
  if (pattern.variableCode < 1 || pattern.variableCode > 10) return {};
  const int firstDay = pattern.variableCode == kWeekCode ? pattern.firstDayOfWeek : kSunday;
  return runtime::FormatDate(moment, pattern.format, firstDay);
}

QString FileName(const FileNamePattern& pattern, const QDateTime& moment, const QString& number) {
  if (IsKull(pattern.directory) || IsKull(pattern.extension)) return {};
  if (IsKull(pattern.fixedPart) && pattern.variableCode == 0) return {};
  return runtime::TrimBlanks(pattern.directory) + u'\\' + runtime::TrimBlanks(pattern.fixedPart) +
         VariablePart(pattern, moment) + (pattern.severalSpots ? QString(u'-' + number) : QString()) + u'.' +
         runtime::TrimBlanks(pattern.extension);
}

}  // namespace

QString FileNameExample(const FileNamePattern& pattern, const QDateTime& moment) {
  return FileName(pattern, moment, u"x"_s);
}

QString NumberedFileName(const FileNamePattern& pattern, const QDateTime& moment, int number) {
  return FileName(pattern, moment, QString::number(number));
}
