// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"
#include "export/playout/AirLedger.h"
#include "export/reports/ReportParts.h"
#include "export/reports/Reports.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Dates.h"

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::DateText;

namespace {

// Names of a table's records by ID.
QHash<qint32, QString> NamesById(const QString& table) {
  QHash<qint32, QString> names;
  for (dao::Recordset row = Rows(u"SELECT ID, Naam FROM "_s + table); !row.Eof(); row.MoveNext())
    names.insert(row.Field(u"ID"_s).toInt(), TextOf(row, u"Naam"_s));
  return names;
}

QString NameIn(const QHash<qint32, QString>& names, qint32 id, const QString& what) {
  const QString name = names.value(id);
  return name.isEmpty() ? what + u' ' + QString::number(id) + u" (verwijderd)"_s : name;
}

QString TitleOf(QDate first, QDate last) {
  return u"Uitzendverslag "_s +
         (first == last ? DateText(first) : DateText(first) + u" tot en met "_s + DateText(last));
}

// Whether the catalogue's database has a ledger of airings.
bool HasLedger() {
  return dao::OpenDatabase(CurrentCatalogue().databasePath, {.readOnly = true})
      .TableNames()
      .contains(kLedgerTable, Qt::CaseInsensitive);
}

}  // namespace

Report AiringsReport(std::optional<qint32> spotID, QDate first, QDate last) {
  Report report = NewReport(TitleOf(first, last));
  report.groupTitle = u"Item-spot"_s;
  report.columns = {{u"Dag"_s, 20}, {u"Tijd"_s, 15}, {u"Item"_s, 65}};
  report.emptyText = u"In deze periode is er niets geteld."_s;
  if (!HasLedger()) {
    report.emptyText = u"In deze database worden geen uitzendingen geteld. De beheerder kan dat aanzetten."_s;
    return report;
  }
  const QHash<qint32, QString> spots = NamesById(CurrentCatalogue().itemSpots);
  const QHash<qint32, QString> items = NamesById(CurrentCatalogue().items);
  const QString only = spotID ? u" AND ItemSpotID = "_s + QString::number(*spotID) : QString();
  const QString select = u"SELECT * FROM %1 WHERE Moment >= %2 AND Moment < %3%4 ORDER BY ItemSpotID, Moment"_s.arg(
      kLedgerTable, QString::number(runtime::DayNumber(first)), QString::number(runtime::DayNumber(last) + 1), only);
  int count = 0;
  qint32 current = 0;
  for (dao::Recordset row = Rows(select); !row.Eof(); row.MoveNext(), ++count) {
    const qint32 spot = row.Field(u"ItemSpotID"_s).toInt();
    if (report.groups.empty() || spot != current)
      report.groups.push_back({NameIn(spots, spot, u"Item-spot"_s), {}, {}});
    current = spot;
    const QDateTime moment = row.Field(u"Moment"_s).toDateTime();
    const qint32 item = row.Field(u"ItemID"_s).toInt();
    report.groups.back().lines.push_back({DateText(moment.date()), moment.toString(u"HH:mm:ss"_s),
                                          item == 0 ? QString() : NameIn(items, item, u"Item"_s)});
  }
  for (Report::Group& group : report.groups)
    group.note = runtime::Counted(static_cast<qsizetype>(group.lines.size()), u"keer"_s, u"keer"_s);
  std::stable_sort(report.groups.begin(), report.groups.end(),
                   [](const Report::Group& left, const Report::Group& right) {
                     return left.name.compare(right.name, Qt::CaseInsensitive) < 0;
                   });
  if (count > 0) report.closing = runtime::Counted(count, u"uitzending"_s, u"uitzendingen"_s);
  return report;
}
