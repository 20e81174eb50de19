// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "export/playout/Block.h"

#include <QHash>

#include <vector>

// Reads the blocks of a catalogue for planning. Any thread; the database is opened read-only. All functions throw
// runtime::Error.

// Sorted by name, then ID.
std::vector<Block> ReadBlocks(const Catalogue& catalogue);
// An empty block with ID 0 when the item does not exist.
Block ReadBlock(const Catalogue& catalogue, qint32 id);

// All item-spots and item-pingles by ID, to make blocks with unsaved changes (items/frmItemsDetail).
class BlockParts {
 public:
  explicit BlockParts(const Catalogue& catalogue);

  // All of them, by name.
  std::vector<BlockSpot> Spots() const;
  std::vector<BlockJingle> Jingles() const;

  // Null when the spot does not exist.
  const BlockSpot* Spot(qint32 id) const;
  // Empty for ID 0 (no jingle).
  std::optional<BlockJingle> Jingle(qint32 id) const;

 private:
  QHash<qint32, BlockSpot> spots_;
  QHash<qint32, BlockJingle> jingles_;
};
