// SPDX-License-Identifier: MIT
#include "export/reports/ReportParts.h"

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/forms/SpotDetails.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Numbers.h"

#include <QLocale>

using namespace Qt::StringLiterals;

dao::Recordset Rows(const QString& select) {
  dao::Database database = dao::OpenDatabase(CurrentCatalogue().databasePath);
  return database.OpenRecordset(select);
}

QString TextOf(const dao::Recordset& row, const QString& field) {
  return runtime::TrimBlanks(row.Field(field).toString());
}

QString Hours(const SpotFacts& spot) {
  return u"%1–%2"_s.arg(spot.startUur.value_or(0)).arg(spot.eindUur.value_or(23));
}

QString StateOn(SpotFacts spot, const FilePresences& presences, Report& report) {
  if (!spot.path.isEmpty()) report.files += spot.path;
  const auto found = presences.constFind(spot.path);
  if (found != presences.constEnd()) spot.file = *found;
  return StateText(spot, StateOf(spot, runtime::Now()));
}

QString SpotsAndLength(qsizetype count, qint32 seconds) {
  return runtime::Counted(count, u"item-spot"_s, u"item-spots"_s) + u", samen "_s + LengthText(seconds);
}

Report NewReport(const QString& title) {
  Report report;
  report.title = title;
  const QString station = global.stationName.isEmpty() ? u"Geen zender"_s : global.stationName;
  const QString day = QLocale(QLocale::Dutch).toString(runtime::Now().date(), u"dddd d MMMM yyyy"_s);
  report.subtitle = station + (global.online ? u" · online · "_s : u" · offline · "_s) + day;
  return report;
}
