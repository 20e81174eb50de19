// SPDX-License-Identifier: MIT
#include "platform/jet/table/Catalog.h"

#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Names.h"

#include <variant>

namespace jet {

namespace {

// Column numbers of MSysObjects.
constexpr std::uint16_t kId = 0;
constexpr std::uint16_t kParentId = 1;
constexpr std::uint16_t kName = 2;
constexpr std::uint16_t kType = 3;
constexpr std::uint16_t kFlags = 7;
constexpr std::uint16_t kProperties = 14;

const StoredColumn& RequireColumn(const StoredTable& objects, std::uint16_t number, ColumnType type) {
  const StoredColumn* column = objects.ColumnByNumber(number);
  if (column == nullptr || column->Type() != type) throw Damage("de catalogus (MSysObjects) mist een kolom");
  return *column;
}

class EntryReader {
 public:
  EntryReader(PageSource& pages, const StoredTable& objects)
      : pages_(pages),
        objects_(objects),
        id_(RequireColumn(objects, kId, ColumnType::Long)),
        parent_(RequireColumn(objects, kParentId, ColumnType::Long)),
        name_(RequireColumn(objects, kName, ColumnType::Text)),
        type_(RequireColumn(objects, kType, ColumnType::Integer)),
        flags_(RequireColumn(objects, kFlags, ColumnType::Long)) {}

  CatalogEntry Read(RowId id, ByteView bytes) const {
    const RowView row(bytes, objects_);
    CatalogEntry entry;
    entry.row = id;
    entry.id = static_cast<std::int32_t>(Number(row, id_));
    entry.parent = static_cast<std::int32_t>(Number(row, parent_));
    entry.type = static_cast<std::int16_t>(Number(row, type_));
    entry.flags = static_cast<std::uint32_t>(Number(row, flags_));
    Value name;
    ReadField(pages_, row, name_, name);
    if (auto* text = std::get_if<std::u16string>(&name)) entry.name = std::move(*text);
    while (!entry.name.empty() && entry.name.back() == u'\0')
      entry.name.pop_back();
    return entry;
  }

 private:
  std::int64_t Number(const RowView& row, const StoredColumn& column) const {
    Value value;
    ReadField(pages_, row, column, value);
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? *number : 0;
  }

  PageSource& pages_;
  const StoredTable& objects_;
  const StoredColumn& id_;
  const StoredColumn& parent_;
  const StoredColumn& name_;
  const StoredColumn& type_;
  const StoredColumn& flags_;
};

}  // namespace

Catalog Catalog::Read(PageSource& pages) {
  Catalog catalog;
  const StoredTable objects = ReadStoredTable(pages, kObjectsTable);
  const EntryReader reader(pages, objects);
  RowScan scan(pages, objects);
  for (bool more = true; more;) {
    try {
      more = scan.Next();
      if (more) catalog.entries_.push_back(reader.Read(scan.Id(), scan.Row()));
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::Damaged) throw;
      catalog.damages_.push_back(std::string("tabel 'MSysObjects', ") + error.what());
    }
  }
  return catalog;
}

const CatalogEntry* Catalog::FindTable(std::u16string_view name) const {
  for (const CatalogEntry& entry : entries_) {
    if (entry.IsTable() && SameName(entry.name, name)) return &entry;
  }
  return nullptr;
}

std::optional<Bytes> ReadPropertyBlock(PageSource& pages, RowId catalogRow) {
  const StoredTable objects = ReadStoredTable(pages, kObjectsTable);
  const auto stored = FindRow(pages, catalogRow, true, kObjectsTable);
  if (!stored) return std::nullopt;
  const RowView row(stored->bytes, objects);
  Value value;
  ReadField(pages, row, RequireColumn(objects, kProperties, ColumnType::Ole), value);
  auto* bytes = std::get_if<Bytes>(&value);
  return bytes != nullptr ? std::optional(std::move(*bytes)) : std::nullopt;
}

}  // namespace jet
