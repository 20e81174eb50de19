// SPDX-License-Identifier: MIT
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

QString CreateError(const dao::TableDef& table) {
  const Scratch s;
  return ErrorOf([&] { s.Open().CreateTable(table); });
}

TEST(TableDef, ComesBackFromTheFile) {
  const Scratch s;
  dao::TableDef table = Spots();
  table.fields[1].required = true;
  table.fields[1].allowZeroLength = false;
  table.fields[2].defaultValue = 1;
  table.indexes.prepend(Index(u"OpNaam"_s, {u"Naam"_s, u"ID"_s}));  // read back sorted by name
  table.indexes[0].fields[1].direction = dao::Direction::Descending;
  table.indexes[0].ignoreNull = true;
  s.Open().CreateTable(table);
  const dao::TableDef read = s.Open().Table(u"TBLSPOTS"_s);
  EXPECT_EQ(read.name, table.name);
  EXPECT_EQ(read.fields, table.fields);
  EXPECT_EQ(read.indexes, table.indexes);
}

TEST(TableDef, NamesAreSortedAndUnique) {
  const SpotScratch s;
  s.Open().CreateTable(Spots(u"appMessages"_s));
  EXPECT_EQ(s.Open().TableNames(), (QStringList{u"appMessages"_s, u"tblSpots"_s}));
  EXPECT_TRUE(ErrorOf([&] { s.Open().CreateTable(Spots(u"TBLSPOTS"_s)); }).contains(u"bestaat al"_s));
  EXPECT_TRUE(ErrorOf([&] { s.Open().Table(u"weg"_s); }).contains(u"'weg' bestaat niet"_s));
}

TEST(TableDef, InvalidDefinitionsAreRefused) {
  EXPECT_FALSE(CreateError({u"t"_s, {}, {}}).isEmpty());
  EXPECT_FALSE(CreateError({u"t.x"_s, {Field(u"a"_s, FieldType::Long)}, {}}).isEmpty());
  EXPECT_FALSE(CreateError({QString(65, u'x'), {Field(u"a"_s, FieldType::Long)}, {}}).isEmpty());
  EXPECT_TRUE(
      CreateError({u"t"_s, {Field(u"a"_s, FieldType::Long), Field(u"A"_s, FieldType::Long)}, {}}).contains(u"'A'"_s));
  EXPECT_TRUE(CreateError({u"t"_s, {Field(u"a"_s, FieldType::Text, 256)}, {}}).contains(u"'a'"_s));
  EXPECT_TRUE(CreateError({u"t"_s, {Field(u"a"_s, FieldType::Long)}, {Key({u"b"_s})}}).contains(u"'b'"_s));
  EXPECT_TRUE(CreateError({u"t"_s, {Field(u"a"_s, FieldType::Long)}, {}}).isEmpty());
}

}  // namespace
