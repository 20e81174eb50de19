// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/check/TableCopy.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Transaction.h"

#include <memory>
#include <set>
#include <vector>

namespace jet {

// The pages of a new file with everything that a database holds, and no dead space: the header with password and
// encoding and a mark of its own, every table, those of the system too, byte for byte where page numbers need not
// change.
//
// A table keeps the page of its definition, which is its number elsewhere in the file, unless that would leave much of
// the new file empty.
class DatabaseCopy {
 public:
  // An Error (Damaged) when something of the source cannot be read, or (Unsupported), naming it, when something would
  // be lost. The source must be open for reading, and outlive this.
  explicit DatabaseCopy(Database& source);

  // Decoded; a file with an encoding key has them encoded.
  PageSource& Pages() { return *pages_; }
  // Whether `target`, which was written from these pages, holds the same as the source: an Error when not.
  void Compare(Database& target);

 private:
  void ReadTables();
  void RequireNothingLost();
  void RequireSoundRows();
  // Copies everything; tables in `keeping` keep their place.
  void Build(const std::set<std::uint32_t>& keeping);
  void TakePlaces(PageSpace& space, std::set<std::uint32_t> keeping);
  std::uint32_t UsedPages();

  Database& source_;
  std::vector<StoredTable> tables_;  // by their pages, those of the engine first
  std::vector<std::string> names_;
  NoPages nothing_;
  std::unique_ptr<Transaction> pages_;
  TablePlaces places_;
};

}  // namespace jet
