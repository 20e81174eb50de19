// SPDX-License-Identifier: MIT
// Files written by this library and read by outside readers: extreme values of every type, tables of any length.
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/Agreement.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/Witness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace jet {
namespace {

using test::Column;
using test::FreshDatabase;

std::u16string Digits(int number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

// The extreme values of each column type; memos of one byte to a megabyte.
std::vector<std::pair<ColumnDefinition, std::vector<Value>>> Extremes() {
  const auto text = [](std::u16string value) { return Value(std::move(value)); };
  const auto whole = [](std::int64_t value) { return Value(value); };
  ColumnDefinition decimal = Column(u"Getal", ColumnType::Decimal);
  decimal.precision = 18;
  decimal.scale = 4;
  std::u16string latin;
  for (char16_t unit = 0x20; unit <= 0xFF; ++unit) {
    if (unit < 0x7F || unit > 0x9F) latin += unit;
  }
  std::vector<Value> memos = {Value{}, text(u"")};
  for (const std::size_t length : {1U, 2U, 3U, 32U, 33U, 1024U, 1025U, 2038U, 2039U, 4072U, 4073U, 100'000U, 524'288U})
    memos.push_back(text(std::u16string(length, length % 2 == 0 ? u'x' : u'\u0416')));
  return {
      {Column(u"Ja", ColumnType::Boolean), {false, true}},
      {Column(u"Octet", ColumnType::Byte), {Value{}, whole(0), whole(255)}},
      {Column(u"Kort", ColumnType::Integer), {Value{}, whole(INT16_MIN), whole(-1), whole(INT16_MAX)}},
      {Column(u"Lang", ColumnType::Long), {Value{}, whole(INT32_MIN), whole(-1), whole(INT32_MAX)}},
      {Column(u"Bedrag", ColumnType::Currency),
       {Value{}, Currency{INT64_MIN}, Currency{INT64_MAX}, Currency{-1}, Currency{123'456'789}}},
      {decimal, {Value{}, Decimal{true, 4, 0, 999'999'999'999'999'999}, Decimal{false, 4, 0, 1}}},
      {Column(u"Enkel", ColumnType::Single), {Value{}, -0.5, 16'777'216.0, 1048576.125}},
      {Column(u"Dubbel", ColumnType::Double), {Value{}, 1e300, -1e-300, 0.1, -123456789.125}},
      {Column(u"Datum", ColumnType::Date), {Value{}, -1.25, -36'524.0, 2.0, 36'526.5, 73'415.75, 2'958'465.0}},
      {Column(u"Naam", ColumnType::Text, 255),
       {Value{}, text(u""), text(u"a"), text(u"ab"), text(u"abc"), text(latin), text(std::u16string(255, u'z')),
        text(std::u16string(255, u'\u0416')), text(u"\u20AC \u017D \u4E2D")}},
      {Column(u"Tekst", ColumnType::Memo), memos},
      {Column(u"Bytes", ColumnType::Binary, 255), {Value{}, Bytes{1}, Bytes(255, 0xEE)}},
      {Column(u"Groot", ColumnType::Ole), {Value{}, Bytes{1}, Bytes(65, 2), Bytes(4077, 3), Bytes(1 << 20, 4)}},
      {Column(u"Uniek", ColumnType::Guid), {Value{}, Guid{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}}}}};
}

class RoundTrip : public testing::Test {
 protected:
  void SetUp() override {
    for (const witness::Reader reader : {witness::Reader::MdbTools, witness::Reader::MdbReader}) {
      if (const auto absent = witness::WhyAbsent(reader)) GTEST_SKIP() << *absent;
    }
  }
  std::string Disagreements() {
    return witness::Disagreements(*database_, database_.Files().Get(FreshDatabase::kPath));
  }

  FreshDatabase database_;
};

TEST_F(RoundTrip, ReadsExtremeValuesOfEveryType) {
  const auto extremes = Extremes();
  TableDefinition table;
  table.name = u"tblUitersten";
  std::size_t rows = 0;
  for (const auto& [column, values] : extremes) {
    table.columns.push_back(column);
    rows = std::max(rows, values.size());
  }
  std::vector<std::vector<Value>> written;
  WriteTurn turn(*database_);
  database_->CreateTable(table);
  const auto writer = database_->OpenWriter(table.name);
  for (std::size_t row = 0; row < rows; ++row) {
    std::vector<Value>& values = written.emplace_back();
    for (const auto& [column, list] : extremes)
      values.push_back(list[row % list.size()]);
    writer->Insert(values);
  }
  turn.Commit();
  EXPECT_EQ(database_.Findings(), "");
  const Table stored = database_->OpenTable(table.name);
  ColumnSet all(extremes.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  TableCursor cursor = stored.Scan(all);
  for (std::size_t row = 0; row < rows; ++row) {
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(cursor.Values(), written[row]) << "row " << row;
  }
  EXPECT_EQ(Disagreements(), "");
}

TEST_F(RoundTrip, ReadsTablesOfEveryLength) {
  for (const int rows : {0, 1, 100'000}) {
    TableDefinition table;
    table.name = u"tbl" + Digits(rows);
    table.columns = {Column(u"ID", ColumnType::Long), Column(u"Naam", ColumnType::Text, 50)};
    IndexDefinition key;
    key.name = u"PrimaryKey";
    key.primary = true;
    key.fields = {{0, false}};
    table.indexes = {key};
    WriteTurn turn(*database_);
    database_->CreateTable(table);
    const auto writer = database_->OpenWriter(table.name);
    for (int i = 0; i < rows; ++i) {
      std::vector<Value> row = {std::int64_t{i} * 7919 % 1'000'003, u"Spot " + Digits(i)};
      writer->Insert(row);
    }
    turn.Commit();
    EXPECT_EQ(database_->OpenTable(table.name).CountRows(), static_cast<std::size_t>(rows));
  }
  EXPECT_EQ(database_.Findings(), "");
  EXPECT_EQ(Disagreements(), "");
}

}  // namespace
}  // namespace jet
