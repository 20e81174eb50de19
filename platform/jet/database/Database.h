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
  std::u16string password;         // for a file with a password
  std::size_t cachedPages = 2048;  // cache size in pages of 4096 bytes
  bool writable = false;           // if false, nothing is written, not even a lock file
  WaitRule wait = WaitRule::Real();
};

// An open Jet 4 database file. Not thread-safe. Errors name the file.
//
// Consistent reading requires a ReadTurn, changes a WriteTurn. Tables, cursors and writers are valid only within the
// turn in which they were opened.
class Database {
 public:
  // Opens an existing file. An Error for a file of another format or a wrong password.
  static std::unique_ptr<Database> Open(const std::filesystem::path& path, const OpenOptions& options = {},
                                        FileSystem& files = HostFileSystem());

  // Creates a database without tables. An Error when the file exists.
  static void Create(const std::filesystem::path& path, FileSystem& files = HostFileSystem());

  const std::string& Name() const { return storage_->Name(); }
  // Whether both have the same file open, even by different paths.
  bool IsSameFile(const Database& other) const { return storage_ == other.storage_; }
  bool IsReadOnly() const { return storage_->IsReadOnly(); }
  const Header& DatabaseHeader() const { return storage_->DatabaseHeader(); }
  const Catalog& Objects();
  PageSource& Source() { return storage_->Source(); }
  Storage& Shared() { return *storage_; }

  // The names of the user tables, sorted; without system and hidden tables.
  std::vector<std::u16string> TableNames();
  bool HasTable(std::u16string_view name);
  // Opens any table by name (also system tables), ignoring case. An Error when it does not exist or its definition is
  // damaged.
  Table OpenTable(std::u16string_view name);

  // For changing the rows of a table, within a WriteTurn.
  std::unique_ptr<TableWriter> OpenWriter(std::u16string_view name) { return OpenWriter(OpenTable(name)); }
  // The same for a table that was opened within this turn and not changed since.
  std::unique_ptr<TableWriter> OpenWriter(const Table& table);
  // Creates a table with its indexes, within a WriteTurn. Column numbers, positions and `fixed` in the definition are
  // ignored. An Error for an existing name or an invalid definition.
  void CreateTable(const TableDefinition& table);
  // The same, with properties copied from a table of another file.
  void CreateTable(const TableDefinition& table, const std::vector<PropertySet>& properties);

 private:
  Database(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files);
  std::string Context() const;

  std::shared_ptr<Storage> storage_;
  CachedFromPages<Catalog> catalog_;
  std::map<RowId, CachedFromPages<std::vector<PropertySet>>> properties_;  // by row of the catalogue
};

// Reading within its lifetime is consistent. Turns may be nested.
class ReadTurn {
 public:
  explicit ReadTurn(Database& database) : reading_(database.Shared()) {}

 private:
  ReadGuard reading_;
};

// The turn of the single writer. Rolled back unless committed. The first Commit ends it, even if that fails; a further
// one is an Error (Misuse).
class WriteTurn {
 public:
  explicit WriteTurn(Database& database) : writing_(database.Shared()) {}
  // Makes the change durable. After an Error nothing was changed (except NotYetDurable: see Storage::Commit).
  void Commit() { writing_.Commit(); }

 private:
  WriteGuard writing_;
};

}  // namespace jet
