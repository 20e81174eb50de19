// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/SampleTable.h"

#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/TinyDatabase.h"

#include <string>
#include <vector>

namespace jet::test {

FreshDatabase::FreshDatabase() {
  Database::Create(kPath, files_);
  OpenOptions options;
  options.writable = true;
  options.wait = NoSleep();
  database_ = Database::Open(kPath, options, files_);
}

std::string FreshDatabase::Findings() {
  std::string lines;
  for (const Finding& finding : CheckDatabase(*database_))
    lines += finding.Line() + '\n';
  return lines;
}

void FreshDatabase::Create(const TableDefinition& table) {
  WriteTurn turn(*database_);
  database_->CreateTable(table);
  turn.Commit();
}

RowId FreshDatabase::Insert(const std::u16string& table, std::vector<Value> row) {
  WriteTurn turn(*database_);
  const RowId id = database_->OpenWriter(table)->Insert(row);
  turn.Commit();
  return id;
}

ColumnDefinition Column(const char16_t* name, ColumnType type, std::uint16_t size) {
  ColumnDefinition column;
  column.name = name;
  column.type = type;
  column.size = size;
  return column;
}

TableDefinition SpotsTable() {
  TableDefinition table;
  table.name = u"tblSpots";
  table.columns = {Column(u"ID", ColumnType::Long),    Column(u"Naam", ColumnType::Text, 50),
                   Column(u"Datum", ColumnType::Date), Column(u"Tekst", ColumnType::Memo),
                   Column(u"Foto", ColumnType::Ole),   Column(u"Actief", ColumnType::Boolean)};
  table.columns[0].autonumber = true;
  table.columns[1].required = true;
  table.columns[1].allowZeroLength = false;
  IndexDefinition key;
  key.name = u"PrimaryKey";
  key.primary = true;
  key.fields = {{0, false}};
  IndexDefinition byName;
  byName.name = u"Naam";
  byName.fields = {{1, false}};
  table.indexes = {key, byName};
  return table;
}

TableDefinition AllKindsTable() {
  TableDefinition table;
  table.name = u"tblAlles";
  table.columns = {Column(u"ID", ColumnType::Long),         Column(u"Ja", ColumnType::Boolean),
                   Column(u"Octet", ColumnType::Byte),      Column(u"Kort", ColumnType::Integer),
                   Column(u"Bedrag", ColumnType::Currency), Column(u"Enkel", ColumnType::Single),
                   Column(u"Dubbel", ColumnType::Double),   Column(u"Naam", ColumnType::Text, 255),
                   Column(u"Tekst", ColumnType::Memo),      Column(u"Bytes", ColumnType::Binary, 100),
                   Column(u"Groot", ColumnType::Ole)};
  table.columns[0].autonumber = true;
  IndexDefinition key;
  key.name = u"PrimaryKey";
  key.primary = true;
  key.fields = {{0, false}};
  IndexDefinition byName;
  byName.name = u"Naam";
  byName.fields = {{7, true}, {3, false}};
  table.indexes = {key, byName};
  return table;
}

std::vector<Value> Spot(const std::u16string& name, const std::u16string& text) {
  return {Value{}, name, 36526.5, text.empty() ? Value{} : Value{text}, Value{}, true};
}

}  // namespace jet::test
