// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/CachedFromPages.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Storage.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/Properties.h"
#include "platform/jet/table/Table.h"
#include "platform/jet/table/TableWriter.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

struct OpenOptions {
  std::u16string password;         // for a file that asks for one
  std::size_t cachedPages = 2048;  // most pages kept in memory, 4096 bytes each
  bool writable = false;           // else no byte is written, not even of a lock file
  WaitRule wait = WaitRule::Real();
};

// One open Jet 4 database file. Not thread-safe. Errors name the file.
//
// Whoever wants to rely on what was read reads within a ReadTurn; a change is made within a WriteTurn. Tables, cursors
// and writers belong to the turn in which they were made.
class Database {
 public:
  // Opens an existing file. Refuses with one clear sentence what is no Jet 4 file, and a file whose password was not
  // given.
  static std::unique_ptr<Database> Open(const std::filesystem::path& path, const OpenOptions& options = {},
                                        FileSystem& files = HostFileSystem());

  // Makes a new database without tables. One that is there already is an error.
  static void Create(const std::filesystem::path& path, FileSystem& files = HostFileSystem());

  const std::string& Name() const { return storage_->Name(); }
  // Whether both have the same file open, whatever paths led to it.
  bool IsSameFile(const Database& other) const { return storage_ == other.storage_; }
  bool IsReadOnly() const { return storage_->IsReadOnly(); }
  const Header& DatabaseHeader() const { return storage_->DatabaseHeader(); }
  const Catalog& Objects();
  PageSource& Source() { return storage_->Source(); }
  Storage& Shared() { return *storage_; }

  // The tables made by users, in the order of their names; system and hidden tables are left out.
  std::vector<std::u16string> TableNames();
  bool HasTable(std::u16string_view name);
  // Any table by name (system tables too), in any case. An Error when there is none or its definition is damaged.
  Table OpenTable(std::u16string_view name);

  // To change the rows of a table, within a WriteTurn.
  std::unique_ptr<TableWriter> OpenWriter(std::u16string_view name) { return OpenWriter(OpenTable(name)); }
  // The same of a table opened within this turn, of which nothing was changed since.
  std::unique_ptr<TableWriter> OpenWriter(const Table& table);
  // Makes a table with its indexes, within a WriteTurn. Column numbers, places and `fixed` in the definition are not
  // looked at. An Error for a name that is there already or a definition that no table can have.
  void CreateTable(const TableDefinition& table);
  // The same with the properties that a table of another file has.
  void CreateTable(const TableDefinition& table, const std::vector<PropertySet>& properties);

 private:
  Database(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files);
  std::string Context() const;

  std::shared_ptr<Storage> storage_;
  CachedFromPages<Catalog> catalog_;
  std::map<RowId, CachedFromPages<std::vector<PropertySet>>> properties_;  // by row of the catalogue
};

// In between, what is read stays the same. Turns may be nested.
class ReadTurn {
 public:
  explicit ReadTurn(Database& database) : reading_(database.Shared()) {}

 private:
  ReadGuard reading_;
};

// The one writer's turn. What was not committed is rolled back. It ends with the first Commit, also with one that
// fails; every further one is an Error (Misuse).
class WriteTurn {
 public:
  explicit WriteTurn(Database& database) : writing_(database.Shared()) {}
  // The change is there to stay when this returns, and not at all when it throws.
  void Commit() { writing_.Commit(); }

 private:
  WriteGuard writing_;
};

}  // namespace jet
