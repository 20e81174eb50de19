// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <vector>

namespace dao {

// The rows of a cursor sorted by a text field: NULL first, then by the text order, equal texts in the cursor's order.
// The same order as SQLite's sorter gives with the text order as collation, but faster: the sort key of each text is
// built once, and sorting compares the bytes of the keys. All rows are held in memory, as in that sorter.
class SortedRows final : public Cursor {
 public:
  // Reads all rows. `wanted`: the fields to keep; `field`: one of them, of type Text.
  SortedRows(Cursor& rows, const FieldMask& wanted, std::size_t field);

  bool Next() override;
  RowId Id() const override { return ids_[Row()]; }
  ValueView Field(std::size_t field) const override;

 private:
  // A row, in sort order.
  struct Place {
    std::uint64_t start = 0;        // the first bytes of the key, the first one highest; 0 for NULL
    std::basic_string_view<std::uint8_t> key{};
    std::uint32_t row = 0;
    bool hasKey = true;  // false for a text whose key cannot be built
  };

  ValueView Kept(const ValueView& value);
  Place PlaceOf(const ValueView& text, std::uint32_t row);
  bool IsBefore(const Place& one, const Place& other) const;
  std::u16string_view TextOf(const Place& place) const;
  std::size_t Row() const { return places_[next_ - 1].row; }

  std::pmr::monotonic_buffer_resource memory_;  // of the texts, bytes and keys
  std::vector<std::size_t> columns_;            // the position of each wanted field in a row of values_
  std::size_t width_;
  std::size_t sortColumn_;
  std::vector<RowId> ids_;
  std::vector<ValueView> values_;
  std::vector<Place> places_;
  std::vector<std::uint8_t> key_;  // reused
  std::size_t next_ = 0;
};

}  // namespace dao
