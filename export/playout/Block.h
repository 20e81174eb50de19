// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "export/playout/FileNameExample.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

// One advertising block with all catalogue data that decides what it plays. Mix points are milliseconds before the end.

struct BlockSpot {
  qint32 id = 0;
  QString naam;
  SpotFacts facts;
  qint32 mixMs = 0;
  qint32 playCount = 0;
  QDateTime lastPlayed;  // invalid: never
};

struct BlockJingle {
  qint32 id = 0;
  bool exists = true;  // false: the block refers to a deleted jingle
  QString naam;
  QString path;  // path text
  bool aktief = true;
  qint32 mixMs = 0;
  std::optional<qint32> lengteSec;
};

struct Block {
  enum class Filling { Unknown, List, Files };

  qint32 id = 0;
  QString naam;
  bool aktief = true;
  Filling filling = Filling::List;
  std::vector<BlockSpot> spots;  // Filling::List: in list order
  FileNamePattern pattern;       // Filling::Files; its severalSpots equals `several`
  qint32 patternMixMs = 0;
  bool several = false;  // more than one spot per broadcast
  qint32 count = 0;      // number of spots if `several`
  qint32 most = 0;       // upper limit of `count`
  bool random = false;
  std::optional<BlockJingle> opener;  // empty: no jingle chosen
  std::optional<BlockJingle> middle;
  std::optional<BlockJingle> closer;

  // Number of spots that a broadcast should have.
  int WantedSpots() const;
};
