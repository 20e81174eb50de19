// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "export/playout/Block.h"

#include <QHash>

#include <vector>

// The blocks of a catalogue, read to plan them. For any thread; the database is opened to read only. All throw
// runtime::Error.

// By name, then by ID.
std::vector<Block> ReadBlocks(const Catalogue& catalogue);
// An empty block, with an ID of 0, when there is none.
Block ReadBlock(const Catalogue& catalogue, qint32 id);

// All item-spots and item-pingles by their ID, for blocks that are not in the catalogue as they are shown: see
// items/frmItemsDetail.
class BlockParts {
 public:
  explicit BlockParts(const Catalogue& catalogue);

  // Null when there is none.
  const BlockSpot* Spot(qint32 id) const;
  // An ID of 0 is no jingle.
  std::optional<BlockJingle> Jingle(qint32 id) const;

 private:
  QHash<qint32, BlockSpot> spots_;
  QHash<qint32, BlockJingle> jingles_;
};
