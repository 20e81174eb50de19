// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/values/Error.h"

#include <memory>
#include <string>
#include <vector>

namespace jet::test {

// A new database in memory, opened for writing.
class FreshDatabase {
 public:
  FreshDatabase();
  Database& operator*() { return *database_; }
  Database* operator->() { return database_.get(); }
  files::MemoryFileSystem& Files() { return files_; }
  // The findings of CheckDatabase, including remarks.
  std::string Findings();
  void Create(const TableDefinition& table);
  // Inserts and commits one row.
  RowId Insert(const std::u16string& table, std::vector<Value> row);
  std::size_t Rows(const std::u16string& table) { return database_->OpenTable(table).CountRows(); }

  static constexpr const char* kPath = "/data/new.mdb";

 private:
  files::MemoryFileSystem files_;
  std::unique_ptr<Database> database_;
};

ColumnDefinition Column(const char16_t* name, ColumnType type, std::uint16_t size = 0);
// ID (autonumber, primary key), Naam (text 50, required, indexed), Datum, Tekst (memo), Foto (OLE), Actief.
TableDefinition SpotsTable();
// A row of SpotsTable.
std::vector<Value> Spot(const std::u16string& name, const std::u16string& text = u"");
// A field of every writable type except Date, Guid and Decimal; ID is the key, and one index has two fields.
TableDefinition AllKindsTable();

// The text of the Error that the call throws; "" when it throws none.
template <typename Call>
std::string MessageOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "";
}

}  // namespace jet::test
