// SPDX-License-Identifier: MIT
#include "tests/fuzz/EditBases.h"

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/table/TableWriter.h"

#include <chrono>
#include <vector>

namespace jet::fuzz {

namespace {

constexpr const char* kBasePath = "base.mdb";
constexpr int kRowsOfLargerBase = 90;  // more than one leaf of the index by name

ColumnDefinition Column(const char16_t* name, ColumnType type, std::uint16_t size = 0) {
  ColumnDefinition column;
  column.name = name;
  column.type = type;
  column.size = size;
  return column;
}

IndexDefinition Index(const char16_t* name, std::size_t column, bool primary) {
  IndexDefinition index;
  index.name = name;
  index.primary = primary;
  index.fields = {{column, false}};
  return index;
}

TableDefinition Spots() {
  TableDefinition table;
  table.name = u"tblSpots";
  table.columns = {Column(u"ID", ColumnType::Long), Column(u"Naam", ColumnType::Text, 50),
                   Column(u"Tekst", ColumnType::Memo), Column(u"Actief", ColumnType::Boolean)};
  table.columns[0].autonumber = true;
  table.indexes = {Index(u"Naam", 1, false), Index(u"PrimaryKey", 0, true)};
  return table;
}

TableDefinition Items() {
  TableDefinition table;
  table.name = u"tblItems";
  table.columns = {Column(u"Nr", ColumnType::Long), Column(u"Omschrijving", ColumnType::Memo)};
  table.indexes = {Index(u"PrimaryKey", 0, true)};
  return table;
}

std::u16string LongName(int number) {
  return std::u16string(static_cast<std::size_t>(30 + number % 20), static_cast<char16_t>(u'a' + number * 7 % 26)) +
         static_cast<char16_t>(u'0' + number % 10);
}

void FillItems(Database& database) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(u"tblItems");
  for (std::int64_t number = 1; number <= 3; ++number) {
    std::vector<Value> row = {number, std::u16string(static_cast<std::size_t>(number) * 700, u'i')};
    writer->Insert(row);
  }
  turn.Commit();
}

void FillSpots(Database& database, int rows) {
  WriteTurn turn(database);
  const auto writer = database.OpenWriter(u"tblSpots");
  std::vector<RowId> ids;
  for (int number = 0; number < rows; ++number) {
    std::vector<Value> row = SpotRow(Value{}, LongName(number), u"kort");
    ids.push_back(writer->Insert(row));
  }
  std::vector<Value> longTexts = SpotRow(Value{}, u"lang", std::u16string(5000, u't'));
  writer->Insert(longTexts);
  if (rows > 10) {
    // Longer texts move their rows; the deleted ones free a page.
    for (std::size_t i = 0; i < 40; ++i)
      writer->Update(ids[i], SpotRow(Value{}, u"verhuisd", std::u16string(60, u'v')), {false, false, true, false});
    for (std::size_t i = 60; i < 75; ++i)
      writer->Delete(ids[i]);
  }
  turn.Commit();
}

Bytes Build(int rows) {
  files::MemoryFileSystem files;
  Database::Create(kBasePath, files);
  {
    const auto database = Database::Open(kBasePath, ForEditing(), files);
    WriteTurn turn(*database);
    database->CreateTable(Spots());
    database->CreateTable(Items());
    turn.Commit();
    FillItems(*database);
    FillSpots(*database, rows);
  }
  return files.Get(kBasePath);
}

}  // namespace

std::vector<Value> SpotRow(Value id, const std::u16string& name, Value text) {
  return {std::move(id), name, std::move(text), true};
}

OpenOptions ForEditing() {
  OpenOptions options;
  options.writable = true;
  options.wait = {std::chrono::milliseconds{20}, [](std::chrono::milliseconds) {}};
  return options;
}

const Bytes& SmallBase() {
  static const Bytes base = Build(3);
  return base;
}

const Bytes& LargerBase() {
  static const Bytes base = Build(kRowsOfLargerBase);
  return base;
}

}  // namespace jet::fuzz
