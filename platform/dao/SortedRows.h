// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <vector>

namespace dao {

// The rows of a cursor sorted by a text field: NULL first, then by the text order, equal texts in the cursor's order.
// That is the order of SQLite's sorter with the text order as collation. It takes less time: the sort key of each text
// is built once, and sorting compares bytes. All rows are held in memory, as in that sorter.
class SortedRows final : public Cursor {
 public:
  // Reads all rows. `wanted`: the fields to keep; `field`: one of them, of type Text.
  SortedRows(Cursor& rows, const FieldMask& wanted, std::size_t field);

  bool Next() override;
  RowId Id() const override;
  ValueView Field(std::size_t field) const override;

 private:
  struct StoredRow;
  // A row in the order of sorting, with the eight bytes of its key that are compared.
  struct Place {
    std::uint64_t bytes;
    const StoredRow* row;
  };

  const StoredRow& Present() const { return *places_[next_ - 1].row; }
  const StoredRow* Stored(const Cursor& rows, const std::vector<std::size_t>& fields);
  ValueView Copied(const ValueView& value);
  static void SortByKeys(std::span<Place> places, std::size_t depth);
  void SortByTexts();

  std::pmr::monotonic_buffer_resource memory_;      // of the rows with their texts and keys
  std::array<std::uint8_t, kMaxFields> columns_{};  // the position of each wanted field in a row
  std::size_t sortColumn_ = 0;
  bool allHaveKeys_ = true;
  std::vector<Place> places_;
  std::vector<std::uint8_t> key_;  // reused
  std::size_t next_ = 0;           // 1 for the first row
};

}  // namespace dao
