// SPDX-License-Identifier: MIT
#include "export/apply/Report.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {

int Result::Count(What what) const {
  return static_cast<int>(std::ranges::count(lines, what, &ReportLine::what));
}

QString Result::Summary() const {
  QStringList parts;
  const auto add = [&](int count, const QString& word) {
    if (count > 0) parts += QString::number(count) + u' ' + word;
  };
  const int renumbered = Count(What::Renumbered);
  QString created = u"nieuw"_s;
  if (renumbered == 1) created += u" (1 kreeg een ander nummer)";
  if (renumbered > 1) created += u" (%1 kregen een ander nummer)"_s.arg(renumbered);
  add(Count(What::New) + renumbered, created);
  add(Count(What::Changed), u"gewijzigd"_s);
  add(Count(What::Deleted), u"verwijderd"_s);
  const int conflicts = Count(What::Conflict);
  add(conflicts, conflicts == 1 ? u"botst"_s : u"botsen"_s);
  const int unchanged = Count(What::Unchanged);
  add(unchanged, unchanged == 1 ? u"stond er al zo"_s : u"stonden er al zo"_s);
  return parts.isEmpty() ? u"niets te doen"_s : parts.join(u", "_s);
}

bool Result::LooksCarriedOutElsewhere() const {
  const auto isOfFile = [](const ReportLine& line) { return line.what != What::Note; };
  const auto records = std::ranges::count_if(lines, isOfFile);
  return records > 0 && Count(What::Unchanged) * 2 > records;
}

QString WordFor(What what) {
  switch (what) {
    case What::New:
      return u"nieuw"_s;
    case What::Renumbered:
      return u"nieuw, ander nummer"_s;
    case What::Changed:
      return u"gewijzigd"_s;
    case What::Deleted:
      return u"verwijderd"_s;
    case What::Unchanged:
      return u"stond er al zo"_s;
    case What::Conflict:
      return u"botst"_s;
    case What::Note:
      return u"let op"_s;
  }
  return {};
}

QString RecordText(Table table, qint64 number, const QString& name) {
  const QString record = WordFor(table) + u' ' + QString::number(number);
  return name.isEmpty() ? record : record + u" \"" + name + u'"';
}

QStringList ReportHeader() {
  return {u"Bestand"_s, u"Regel"_s, u"Wat"_s, u"Soort"_s, u"Nummer"_s, u"Nummer op de server"_s,
          u"Naam"_s,    u"Uitleg"_s};
}

QList<QStringList> ReportRows(const Result& result) {
  QList<QStringList> rows;
  if (result.doneBefore) {
    rows += {result.path,
             {},
             u"eerder verwerkt"_s,
             {},
             {},
             {},
             {},
             result.processed.toString(u"dd-MM-yyyy HH:mm:ss"_s) + u' ' + result.processedName};
  }
  const auto number = [](qint64 value) { return value == 0 ? QString() : QString::number(value); };
  for (const ReportLine& line : result.lines) {
    rows += {result.path,         number(line.line),
             WordFor(line.what),  line.number == 0 ? QString() : WordFor(line.table),
             number(line.number), number(line.serverNumber),
             line.name,           line.text};
  }
  return rows;
}

}  // namespace apply
