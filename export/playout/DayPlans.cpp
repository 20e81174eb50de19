// SPDX-License-Identifier: MIT
#include "export/playout/DayPlans.h"

namespace {

constexpr int kHours = 24;
constexpr int kNoon = 12;

bool RunsOn(const SpotFacts& spot, QDate day) {
  return spot.aktief && (!spot.startDatum || *spot.startDatum <= day) && (!spot.eindDatum || day <= *spot.eindDatum);
}

bool IsSilentAt(const Block& block, QDate day, int hour, const LookUpFile& lookUp) {
  return PlanBlock(block, QDateTime(day, QTime(hour, 0)), 0, lookUp).IsSilent();
}

// Most blocks play at noon, so that one plan is enough for them.
bool IsSilentOn(const Block& block, QDate day, const LookUpFile& lookUp) {
  const LookUpFile none = [](const QString&) { return std::nullopt; };
  const LookUpFile& files = block.filling == Block::Filling::Files ? none : lookUp;
  if (!IsSilentAt(block, day, kNoon, files)) return false;
  for (int hour = 0; hour < kHours; ++hour) {
    if (!IsSilentAt(block, day, hour, files)) return false;
  }
  return true;
}

}  // namespace

std::vector<DayPlan> PlanDays(const std::vector<BlockSpot>& spots, const std::vector<Block>& blocks, QDate first,
                              int days, const LookUpFile& lookUp) {
  std::vector<DayPlan> plans;
  for (int i = 0; i < days; ++i) {
    DayPlan& plan = plans.emplace_back();
    plan.date = first.addDays(i);
    for (const BlockSpot& spot : spots) {
      if (!RunsOn(spot.facts, plan.date)) continue;
      plan.running.push_back(spot.id);
      if (spot.facts.startDatum == plan.date) plan.begins.push_back(spot.id);
      if (spot.facts.eindDatum == plan.date) plan.ends.push_back(spot.id);
    }
    for (const Block& block : blocks) {
      if (block.aktief && IsSilentOn(block, plan.date, lookUp)) plan.silent.push_back(block.id);
    }
  }
  return plans;
}
