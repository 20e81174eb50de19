// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/check/TableCopy.h"
#include "platform/jet/pages/Transaction.h"

#include <memory>
#include <set>
#include <vector>

namespace jet {

class Database;

// Builds the pages of a new file with the content of a database and without unused space: the header with password,
// encoding and a new change mark, and every table, also system tables, byte for byte except for changed page numbers.
//
// A table keeps its definition page, whose number identifies it in the file, unless that would leave much of the new
// file empty.
class DatabaseCopy {
 public:
  // Throws Error (Damaged) when part of the source is unreadable, or (Unsupported, with its name) when something would
  // be lost. The caller holds a ReadTurn of the source, which must outlive this.
  explicit DatabaseCopy(Database& source);

  // The pages, not yet encoded.
  PageSource& Pages() { return *pages_; }
  // Compares `target`, which was written from these pages, with the source. Throws Error when they differ.
  void Compare(Database& target);

 private:
  void ReadTables();
  void RequireNothingLost();
  void RequireSoundRows();
  // Copies everything; tables in `keeping` keep their definition page.
  void Build(const std::set<std::uint32_t>& keeping);
  void TakePlaces(PageSpace& space, std::set<std::uint32_t> keeping);
  std::uint32_t UsedPages();

  Database& source_;
  std::vector<StoredTable> tables_;  // by page, those of the engine first
  std::vector<std::string> names_;
  NoPages nothing_;
  std::unique_ptr<Transaction> pages_;
  TablePlaces places_;
};

}  // namespace jet
