// SPDX-License-Identifier: MIT
#include "tests/platform/jet/DatabaseImage.h"

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Rc4.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <memory>

using jet::Bytes;

namespace {

constexpr std::uint32_t kCatalog = 2;

template <typename Number>
void Put(DatabaseImage::Page& page, std::size_t at, Number number) {
  std::memcpy(page.data() + at, &number, sizeof number);
}

bool IsLong(const DatabaseImage::Column& column) {
  return column.type == 11 || column.type == 12;
}

Bytes UsageMapEditor() {
  return Bytes(69, 0);
}

}  // namespace

Bytes Le(std::uint64_t number, std::size_t size) {
  Bytes bytes(size);
  std::memcpy(bytes.data(), &number, std::min(size, sizeof number));
  return bytes;
}

Bytes Utf16(const std::string& ascii) {
  Bytes bytes;
  for (const char c : ascii) {
    bytes.push_back(static_cast<std::uint8_t>(c));
    bytes.push_back(0);
  }
  return bytes;
}

Bytes operator+(Bytes a, const Bytes& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Bytes RowBytes(unsigned columns, const Bytes& fixed, const std::vector<Bytes>& values, std::uint32_t mask) {
  Bytes row = Le(columns, 2) + fixed;
  std::vector<std::size_t> starts;
  for (const Bytes& value : values) {
    starts.push_back(row.size());
    row = row + value;
  }
  if (!values.empty()) {
    const std::size_t end = row.size();
    row = row + Le(end, 2);
    std::reverse(starts.begin(), starts.end());
    for (const std::size_t start : starts)
      row = row + Le(start, 2);
    row = row + Le(values.size(), 2);
  }
  return row + Le(mask, (columns + 7) / 8);
}

std::unique_ptr<jet::Database> OpenBytes(const Bytes& file, const jet::OpenOptions& options) {
  // The file system must outlive the open database.
  static std::deque<files::MemoryFileSystem> systems;
  files::MemoryFileSystem& files = systems.emplace_back();
  files.Put("test.mdb", file);
  return jet::Database::Open("test.mdb", options, files);
}

DatabaseImage::DatabaseImage() {
  pages_.resize(2);
  Page& header = pages_[0];
  std::memcpy(header.data(), "\0\1\0\0Standard Jet DB", 20);
  Put<std::uint32_t>(header, 0x14, 1);
  Put<std::uint32_t>(header, 0x18, 0x100);
  Put<std::uint32_t>(header, 0x6E, 0x0409);
  const double date = 40960.0;
  Put(header, 0x72, date);
  for (std::size_t i = 0; i < 40; i += 4)
    Put<std::uint32_t>(header, 0x42 + i, 40960);
  MaskHeader();
  for (std::size_t i = 0xE00; i < 4096; i += 2)
    Put<std::uint16_t>(header, i, 0x0100);
  pages_[1] = {1, 1};
  Put<std::uint32_t>(pages_[1], 4, 1);
  Put<std::uint16_t>(pages_[1], 2, 4096 - 14);
  Bytes free = UsageMapEditor();
  std::fill(free.begin() + 5, free.end(), std::uint8_t{0xFF});
  AddSlot(1, free);
  AddSlot(1, UsageMapEditor());
  AddToMap(0x100, 0, false);
  AddToMap(0x100, 1, false);
  const std::vector<Column> columns = {{"Id", 4, 3, 0, 0, 4},      {"ParentId", 4, 3, 1, 4, 4},
                                       {"Name", 10, 2, 2, 0, 510}, {"Type", 3, 3, 3, 8, 2},
                                       {"Flags", 4, 3, 7, 10, 4},  {"LvProp", 11, 2, 14, 1, 0}};
  catalog_ = AddTable("MSysObjects", columns);
}

void DatabaseImage::MaskHeader() {
  jet::ApplyRc4({0xC7, 0xDA, 0x39, 0x6B}, jet::ByteSpan(pages_[0]).subspan(0x18, 128));
}

std::uint32_t DatabaseImage::NewPage() {
  pages_.emplace_back();
  const auto number = static_cast<std::uint32_t>(pages_.size() - 1);
  AddToMap(0x100, number, false);
  return number;
}

DatabaseImage::Table DatabaseImage::AddTable(const std::string& name, const std::vector<Column>& columns,
                                             const std::vector<Index>& indexes) {
  Table table;
  table.page = NewPage();
  table.maps = NewPage();
  At(table.maps) = {1, 1};
  Put<std::uint16_t>(At(table.maps), 2, 4096 - 14);
  table.longColumns = static_cast<std::size_t>(std::count_if(columns.begin(), columns.end(), IsLong));
  for (std::size_t i = 0; i < 2 + 2 * table.longColumns + indexes.size(); ++i)
    AddSlot(table.maps, UsageMapEditor());
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    table.roots.push_back(AddIndexPage(table, i));
    PutIndexPage(table.roots[i], table, {}, 0, 0);
  }
  PutDefinition(table, columns, indexes);
  if (table.page == kCatalog) catalog_ = table;
  AddToCatalog(name, table.page);
  if (table.page == kCatalog) table = catalog_;
  return table;
}

