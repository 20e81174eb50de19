// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <set>

// Blocks with invented spots, jingles and files, and the content of their plans.
namespace plan_test {

inline const QDateTime kNoon(QDate(2025, 3, 11), QTime(12, 0));

inline BlockSpot Spot(qint32 id, qint32 mixMs = 1000, qint32 seconds = 10) {
  BlockSpot spot;
  spot.id = id;
  spot.naam = QStringLiteral("Spot %1").arg(id);
  spot.facts.path = QStringLiteral("D:\\%1.wav").arg(id);
  spot.facts.aktief = true;
  spot.facts.lengteSec = seconds;
  spot.mixMs = mixMs;
  return spot;
}

inline BlockJingle Jingle(qint32 id) {
  BlockJingle jingle;
  jingle.id = id;
  jingle.naam = QStringLiteral("Jingle %1").arg(id);
  jingle.path = QStringLiteral("D:\\jingle%1.wav").arg(id);
  jingle.mixMs = 200;
  jingle.lengteSec = 3;
  return jingle;
}

inline Block ListOf(std::vector<BlockSpot> spots, int several = 0) {
  Block block;
  block.id = 7;
  block.naam = QStringLiteral("Blok");
  block.spots = std::move(spots);
  block.several = several > 0;
  block.count = block.most = several;
  return block;
}

inline Block Files(int code, const QString& format, int several = 0) {
  Block block;
  block.filling = Block::Filling::Files;
  block.pattern = {
      QStringLiteral("D:\\map"), QStringLiteral("blok"), code, format, 2, QStringLiteral("wav"), several > 0};
  block.patternMixMs = 500;
  block.several = several > 0;
  block.count = block.most = several;
  return block;
}

// Every file exists and is ten seconds long, except those given.
inline LookUpFile AllBut(const std::set<QString>& missing) {
  return [missing](const QString& path) {
    return SoundFile{missing.contains(path) ? runtime::Presence::NotThere : runtime::Presence::There, 10'000};
  };
}
inline const LookUpFile kAll = AllBut({});

inline QStringList Paths(const BlockPlan& plan) {
  QStringList paths;
  for (const PlannedSound& sound : plan.sounds)
    paths += sound.path;
  return paths;
}

inline QList<qint32> Ids(const BlockPlan& plan) {
  QList<qint32> ids;
  for (const PlannedSound& sound : plan.sounds)
    ids += sound.id;
  return ids;
}

inline std::optional<LeftOut> ReasonOf(const BlockPlan& plan, qint32 id) {
  for (const LeftOutSound& sound : plan.leftOut) {
    if (sound.id == id) return sound.reason;
  }
  return std::nullopt;
}

inline BlockPlan Plan(const Block& block, const LookUpFile& lookUp = kAll, const QDateTime& moment = kNoon) {
  return PlanBlock(block, moment, 1, lookUp);
}

}  // namespace plan_test
