// SPDX-License-Identifier: MIT
#pragma once

#include "tests/platform/jet/DatabaseImage.h"

#include <vector>

// A file with one table "Spots" (Id, Amount, Flag, Name, Notes) of six rows, Ids 1 to 6, names "a" to "f". Row 2 has
// an inline memo, row 4 one of a single piece, row 5 one of two pieces; row 3 has moved. "PrimaryKey" on Id is a tree
// of a node and two leaves, "Name" a single leaf.
struct SpotsImage {
  SpotsImage();

  jet::Bytes Row(int id, const jet::Bytes& memo) const;
  static jet::Bytes IdKey(int id);
  jet::Bytes IdEntry(int id) const { return IdKey(id) + Pointer(rows[static_cast<std::size_t>(id)]); }
  static jet::Bytes Pointer(jet::RowId row);
  static jet::Bytes Child(std::uint32_t page);

  DatabaseImage image;
  DatabaseImage::Table spots;
  std::vector<jet::RowId> rows;  // by Id; [0] is the moved row's target
  std::uint32_t memoPage = 0;    // single piece
  std::uint32_t chainPages[2] = {};
  std::uint32_t leaves[2] = {};
  std::uint32_t root = 0;
  std::uint32_t nameRoot = 0;
};

// Head of a long value: kind 0 chain, 1 single, 2 inline.
jet::Bytes LongHead(std::uint32_t length, std::uint32_t kind, jet::RowId where);
