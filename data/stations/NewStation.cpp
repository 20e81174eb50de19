// SPDX-License-Identifier: MIT
#include "data/stations/NewStation.h"

#include "data/Globals.h"
#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Probe.h"

#include <QSet>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

QString LocalPath(const QString& number) {
  return global.programFolder + u"\\data\\OvalistoLocal"_s + number + u".mdb"_s;
}

QSet<qint32> ListedNumbers() {
  QSet<qint32> numbers;
  if (!runtime::IsThere(LocalPath({}))) return numbers;
  dao::Database database = dao::OpenDatabase(LocalPath({}));
  dao::Recordset rows = database.OpenRecordset(u"SELECT LicentieNummer FROM cdeLicenties"_s);
  for (; !rows.Eof(); rows.MoveNext())
    numbers += runtime::ToLong(rows.Field(0));
  return numbers;
}

void MakeServerDatabase(qint16 number, const QString& name) {
  if (global.databasePath.isEmpty()) {
    throw runtime::Error(
        u"In ovalis.ini staat geen map voor de gedeelde database. Kies eerst een map bij Instellingen en start opnieuw."_s);
  }
  const QString path = global.databasePath + u"\\OvalistoServer%1.mdb"_s.arg(number);
  const bool onServer = dao::IsServerPath(path);
  if (onServer ? dao::ServerStorageExists(path) : runtime::IsThere(path)) return;
  if (!onServer) return schema::CreateServerDatabase(path);
  try {
    schema::CreateServerDatabase(path);
    dao::DescribeServerStorage(path, name);
  } catch (const runtime::Error& error) {
    throw runtime::Error(
        u"%1\n\nDe gedeelde database van een nieuwe zender wordt meestal door de beheerder gemaakt, met\n"
        "spotrooster-db create %2 --station %3\nen het script met de rechten. Kies daarna hier opnieuw OK."_s.arg(
            error.Description(), global.databasePath, QString::number(number)));
  }
}

}  // namespace

qint16 FreeStationNumber() {
  const QSet<qint32> listed = ListedNumbers();
  qint16 number = 1;
  while (number < std::numeric_limits<qint16>::max() &&
         (listed.contains(number) || runtime::IsThere(LocalPath(QString::number(number)))))
    ++number;
  return number;
}

void MakeNumberedStation(qint16 number, const QString& name) {
  const QString local = LocalPath(QString::number(number));
  if (ListedNumbers().contains(number) || runtime::IsThere(local)) {
    throw runtime::Error(u"Nummer %1 is al van een zender in deze map; kies een ander nummer."_s.arg(number));
  }
  MakeServerDatabase(number, name);
  schema::CreateLocalDatabase(local);
  try {
    schema::AddStation(local, number, name);
    if (!runtime::IsThere(LocalPath({}))) schema::CreateLocalDatabase(LocalPath({}));
    schema::AddStation(LocalPath({}), number, name);
  } catch (const runtime::Error&) {
    runtime::RemoveFile(runtime::HostPath(local));  // so that a second attempt is not refused
    throw;
  }
}
