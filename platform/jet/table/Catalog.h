// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

// Definition pages of the tables that every file has.
constexpr std::uint32_t kObjectsTable = 2;  // MSysObjects: the catalogue
constexpr std::uint32_t kAccessTable = 3;   // MSysACEs: permissions

// One row of the catalogue.
struct CatalogEntry {
  static constexpr std::uint32_t kSystemFlags = 0x80000002;
  enum Type : std::int16_t { kTable = 1, kContainer = 3, kOdbcLink = 4, kQuery = 5, kLink = 6, kRelationship = 8 };

  std::int32_t id = 0;  // definition page of a table
  std::int32_t parent = 0;
  std::u16string name;
  std::int16_t type = 0;
  std::uint32_t flags = 0;
  RowId row = 0;

  bool IsTable() const { return type == kTable; }
  bool IsUserTable() const { return IsTable() && (flags & kSystemFlags) == 0; }
};

// The objects of a database, read from MSysObjects.
class Catalog {
 public:
  static Catalog Read(PageSource& pages);

  const std::vector<CatalogEntry>& Entries() const { return entries_; }
  // The table with that name, ignoring case; null when there is none.
  const CatalogEntry* FindTable(std::u16string_view name) const;
  // Descriptions of catalogue rows that could not be read.
  const std::vector<std::string>& Damages() const { return damages_; }

 private:
  std::vector<CatalogEntry> entries_;
  std::vector<std::string> damages_;
};

// The property block (LvProp) of a catalogue row; nothing when it has none.
std::optional<Bytes> ReadPropertyBlock(PageSource& pages, RowId catalogRow);

}  // namespace jet
