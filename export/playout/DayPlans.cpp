// SPDX-License-Identifier: MIT
#include "export/playout/DayPlans.h"

namespace {

constexpr int kHours = 24;
constexpr int kNoon = 12;

SpotFacts WithFile(SpotFacts facts, const LookUpFile& lookUp) {
  if (facts.path.isEmpty()) return facts;
  if (const std::optional<SoundFile> file = lookUp(facts.path)) facts.file = file->presence;
  return facts;
}

// Adds the spot to the lists of the day.
void AddTo(DayPlan& plan, qint32 id, const SpotFacts& facts) {
  const QDateTime noon(plan.date, QTime(kNoon, 0));
  if (!facts.aktief || !IsRunning(StateByTime(facts, noon))) return;
  if (!IsRunning(StateOf(facts, noon))) return plan.withoutFile.push_back(id);
  plan.running.push_back(id);
  if (facts.startDatum == plan.date) plan.begins.push_back(id);
  if (facts.eindDatum == plan.date) plan.ends.push_back(id);
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
  std::vector<DayPlan> plans(static_cast<std::size_t>(days));
  for (std::size_t i = 0; i < plans.size(); ++i)
    plans[i].date = first.addDays(static_cast<int>(i));
  for (const BlockSpot& spot : spots) {
    const SpotFacts facts = WithFile(spot.facts, lookUp);
    for (DayPlan& plan : plans)
      AddTo(plan, spot.id, facts);
  }
  for (DayPlan& plan : plans) {
    for (const Block& block : blocks) {
      if (block.aktief && IsSilentOn(block, plan.date, lookUp)) plan.silent.push_back(block.id);
    }
  }
  return plans;
}