void DatabaseImage::PutDefinition(const Table& table, const std::vector<Column>& columns,
                                  const std::vector<Index>& indexes) {
  const auto variables =
      std::count_if(columns.begin(), columns.end(), [](const Column& c) { return (c.flags & 1) == 0; });
  const unsigned most = columns.back().number + 1u;
  const std::uint32_t maps = table.maps << 8;
  Bytes stream = Bytes{2, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0} + Le(0x659, 4) + Le(0, 4) + Le(0, 4) + Le(1, 16) +
                 Bytes{'N'} + Le(most, 2) + Le(static_cast<std::uint64_t>(variables), 2) + Le(columns.size(), 2) +
                 Le(indexes.size(), 4) + Le(indexes.size(), 4) + Le(maps, 4) + Le(maps + 1, 4) +
                 Bytes(12 * indexes.size(), 0);
  for (const Column& column : columns) {
    const bool fixed = (column.flags & 1) != 0;
    stream = stream + Bytes{column.type} + Le(0x659, 4) + Le(column.number, 2) + Le(fixed ? 0 : column.place, 2) +
             Le(column.number, 2) + Le(0x0409, 4) + Bytes{column.flags, 1} + Le(0, 4) +
             Le(fixed ? column.place : 0, 2) + Le(column.length, 2);
  }
  for (const Column& column : columns)
    stream = stream + Le(2 * column.name.size(), 2) + Utf16(column.name);
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    stream = stream + Le(1923, 4) + Le(indexes[i].column, 2) + Bytes{std::uint8_t(indexes[i].descending ? 0 : 1)};
    for (int unused = 0; unused < 9; ++unused)
      stream = stream + Bytes{0xFF, 0xFF, 0};
    stream =
        stream + Le(MapOfIndex(table, i), 4) + Le(table.roots[i], 4) + Le(0, 4) + Bytes{indexes[i].flags} + Le(0, 5);
  }
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    stream = stream + Le(0x659, 4) + Le(i, 4) + Le(i, 4) + Bytes{0} + Le(0xFFFFFFFF, 4) + Le(0, 4) +
             Bytes{4, 4, indexes[i].role} + Le(0, 4);
  }
  for (const Index& index : indexes)
    stream = stream + Le(2 * index.name.size(), 2) + Utf16(index.name);
  std::uint32_t nextMap = maps + 2;
  for (const Column& column : columns) {
    if (IsLong(column)) stream = stream + Le(column.number, 2) + Le(nextMap, 4) + Le(nextMap + 1, 4);
    if (IsLong(column)) nextMap += 2;
  }
  stream = stream + Bytes{0xFF, 0xFF};
  PutStream(table.page, stream);
}

// The first page holds 4096 bytes of the stream, each further one 4088.
void DatabaseImage::PutStream(std::uint32_t first, const Bytes& stream) {
  const std::size_t onFirst = std::min<std::size_t>(stream.size(), 4096);
  std::copy_n(stream.begin(), onFirst, At(first).begin());
  Put(At(first), 8, static_cast<std::uint32_t>(stream.size()));
  Put(At(first), 2, static_cast<std::uint16_t>(onFirst > 4088 ? 0 : 4088 - onFirst));
  std::uint32_t previous = first;
  for (std::size_t done = onFirst; done < stream.size(); done += 4088) {
    const std::uint32_t page = NewPage();
    const std::size_t count = std::min<std::size_t>(stream.size() - done, 4088);
    At(page) = {2, 1};
    std::copy_n(stream.begin() + static_cast<std::ptrdiff_t>(done), count, At(page).begin() + 8);
    Put(At(page), 2, static_cast<std::uint16_t>(4088 - count > 8 ? 4088 - count - 8 : 0));
    Put(At(previous), 4, page);
    previous = page;
  }
}

