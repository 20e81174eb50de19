// SPDX-License-Identifier: MIT
// Tables that another program created, with types and properties that this program does not use for its own.
#include "platform/dao/JetTableDef.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;
using jet::ColumnType;

namespace {

jet::ColumnDefinition Column(const std::u16string& name, ColumnType type, std::uint16_t size = 0) {
  jet::ColumnDefinition column;
  column.name = name;
  column.type = type;
  column.size = size;
  return column;
}

class ForeignTables : public testing::Test {
 protected:
  void Create(const jet::TableDefinition& table, const std::vector<std::vector<jet::Value>>& rows = {}) {
    jet::OpenOptions options;
    options.writable = true;
    const auto database = jet::Database::Open(scratch_.Path().toStdString(), options);
    jet::WriteTurn writing(*database);
    database->CreateTable(table);
    const auto writer = database->OpenWriter(table.name);
    for (std::vector<jet::Value> row : rows)
      writer->Insert(row);
    writing.Commit();
  }
  Scratch scratch_;
};

TEST_F(ForeignTables, EachColumnTypeHasItsFieldType) {
  const std::vector<std::pair<ColumnType, FieldType>> types = {
      {ColumnType::Boolean, FieldType::Boolean},   {ColumnType::Byte, FieldType::Byte},
      {ColumnType::Integer, FieldType::Integer},   {ColumnType::Long, FieldType::Long},
      {ColumnType::Currency, FieldType::Currency}, {ColumnType::Single, FieldType::Single},
      {ColumnType::Double, FieldType::Double},     {ColumnType::Date, FieldType::Date},
      {ColumnType::Text, FieldType::Text},         {ColumnType::Memo, FieldType::Memo},
      {ColumnType::Binary, FieldType::Binary},     {ColumnType::Ole, FieldType::Binary},
      {ColumnType::Guid, FieldType::Guid},         {ColumnType::Decimal, FieldType::Numeric}};
  jet::TableDefinition table;
  table.name = u"tblVreemd";
  for (std::size_t i = 0; i < types.size(); ++i) {
    jet::ColumnDefinition column =
        Column(u"f" + std::u16string(1, static_cast<char16_t>(u'a' + i)), types[i].first,
               types[i].first == ColumnType::Text || types[i].first == ColumnType::Binary ? 40 : 0);
    column.precision = 12;
    column.scale = 3;
    table.columns.push_back(column);
  }
  Create(table);
  const dao::TableDef read = scratch_.Open().Table(u"tblvreemd"_s);
  ASSERT_EQ(read.fields.size(), static_cast<qsizetype>(types.size()));
  for (qsizetype i = 0; i < read.fields.size(); ++i) {
    const dao::FieldDef& field = read.fields[i];
    EXPECT_EQ(field.type, types[static_cast<std::size_t>(i)].second) << qPrintable(field.name);
    const bool isSized = types[static_cast<std::size_t>(i)].first == ColumnType::Text ||
                         types[static_cast<std::size_t>(i)].first == ColumnType::Binary;
    EXPECT_EQ(field.size, isSized ? 40 : 0) << qPrintable(field.name);
  }
  EXPECT_EQ(read.fields.last().precision, 12);
  EXPECT_EQ(read.fields.last().scale, 3);
}

TEST_F(ForeignTables, ADefinitionRoundTripsThroughItsStoredForm) {
  dao::TableDef table = Spots();
  table.fields[0].autoNumber = true;
  table.fields[1].required = true;
  table.fields[1].allowZeroLength = false;
  table.fields[2].defaultValue = 3;
  table.indexes += Index(u"OpNaam"_s, {u"naam"_s, u"ID"_s});
  table.indexes[1].fields[1].direction = dao::Direction::Descending;
  table.indexes[1].unique = table.indexes[1].ignoreNull = true;
  const jet::TableDefinition stored = dao::StoredDefinition(table);
  EXPECT_EQ(stored.name, u"tblSpots");
  EXPECT_TRUE(stored.columns[0].autonumber);
  EXPECT_TRUE(stored.columns[1].required);
  EXPECT_FALSE(stored.columns[1].allowZeroLength);
  EXPECT_EQ(stored.columns[1].size, 50);
  EXPECT_EQ(stored.columns[2].defaultValue, u"3");
  ASSERT_EQ(stored.indexes.size(), 2U);
  EXPECT_TRUE(stored.indexes[0].primary && stored.indexes[0].unique && stored.indexes[0].required);
  EXPECT_EQ(stored.indexes[1].fields[0].column, 1U);
  EXPECT_FALSE(stored.indexes[1].fields[0].descending);
  EXPECT_EQ(stored.indexes[1].fields[1].column, 0U);
  EXPECT_TRUE(stored.indexes[1].fields[1].descending);
  EXPECT_TRUE(stored.indexes[1].unique && stored.indexes[1].ignoreNulls);
}

TEST_F(ForeignTables, BytesOfAnOleFieldAreReadAndCopied) {
  jet::TableDefinition table;
  table.name = u"tblBeeld";
  table.columns = {Column(u"ID", ColumnType::Long), Column(u"Beeld", ColumnType::Ole)};
  const jet::Bytes small = {0, 1, 255};
  const jet::Bytes large(20000, 7);
  Create(table, {{std::int64_t{1}, small}, {std::int64_t{2}, large}, {std::int64_t{3}, jet::Value()}});
  dao::Database database = scratch_.Open();
  const auto beeld = [&](const QString& name, int id) {
    return database.OpenRecordset(u"SELECT Beeld FROM %1 WHERE ID = %2"_s.arg(name).arg(id)).Field(0);
  };
  EXPECT_EQ(beeld(u"tblBeeld"_s, 1), QVariant(QByteArray("\0\1\xFF", 3)));
  EXPECT_EQ(beeld(u"tblBeeld"_s, 2).toByteArray(), QByteArray(20000, 7));
  EXPECT_FALSE(beeld(u"tblBeeld"_s, 3).isValid());
  EXPECT_EQ(database.Execute(u"INSERT INTO tblBeeld SELECT ID + 10 AS ID, Beeld FROM tblBeeld"_s), 3);
  EXPECT_EQ(beeld(u"tblBeeld"_s, 12).toByteArray(), QByteArray(20000, 7));
}

}  // namespace
