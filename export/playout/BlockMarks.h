// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "export/playout/BlockPlan.h"

#include <QHash>
#include <QString>

#include <functional>
#include <vector>

// State of a block at one moment, as a list shows it.
struct BlockMark {
  enum class State { Complete, Remark, Short, Silent, NotActive };

  qint32 id = 0;
  State state = State::Complete;
  int spots = 0;
  std::optional<qint64> lengthMs;
  QString word;     // "3 spots", "stil: verlopen"
  QString trouble;  // complete text; empty without problems

  bool operator==(const BlockMark&) const = default;
};

BlockMark MarkOf(const Block& block, const BlockPlan& plan);

// Reads a catalogue's blocks and calls `report` with a mark for each, from the records only; then again with the marks
// that change because of missing files (`last` is true in the final call). `isWanted` is polled in between; false stops
// the work. Any thread that may block. Throws runtime::Error when the catalogue cannot be read.
void MarkBlocks(const Catalogue& catalogue, const QDateTime& moment, const std::function<bool()>& isWanted,
                const std::function<void(std::vector<BlockMark> marks, bool last)>& report);
