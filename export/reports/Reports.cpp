// SPDX-License-Identifier: MIT
#include "export/reports/Reports.h"

#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "data/Usage.h"
#include "data/forms/SpotDetails.h"
#include "export/reports/ReportParts.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Dates.h"

using namespace Qt::StringLiterals;
using runtime::DateText;

Report CatalogueReport(const FilePresences& presences) {
  Report report = NewReport(u"Item-spots"_s);
  report.columns = {{u"Naam"_s, 35}, {u"Lengte"_s, 9, true}, {u"Startdatum"_s, 13},    {u"Einddatum"_s, 13},
                    {u"Uren"_s, 7},  {u"Status"_s, 23},      {u"Gedraaid"_s, 0, true}, {u"Path"_s, 0}};
  report.emptyText = u"Er zijn nog geen item-spots."_s;
  Report::Group all;
  qint32 seconds = 0;
  for (dao::Recordset row = Rows(u"SELECT * FROM %1 ORDER BY Naam"_s.arg(CurrentCatalogue().itemSpots)); !row.Eof();
       row.MoveNext()) {
    const SpotFacts spot = FactsOf(row);
    seconds += spot.lengteSec.value_or(0);
    all.lines.push_back({TextOf(row, u"Naam"_s), LengthText(spot.lengteSec), DateText(spot.startDatum),
                         DateText(spot.eindDatum), Hours(spot), StateOn(spot, presences, report),
                         TextOf(row, u"AantalGedraaid"_s), spot.path});
  }
  if (all.lines.empty()) return report;
  report.closing = SpotsAndLength(static_cast<qsizetype>(all.lines.size()), seconds);
  report.groups.push_back(std::move(all));
  return report;
}

Report EndingReport() {
  const QDate today = runtime::Now().date();
  Report report = NewReport(u"Item-spots die binnen %1 dagen verlopen"_s.arg(kPaperDays));
  report.columns = {{u"Einddatum"_s, 12}, {u"Nog dagen"_s, 14, true}, {u"Naam"_s, 37}, {u"Gebruikt in"_s, 37}};
  report.emptyText = u"Binnen %1 dagen verloopt er geen enkele aktieve item-spot."_s.arg(kPaperDays);
  Report::Group ending;
  for (dao::Recordset row =
           Rows(u"SELECT * FROM %1 WHERE Aktief = 1 ORDER BY EindDatum, Naam"_s.arg(CurrentCatalogue().itemSpots));
       !row.Eof(); row.MoveNext()) {
    const SpotFacts spot = FactsOf(row);
    const qint64 days = spot.eindDatum ? today.daysTo(*spot.eindDatum) : -1;
    if (days < 0 || days > kPaperDays) continue;
    ending.lines.push_back({DateText(spot.eindDatum), QString::number(days), TextOf(row, u"Naam"_s),
                            ItemsWithSpot(row.Field(u"ID"_s).toInt(), CurrentCatalogue()).join(u", "_s)});
  }
  if (ending.lines.empty()) return report;
  report.closing = runtime::Counted(static_cast<qsizetype>(ending.lines.size()), u"item-spot"_s, u"item-spots"_s);
  report.groups.push_back(std::move(ending));
  return report;
}
