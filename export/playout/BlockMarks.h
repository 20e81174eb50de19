// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "export/playout/BlockPlan.h"

#include <QHash>
#include <QString>

#include <functional>
#include <vector>

// What a list says of a block at this moment.
struct BlockMark {
  enum class State { Whole, Remark, Short, Silent, NotActive };

  qint32 id = 0;
  State state = State::Whole;
  int spots = 0;
  std::optional<qint64> lengthMs;
  QString word;     // "3 spots", "stil: verlopen"
  QString trouble;  // all of it; empty when all is well

  bool operator==(const BlockMark&) const = default;
};

BlockMark MarkOf(const Block& block, const BlockPlan& plan);

// Reads a catalogue's blocks and marks each: first by what the records say, then, where that makes a difference, by
// which files are there. `tell` is called with either, on the calling thread; `isWanted` is asked in between. Any
// thread that may wait. Throws runtime::Error when the catalogue cannot be read.
void MarkBlocks(const Catalogue& catalogue, const QDateTime& moment, const std::function<bool()>& isWanted,
                const std::function<void(std::vector<BlockMark> marks, bool last)>& tell);
