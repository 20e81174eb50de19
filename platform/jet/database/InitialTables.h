// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Definition.h"

#include <cstdint>
#include <span>
#include <vector>

namespace jet {

struct EngineColumn {
  const char16_t* name;
  ColumnType type;
  bool obfuscated = false;
};

struct EngineIndex {
  const char16_t* name;
  std::vector<std::uint16_t> columns;  // by number
  std::uint8_t flags;
  bool primary = false;
};

// One of the four tables of the engine in a new database.
struct EngineTable {
  std::uint32_t page;                 // definition page
  std::vector<EngineColumn> columns;  // by number
  std::vector<EngineIndex> indexes;   // by number; roots on consecutive pages
  std::vector<std::size_t> byName;    // positions in `indexes`
};

// MSysObjects, MSysACEs, MSysQueries and MSysRelationships, in the order of their pages.
std::span<const EngineTable> InitialTables();

}  // namespace jet
