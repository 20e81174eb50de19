// SPDX-License-Identifier: MIT
// The limits of a table definition, each on both sides.
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using dao::FieldType;
using scratch::Field;

namespace {

QString DefinitionError(const dao::TableDef& table) {
  return scratch::ErrorOf([&] { dao::CheckTableDef(table); });
}

dao::TableDef TableWith(const dao::FieldDef& field) {
  return {u"t"_s, {field}, {}};
}

dao::TableDef TableWithFields(int count) {
  dao::TableDef table{u"t"_s, {}, {}};
  for (int i = 0; i < count; ++i)
    table.fields += Field(u"f%1"_s.arg(i), FieldType::Byte);
  return table;
}

TEST(TableDefLimits, NamesHaveOneTo64Characters) {
  const auto errorOf = [](const QString& name) {
    return DefinitionError({name, {Field(u"a"_s, FieldType::Long)}, {}});
  };
  EXPECT_TRUE(errorOf(QString(64, u'x')).isEmpty());
  EXPECT_TRUE(errorOf(u"mijn tabel (2)"_s).isEmpty());
  EXPECT_TRUE(errorOf(u"caf\u00E9"_s).isEmpty());
  for (const QString& name :
       {QString(), QString(65, u'x'), u" a"_s, u"a.b"_s, u"a!b"_s, u"[a"_s, u"a]"_s, u"a`"_s, u"a\"b"_s, u"a\tb"_s})
    EXPECT_TRUE(errorOf(name).contains(u"geen geldige naam"_s)) << qPrintable(name);
}

TEST(TableDefLimits, ATableHasOneTo255Fields) {
  EXPECT_FALSE(DefinitionError(TableWithFields(0)).isEmpty());
  EXPECT_TRUE(DefinitionError(TableWithFields(1)).isEmpty());
  EXPECT_TRUE(DefinitionError(TableWithFields(255)).isEmpty());
  EXPECT_FALSE(DefinitionError(TableWithFields(256)).isEmpty());
}

TEST(TableDefLimits, TextHasOneTo255CharactersAndBinaryOneTo510Bytes) {
  const auto errorOf = [](FieldType type, int size) { return DefinitionError(TableWith(Field(u"a"_s, type, size))); };
  for (const int size : {1, 255})
    EXPECT_TRUE(errorOf(FieldType::Text, size).isEmpty()) << size;
  for (const int size : {-1, 0, 256})
    EXPECT_TRUE(errorOf(FieldType::Text, size).contains(u"ongeldige grootte"_s)) << size;
  for (const int size : {1, 510})
    EXPECT_TRUE(errorOf(FieldType::Binary, size).isEmpty()) << size;
  for (const int size : {0, 511})
    EXPECT_TRUE(errorOf(FieldType::Binary, size).contains(u"ongeldige grootte"_s)) << size;
  EXPECT_TRUE(errorOf(FieldType::Memo, 0).isEmpty());
}

TEST(TableDefLimits, NumericHasUpTo28Digits) {
  const auto errorOf = [](int precision, int scale) {
    dao::FieldDef field = Field(u"a"_s, FieldType::Numeric);
    field.precision = precision;
    field.scale = scale;
    return DefinitionError(TableWith(field));
  };
  EXPECT_TRUE(errorOf(1, 0).isEmpty());
  EXPECT_TRUE(errorOf(28, 28).isEmpty());
  for (const auto& [precision, scale] : {std::pair{0, 0}, {29, 0}, {5, 6}, {5, -1}})
    EXPECT_FALSE(errorOf(precision, scale).isEmpty()) << precision << ' ' << scale;
}

TEST(TableDefLimits, OnlyALongIsAnAutonumber) {
  for (const FieldType type : {FieldType::Long, FieldType::Integer, FieldType::Double, FieldType::Memo}) {
    dao::FieldDef field = Field(u"a"_s, type);
    field.autoNumber = true;
    EXPECT_EQ(DefinitionError(TableWith(field)).isEmpty(), type == FieldType::Long) << static_cast<int>(type);
  }
}

TEST(TableDefLimits, AnIndexHasOneTo10KnownFields) {
  const auto errorOf = [](int fields) {
    dao::TableDef table = TableWithFields(12);
    QStringList names;
    for (int i = 0; i < fields; ++i)
      names += u"F%1"_s.arg(i);
    table.indexes = {scratch::Index(u"i"_s, names)};
    return DefinitionError(table);
  };
  EXPECT_FALSE(errorOf(0).isEmpty());
  EXPECT_TRUE(errorOf(1).isEmpty());
  EXPECT_TRUE(errorOf(10).isEmpty());
  EXPECT_TRUE(errorOf(11).contains(u"'i'"_s));
}

TEST(TableDefLimits, ATableHasUpTo32Indexes) {
  dao::TableDef table = TableWithFields(1);
  for (int i = 0; i < 32; ++i)
    table.indexes += scratch::Index(u"i%1"_s.arg(i), {u"f0"_s});
  EXPECT_TRUE(DefinitionError(table).isEmpty());
  table.indexes += scratch::Index(u"een te veel"_s, {u"f0"_s});
  EXPECT_TRUE(DefinitionError(table).contains(u"te veel indexen"_s));
}

TEST(TableDefLimits, FieldsAreFoundWithoutCase) {
  const dao::TableDef table = scratch::Spots();
  EXPECT_EQ(table.FieldIndex(u"startdatum"_s), 3);
  EXPECT_EQ(table.FieldIndex(u"ID"_s), 0);
  EXPECT_EQ(table.FieldIndex(u"weg"_s), -1);
}

TEST(TableDefLimits, ATableWithTheLargestDefinitionIsCreatedAndRead) {
  dao::TableDef table = TableWithFields(255);
  for (int i = 0; i < 10; ++i)
    table.indexes += scratch::Index(u"i%1"_s.arg(i, 2, 10, QChar(u'0')), {u"f%1"_s.arg(i * 25)});
  const scratch::Scratch s;
  s.Open().CreateTable(table);
  EXPECT_EQ(s.Open().Table(u"t"_s).fields, table.fields);
  EXPECT_EQ(s.Open().Table(u"t"_s).indexes, table.indexes);
}

}  // namespace
