// SPDX-License-Identifier: MIT
#include "data/Schema.h"

#include "data/MessageTexts.h"
#include "platform/dao/Database.h"
#include "platform/dao/SqlText.h"

using namespace Qt::StringLiterals;
using dao::FieldDef;
using dao::FieldType;
using dao::IndexDef;
using dao::TableDef;

namespace schema {
namespace {

FieldDef Field(const QString& name, FieldType type, int size = 0) {
  FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

FieldDef Long(const QString& name) {
  return Field(name, FieldType::Long);
}
FieldDef Integer(const QString& name) {
  return Field(name, FieldType::Integer);
}
FieldDef Date(const QString& name) {
  return Field(name, FieldType::Date);
}
FieldDef Text(const QString& name, int size = 255) {
  return Field(name, FieldType::Text, size);
}
FieldDef Memo(const QString& name) {
  return Field(name, FieldType::Memo);
}

IndexDef Index(const QString& name, const QStringList& fields) {
  IndexDef index;
  index.name = name;
  for (const QString& field : fields)
    index.fields.append({field, dao::Direction::Ascending});
  return index;
}

IndexDef PrimaryKey(const QStringList& fields) {
  IndexDef index = Index(u"PrimaryKey"_s, fields);
  index.primary = true;
  index.unique = true;
  index.required = true;
  return index;
}

TableDef Items(const QString& name) {
  return {name,
          {Long(u"ID"_s), Text(u"Naam"_s), Integer(u"ItemSpotsOptID"_s), Text(u"Opt2Directory"_s),
           Text(u"Opt2VastNaamGedeelte"_s), Integer(u"Opt2VariabelNaamGedeelte"_s), Text(u"Opt2FormatGedeelte"_s, 50),
           Integer(u"Opt2Eerstedagvanweek"_s), Text(u"Opt2FileExtensie"_s, 50), Long(u"Opt2MixPunt"_s),
           Integer(u"OptMeerdereSpots"_s), Long(u"AantalSpots"_s), Long(u"MaxAantalSpots"_s),
           Integer(u"ChkRandomizeMeerdereSpots"_s), Long(u"Opener"_s), Long(u"Midden"_s), Long(u"Sluiter"_s),
           Integer(u"Aktief"_s), Integer(u"Locked"_s)},
          {PrimaryKey({u"ID"_s})}};
}

TableDef ItemSpots(const QString& name) {
  return {name,
          {Long(u"ID"_s), Text(u"Path"_s), Text(u"Naam"_s), Long(u"LengteSec"_s), Long(u"StartPunt"_s),
           Long(u"Mixpunt"_s), Date(u"StartDatum"_s), Integer(u"StartUur"_s), Date(u"EindDatum"_s),
           Integer(u"EindUur"_s), Long(u"AantalGedraaid"_s), Date(u"LaatstGedraaid"_s), Integer(u"Aktief"_s)},
          {PrimaryKey({u"ID"_s})}};
}

TableDef ItemPingles(const QString& name) {
  return {name,
          {Long(u"ID"_s), Text(u"Naam"_s), Text(u"Path"_s), Long(u"LengteSec"_s), Long(u"StartPunt"_s),
           Long(u"Mixpunt"_s), Integer(u"Aktief"_s)},
          {PrimaryKey({u"ID"_s})}};
}

TableDef ItemsItemSpots(const QString& name) {
  return {name,
          {Long(u"ItemID"_s), Long(u"ItemSpotOrder"_s), Long(u"ItemSpotID"_s)},
          {PrimaryKey({u"ItemID"_s, u"ItemSpotOrder"_s}), Index(u"ItemID"_s, {u"ItemID"_s}),
           Index(u"ItemSpotID"_s, {u"ItemSpotID"_s})}};
}

void CreateTables(dao::Database& database, const QList<TableDef>& tables) {
  for (const TableDef& table : tables)
    database.CreateTable(table);
}

}  // namespace

QList<TableDef> ServerTables() {
  return {Items(u"tblItems"_s), ItemSpots(u"tblItemSpots"_s), ItemPingles(u"tblItemPingles"_s),
          ItemsItemSpots(u"tblItemsItemSpots"_s)};
}

QList<TableDef> LocalTables() {
  return {
      Items(u"tblCopie_Items"_s),
      ItemSpots(u"tblCopie_ItemSpots"_s),
      ItemPingles(u"tblCopie_ItemPingles"_s),
      ItemsItemSpots(u"tblCopie_ItemsItemSpots"_s),
      // A memo field: a statement can exceed the 255 characters of a text field.
      {u"tblOfflineLog"_s, {Long(u"ID"_s), Memo(u"SqlSyntax"_s)}, {PrimaryKey({u"ID"_s})}},
      {u"cdeInstellingen"_s, {Text(u"InitCode"_s, 50), Text(u"InitValue"_s)}, {PrimaryKey({u"InitCode"_s})}},
      {u"cdeLicenties"_s, {Long(u"LicentieNummer"_s), Text(u"RadioNaam"_s)}, {PrimaryKey({u"LicentieNummer"_s})}},
      {u"appMessages"_s, {Long(u"MsgNr"_s), Text(u"MsgTekst"_s), Text(u"MsgStyle"_s, 1)}, {PrimaryKey({u"MsgNr"_s})}}};
}

void CreateServerDatabase(const QString& path) {
  dao::CreateDatabase(path, [](dao::Database& database) { CreateTables(database, ServerTables()); });
}

void CreateWorkDatabase(const QString& path) {
  dao::CreateDatabase(path);
}

void CreateLocalDatabase(const QString& path, const std::function<void(dao::Database&)>& fill) {
  dao::CreateDatabase(path, [&](dao::Database& database) {
    CreateTables(database, LocalTables());
    database.Execute(u"INSERT INTO cdeInstellingen (InitCode, InitValue) VALUES (\"OnlineYn\", \"-1\")"_s);
    for (const MessageText& message : MessageTexts()) {
      database.Execute(u"INSERT INTO appMessages (MsgNr, MsgTekst, MsgStyle) VALUES ("_s +
                       QString::number(message.number) + u", " + dao::TextLiteral(message.text) + u", " +
                       dao::TextLiteral(message.style) + u")");
    }
    if (fill) fill(database);
  });
}

void AddStation(dao::Database& localDatabase, qint16 number, const QString& name) {
  localDatabase.Execute(u"INSERT INTO cdeLicenties (LicentieNummer, RadioNaam) VALUES ("_s + QString::number(number) +
                        u", " + dao::TextLiteral(name) + u")");
}

void AddStation(const QString& localPath, qint16 number, const QString& name) {
  dao::Database database = dao::OpenDatabase(localPath);
  AddStation(database, number, name);
}

}  // namespace schema
