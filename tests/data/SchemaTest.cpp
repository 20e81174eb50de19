// SPDX-License-Identifier: MIT
#include "data/Schema.h"

#include "data/Globals.h"
#include "platform/runtime/Error.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

QStringList FieldNames(const dao::TableDef& table) {
  QStringList names;
  for (const dao::FieldDef& field : table.fields)
    names += field.name;
  return names;
}

}  // namespace

TEST(Schema, TheServerDatabaseHoldsTheCatalogue) {
  const Station station;
  EXPECT_EQ(dao::OpenDatabase(global.serverDatabasePath).TableNames(),
            (QStringList{u"tblItemPingles"_s, u"tblItems"_s, u"tblItemsItemSpots"_s, u"tblItemSpots"_s}));
}

TEST(Schema, TheLocalDatabaseHoldsCopiesLogSettingsStationsAndMessages) {
  const Station station;
  QStringList names = dao::OpenDatabase(global.localDatabasePath).TableNames();
  names.sort();
  EXPECT_EQ(names, (QStringList{u"appMessages"_s, u"cdeInstellingen"_s, u"cdeLicenties"_s, u"tblCopie_ItemPingles"_s,
                                u"tblCopie_ItemSpots"_s, u"tblCopie_Items"_s, u"tblCopie_ItemsItemSpots"_s,
                                u"tblOfflineLog"_s}));
}

TEST(Schema, CopyTableHasTheSameFieldsInTheSameOrder) {
  const Station station;
  dao::Database server = dao::OpenDatabase(global.serverDatabasePath);
  dao::Database local = dao::OpenDatabase(global.localDatabasePath);
  for (const QString& name : {u"Items"_s, u"ItemSpots"_s, u"ItemPingles"_s, u"ItemsItemSpots"_s}) {
    const dao::TableDef table = server.Table(u"tbl"_s + name);
    const dao::TableDef copy = local.Table(u"tblCopie_"_s + name);
    EXPECT_EQ(FieldNames(table), FieldNames(copy));
    for (qsizetype i = 0; i < table.fields.size(); ++i) {
      EXPECT_EQ(table.fields[i].type, copy.fields[i].type);
      EXPECT_EQ(table.fields[i].size, copy.fields[i].size);
    }
  }
}

TEST(Schema, ItemsHaveAllTheirFields) {
  const Station station;
  EXPECT_EQ(FieldNames(dao::OpenDatabase(global.serverDatabasePath).Table(u"tblItems"_s)),
            (QStringList{u"ID"_s, u"Naam"_s, u"ItemSpotsOptID"_s, u"Opt2Directory"_s, u"Opt2VastNaamGedeelte"_s,
                         u"Opt2VariabelNaamGedeelte"_s, u"Opt2FormatGedeelte"_s, u"Opt2Eerstedagvanweek"_s,
                         u"Opt2FileExtensie"_s, u"Opt2MixPunt"_s, u"OptMeerdereSpots"_s, u"AantalSpots"_s,
                         u"MaxAantalSpots"_s, u"ChkRandomizeMeerdereSpots"_s, u"Opener"_s, u"Midden"_s, u"Sluiter"_s,
                         u"Aktief"_s, u"Locked"_s}));
}

TEST(Schema, TheOtherTablesHaveAllTheirFields) {
  const Station station;
  dao::Database server = dao::OpenDatabase(global.serverDatabasePath);
  EXPECT_EQ(FieldNames(server.Table(u"tblItemSpots"_s)),
            (QStringList{u"ID"_s, u"Path"_s, u"Naam"_s, u"LengteSec"_s, u"StartPunt"_s, u"Mixpunt"_s, u"StartDatum"_s,
                         u"StartUur"_s, u"EindDatum"_s, u"EindUur"_s, u"AantalGedraaid"_s, u"LaatstGedraaid"_s,
                         u"Aktief"_s}));
  EXPECT_EQ(FieldNames(server.Table(u"tblItemPingles"_s)),
            (QStringList{u"ID"_s, u"Naam"_s, u"Path"_s, u"LengteSec"_s, u"StartPunt"_s, u"Mixpunt"_s, u"Aktief"_s}));
  EXPECT_EQ(FieldNames(server.Table(u"tblItemsItemSpots"_s)),
            (QStringList{u"ItemID"_s, u"ItemSpotOrder"_s, u"ItemSpotID"_s}));
  dao::Database local = dao::OpenDatabase(global.localDatabasePath);
  EXPECT_EQ(FieldNames(local.Table(u"tblOfflineLog"_s)), (QStringList{u"ID"_s, u"SqlSyntax"_s}));
  EXPECT_EQ(FieldNames(local.Table(u"cdeInstellingen"_s)), (QStringList{u"InitCode"_s, u"InitValue"_s}));
  EXPECT_EQ(FieldNames(local.Table(u"cdeLicenties"_s)), (QStringList{u"LicentieNummer"_s, u"RadioNaam"_s}));
  EXPECT_EQ(FieldNames(local.Table(u"appMessages"_s)), (QStringList{u"MsgNr"_s, u"MsgTekst"_s, u"MsgStyle"_s}));
}

TEST(Schema, KeyIsUnique) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"a\")"_s);
  EXPECT_THROW(station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"b\")"_s), runtime::Error);
}

TEST(Schema, NewDatabaseNeverReplacesAnExistingOne) {
  const Station station;
  EXPECT_THROW(schema::CreateServerDatabase(global.serverDatabasePath), runtime::Error);
}

TEST(Schema, NewLocalDatabaseIsSetToOnline) {
  const Station station;
  EXPECT_EQ(station.LocalRows(u"SELECT InitValue FROM cdeInstellingen WHERE InitCode = 'OnlineYn'"_s)
                .Field(u"InitValue"_s)
                .toString(),
            u"-1"_s);
}
