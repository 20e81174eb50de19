// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DataPage.h"

#include <optional>
#include <vector>

namespace jet {

struct StoredTable;

// Iterates over the rows of a table by RowId. A moved row appears once, at its RowId.
//
// Damage throws and names the page; the next call continues after the damaged place.
class RowScan {
 public:
  // `pages` and `table` must outlive the scan.
  RowScan(PageSource& pages, const StoredTable& table);

  // Advances to the next row; false after the last.
  bool Next();
  RowId Id() const { return MakeRowId(page_->Number(), slot_ - 1); }
  // The row's bytes; valid until the next call of Next.
  ByteView Row() const { return row_; }

 private:
  bool NextPage();

  PageSource& pages_;
  std::uint32_t owner_;
  std::vector<std::uint32_t> owned_;
  std::size_t nextOwned_ = 0;
  std::optional<DataPage> page_;
  unsigned slot_ = 0;  // the next one to read
  PageRef movedTo_;
  ByteView row_;
};

}  // namespace jet