void DatabaseImage::AddToCatalog(const std::string& name, std::uint32_t page) {
  const std::uint32_t flags = page == kCatalog ? 0x80000000 : 0;
  const Bytes fixed = Le(page, 4) + Le(0x0F000001, 4) + Le(1, 2) + Le(flags, 4);
  AddRow(catalog_, RowBytes(15, fixed, {Utf16(name), {}}, 0x8F));
  std::uint32_t rows;
  std::memcpy(&rows, At(kCatalog).data() + 16, 4);
  Put<std::uint32_t>(At(kCatalog), 16, rows + 1);
}

jet::RowId DatabaseImage::AddSlot(std::uint32_t number, const Bytes& bytes, jet::SlotKind kind) {
  Page& page = At(number);
  const unsigned slots = Get16(page, 12);
  const std::size_t end = slots == 0 ? 4096 : Get16(page, 14 + 2 * (slots - 1)) & 0x1FFF;
  const std::size_t start = end - bytes.size();
  std::copy(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(start));
  Put(page, 14 + 2 * slots, static_cast<std::uint16_t>(start | static_cast<std::uint16_t>(kind)));
  Put(page, 12, static_cast<std::uint16_t>(slots + 1));
  Put(page, 2, static_cast<std::uint16_t>(start - (14 + 2 * (slots + 1))));
  return jet::MakeRowId(number, slots);
}

jet::RowId DatabaseImage::AddRow(Table& table, const Bytes& row, jet::SlotKind kind) {
  if (table.data == 0 || Get16(At(table.data), 2) < row.size() + 2) {
    table.data = NewPage();
    At(table.data) = {1, 1};
    Put(At(table.data), 4, table.page);
    Put<std::uint16_t>(At(table.data), 2, 4096 - 14);
    AddToMap(table.maps << 8, table.data);
    AddToMap((table.maps << 8) + 1, table.data);
  }
  return AddSlot(table.data, row, kind);
}

std::uint32_t DatabaseImage::AddLongValuePage(Table& table, std::size_t memo) {
  const std::uint32_t page = NewPage();
  At(page) = {1, 1};
  Put<std::uint32_t>(At(page), 4, 0x4C41564C);
  Put<std::uint16_t>(At(page), 2, 4096 - 14);
  AddToMap((table.maps << 8) + 2 + static_cast<std::uint32_t>(2 * memo), page);
  return page;
}

void DatabaseImage::AddToMap(jet::RowId map, std::uint32_t page, bool member) {
  Page& holder = At(jet::PageOf(map));
  const std::size_t start = Get16(holder, 14 + 2 * jet::SlotOf(map)) & 0x1FFF;
  std::uint8_t& byte = holder.at(start + 5 + page / 8);
  const auto bit = static_cast<std::uint8_t>(1 << page % 8);
  byte = static_cast<std::uint8_t>(member ? byte | bit : byte & ~bit);
}

void DatabaseImage::SetRowCount(const Table& table, std::uint32_t rows, std::uint32_t autonumber) {
  Put(At(table.page), 16, rows);
  Put(At(table.page), 20, autonumber);
}

std::uint32_t DatabaseImage::AddIndexPage(const Table& table, std::size_t index) {
  const std::uint32_t page = NewPage();
  AddToMap(MapOfIndex(table, index), page);
  return page;
}

void DatabaseImage::PutIndexPage(std::uint32_t number, const Table& table, const std::vector<Bytes>& entries,
                                 std::uint32_t previous, std::uint32_t next, std::uint32_t tail, bool node,
                                 std::size_t prefix) {
  Page& page = At(number);
  page = {static_cast<std::uint8_t>(node ? 3 : 4), 1};
  Put(page, 4, table.page);
  Put(page, 12, previous);
  Put(page, 16, next);
  Put(page, 20, tail);
  Put(page, 24, static_cast<std::uint16_t>(prefix));
  page[26] = node ? 1 : 0;
  std::size_t at = 480;
  for (const Bytes& entry : entries) {
    const std::size_t skip = at == 480 ? 0 : prefix;
    std::copy(entry.begin() + static_cast<std::ptrdiff_t>(skip), entry.end(),
              page.begin() + static_cast<std::ptrdiff_t>(at));
    at += entry.size() - skip;
    page.at(27 + (at - 480) / 8) |= static_cast<std::uint8_t>(1 << (at - 480) % 8);
  }
  Put(page, 2, static_cast<std::uint16_t>(4096 - at));
}

Bytes DatabaseImage::File() const {
  Bytes file;
  for (const Page& page : pages_)
    file.insert(file.end(), page.begin(), page.end());
  return file;
}
