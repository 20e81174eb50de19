// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// A small Jet 4 file built byte by byte without the code under test, so that a test knows every offset and can damage
// it.
class DatabaseImage {
 public:
  using Page = std::array<std::uint8_t, 4096>;

  struct Column {
    std::string name;
    std::uint8_t type;
    std::uint8_t flags;  // 1 = fixed, 2 = always, 4 = autonumber
    std::uint16_t number;
    std::uint16_t place;  // fixed offset, or variable index
    std::uint16_t length;
  };
  struct Index {
    std::string name;
    std::uint16_t column;
    std::uint8_t flags;  // flags of the tree: 0x80, 1 = unique, 2 = ignore nulls, 8 = required
    std::uint8_t role;   // 1 = primary key
    bool descending = false;
  };
  struct Table {
    std::uint32_t page = 0;  // definition page
    std::uint32_t maps = 0;  // page of the map rows: 0 owned, 1 free, two for each memo column, one for each index
    std::uint32_t data = 0;  // the newest data page
    std::size_t longColumns = 0;
    std::vector<std::uint32_t> roots;
  };

  DatabaseImage();

  Page& At(std::uint32_t page) { return pages_.at(page); }
  std::uint32_t NewPage();
  Table AddTable(const std::string& name, const std::vector<Column>& columns, const std::vector<Index>& indexes = {});
  // Writes the row to the table's newest data page, or a new one.
  jet::RowId AddRow(Table& table, const jet::Bytes& row, jet::SlotKind kind = jet::SlotKind::Row);
  // Adds a page of long values for the table's memo column.
  std::uint32_t AddLongValuePage(Table& table, std::size_t memo = 0);
  // Appends a slot to a data page and keeps its free bytes exact.
  jet::RowId AddSlot(std::uint32_t page, const jet::Bytes& bytes, jet::SlotKind kind = jet::SlotKind::Row);
  void AddToMap(jet::RowId map, std::uint32_t page, bool member = true);
  static jet::RowId MapOfIndex(const Table& table, std::size_t index) {
    return jet::MakeRowId(table.maps, static_cast<std::uint32_t>(2 + 2 * table.longColumns + index));
  }
  void SetRowCount(const Table& table, std::uint32_t rows, std::uint32_t autonumber);
  // Writes complete entries (key, u24 page, u8 row; in a node the u32 child page too).
  void PutIndexPage(std::uint32_t page, const Table& table, const std::vector<jet::Bytes>& entries,
                    std::uint32_t previous, std::uint32_t next, std::uint32_t tail = 0, bool node = false,
                    std::size_t prefix = 0);
  std::uint32_t AddIndexPage(const Table& table, std::size_t index);

  // Masks or unmasks the header, for a test that changes it.
  void MaskHeader();
  jet::Bytes File() const;

 private:
  void PutStream(std::uint32_t first, const jet::Bytes& stream);
  void PutDefinition(const Table& table, const std::vector<Column>& columns, const std::vector<Index>& indexes);
  void AddToCatalog(const std::string& name, std::uint32_t page);

  std::vector<Page> pages_;
  Table catalog_;
};

// The u16 at that offset of a page.
inline std::uint16_t Get16(const DatabaseImage::Page& page, std::size_t at) {
  return static_cast<std::uint16_t>(page.at(at) | page.at(at + 1) << 8);
}

// The bytes of a little-endian number.
jet::Bytes Le(std::uint64_t number, std::size_t size);
jet::Bytes Utf16(const std::string& ascii);
jet::Bytes operator+(jet::Bytes a, const jet::Bytes& b);
// A row: column count, fixed area, variable values, null mask (bit per column number).
jet::Bytes RowBytes(unsigned columns, const jet::Bytes& fixed, const std::vector<jet::Bytes>& values,
                    std::uint32_t mask);
// Opens bytes as a database in memory.
std::unique_ptr<jet::Database> OpenBytes(const jet::Bytes& file, const jet::OpenOptions& options = {});
