// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/OpenOptions.h"
#include "platform/jet/pages/CachedFromPages.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/storage/Storage.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/Properties.h"
#include "platform/jet/table/Table.h"
#include "platform/jet/table/TableShape.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

class TableWriter;

// An open Jet 4 database file. Not thread-safe. Errors name the file.
//
// Consistent reading requires a ReadTurn, changes a WriteTurn. Tables, cursors and writers are valid only within the
// turn in which they were opened.
class Database {
 public:
  // Opens an existing file. Throws Error for a file of another format or a wrong password.
  static std::unique_ptr<Database> Open(const std::filesystem::path& path, const OpenOptions& options = {},
                                        FileSystem& files = HostFileSystem());

  // Creates a database without tables. Throws Error when the file exists.
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
  // Opens any table by name (also system tables), ignoring case. Throws Error when it does not exist or its definition
  // is damaged.
  Table OpenTable(std::u16string_view name);
  // The same for an entry of Objects().
  Table OpenTable(const CatalogEntry& entry);

  // For changing the rows of a table, within a WriteTurn.
  std::unique_ptr<TableWriter> OpenWriter(std::u16string_view name);
  // The same for a table that was opened within this turn and not changed since.
  std::unique_ptr<TableWriter> OpenWriter(const Table& table);
  // Creates a table with its indexes, within a WriteTurn. Column numbers, positions and `fixed` in the definition are
  // ignored. Throws Error for an existing name or an invalid definition.
  void CreateTable(const TableDefinition& table);
  // The same, with properties copied from a table of another file.
  void CreateTable(const TableDefinition& table, const std::vector<PropertySet>& properties);

 private:
  Database(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files);
  std::string Context() const;

  std::shared_ptr<Storage> storage_;
  CachedFromPages<Catalog> catalog_;
  // By row of the catalogue.
  std::map<RowId, CachedFromPages<CachedTableShape::Properties>> properties_;
  std::map<RowId, CachedTableShape> shapes_;
};

}  // namespace jet
