// SPDX-License-Identifier: MIT
#include "data/Lookups.h"

#include "data/Globals.h"
#include "data/Text.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

QString NameOfRow(qint32 id, const QString& databasePath, const QString& table) {
  dao::Database database = dao::OpenDatabase(databasePath);
  const dao::Recordset rows = database.OpenRecordset(u"SELECT "_s + table + u".Naam "_s + u"From "_s + table + u" "_s +
                                                     u"WHERE "_s + table + u".ID = "_s + QString::number(id));
  return rows.Eof() ? u""_s : NameIn(rows.Field(u"Naam"_s));
}

// For a station with a number the query fails, unless StationsOwnMode is set in the settings file.
dao::Recordset OnlineSetting(dao::Database& database) {
  const QString query = u"SELECT InitValue From cdeInstellingen WHERE UCase(InitCode) = 'ONLINEYN'"_s;
  if (global.stationNumber < 1 || global.stationsOwnMode) return database.OpenRecordset(query);
  try {
    // Appending the number makes the query invalid. Stations with a number rely on that to work offline.
    return database.OpenRecordset(query + QString::number(global.stationNumber));
  } catch (const runtime::Error& error) {
    throw runtime::Error(
        error.Description() +
        u"\n\nEen zender met een nummer werkt daarom offline; dat is geen schade. Moet deze zender ook online kunnen "
        "werken, laat de beheerder dan in ovalis.ini onder [Spotrooster] de regel StationsOwnMode=1 zetten."_s);
  }
}

}  // namespace

QString NameIn(const QVariant& field) {
  return IsKull(field) ? u""_s : runtime::TrimBlanks(field.toString());
}

qint32 NextID(const QString& table, const QString& keyField, const QString& databasePath) {
  dao::Database database = dao::OpenDatabase(databasePath);
  dao::Recordset rows =
      database.OpenRecordset(u"Select "_s + u"MAX("_s + keyField + u") AS LaatsteID "_s + u"FROM "_s + table);
  qint32 last = 0;
  if (!(rows.Bof() && rows.Eof())) {
    rows.MoveFirst();
    const QVariant highest = rows.Field(u"LaatsteID"_s);
    if (runtime::IsNumeric(highest)) last = runtime::ToLong(highest);
  }
  return runtime::ToLong(double(last) + 1);
}

std::optional<qint32> GetNewIDIfAny(const QString& table, const QString& keyField, const QString& databasePath) {
  return Trapped("GetNewID", std::optional<qint32>(),
                 [&] { return std::optional<qint32>(NextID(table, keyField, databasePath)); });
}

qint32 GetNewID(const QString& table, const QString& keyField, const QString& databasePath) {
  return GetNewIDIfAny(table, keyField, databasePath).value_or(0);
}

QString GetItemSpotID_Naam(qint32 id, const QString& databasePath, const QString& table) {
  return Trapped(__func__, QString(), [&] { return NameOfRow(id, databasePath, table); });
}

QString GetItemNaam(qint32 id, const QString& databasePath, const QString& table) {
  return Trapped(__func__, QString(), [&] { return NameOfRow(id, databasePath, table); });
}

std::optional<dao::Recordset> GetItem_ItemSpots(qint32 itemID, const QString& databasePath, const QString& items,
                                                const QString& link, const QString& spots) {
  return Trapped(__func__, std::optional<dao::Recordset>(), [&]() -> std::optional<dao::Recordset> {
    dao::Database database = dao::OpenDatabase(databasePath);
    return database.OpenRecordset(u"SELECT "_s + spots + u".* "_s + u"FROM "_s + u"("_s + items + u" "_s +
                                  u"INNER JOIN "_s + link + u" "_s + u"ON "_s + items + u".ID "_s + u"= "_s + link +
                                  u".ItemID) "_s + u"INNER JOIN "_s + spots + u" "_s + u"ON "_s + link +
                                  u".ItemSpotID "_s + u"= "_s + spots + u".ID "_s + u"WHERE "_s + items + u".ID = "_s +
                                  QString::number(itemID));
  });
}

void SetOnlineYn() {
  Trapped(__func__, [&] {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    const dao::Recordset rows = OnlineSetting(database);
    global.online = true;
    if (rows.Eof()) return;
    const QVariant value = rows.Field(u"InitValue"_s);
    if (runtime::IsNumeric(value)) global.online = runtime::ToLong(value) != 0;
  });
}

void SetRadioNaam() {
  Trapped(__func__, [&] {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    global.stationName = QString();
    const dao::Recordset rows = database.OpenRecordset(u"SELECT RadioNaam From cdeLicenties WHERE LicentieNummer = "_s +
                                                       QString::number(global.stationNumber));
    if (rows.Eof()) return;
    const QVariant name = rows.Field(u"RadioNaam"_s);
    if (!IsKull(name)) global.stationName = runtime::TrimBlanks(name.toString());
  });
}

bool Update_cdeInstellingen_OnlineYn(qint32 value) {
  return Trapped(__func__, false, [&] {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    database.Execute(u"UPDATE cdeInstellingen SET InitValue = "_s + QString::number(value) +
                     u" WHERE InitCode = 'OnlineYn'"_s);
    return true;
  });
}
