// SPDX-License-Identifier: MIT
#include "export/playout/BlockMarks.h"

#include "export/playout/BlockReader.h"
#include "export/playout/PlanTexts.h"
#include "export/playout/SoundFiles.h"

using namespace Qt::StringLiterals;

namespace {

BlockMark::State StateOf(const Block& block, const BlockPlan& plan, const QString& trouble) {
  if (!block.aktief) return BlockMark::State::NotActive;
  if (plan.IsSilent()) return BlockMark::State::Silent;
  if (plan.IsShort()) return BlockMark::State::Short;
  return trouble.isEmpty() ? BlockMark::State::Complete : BlockMark::State::Remark;
}

QString SpotsText(int count) {
  return count == 1 ? u"1 spot"_s : u"%1 spots"_s.arg(count);
}

// The common reason why all spots are left out; empty when reasons differ.
QString SharedReason(const BlockPlan& plan) {
  QString shared;
  for (const LeftOutSound& sound : plan.leftOut) {
    const QString reason = ReasonText(sound.reason);
    if (!shared.isEmpty() && reason != shared) return {};
    shared = reason;
  }
  return shared;
}

QString FirstRemark(const BlockPlan& plan) {
  for (const LeftOutSound& sound : plan.leftOut) {
    if (!LeftOutIsTrouble(sound, plan)) continue;
    return KindText(sound.kind) + u": "_s + ReasonText(sound.reason);
  }
  return {};
}

QString WordOf(BlockMark::State state, const BlockPlan& plan) {
  switch (state) {
    case BlockMark::State::NotActive:
      return u"niet aktief"_s;
    case BlockMark::State::Silent: {
      const QString reason = SharedReason(plan);
      return u"stil: "_s + (reason.isEmpty() ? SilenceText(plan.silence) : reason);
    }
    case BlockMark::State::Short:
      return u"%1 van %2 spots"_s.arg(plan.spots).arg(plan.wanted);
    case BlockMark::State::Remark:
      return FirstRemark(plan);
    case BlockMark::State::Complete:
      break;
  }
  return SpotsText(plan.spots);
}

std::vector<BlockMark> MarksOf(const std::vector<Block>& blocks, const QDateTime& moment, const LookUpFile& lookUp) {
  std::vector<BlockMark> marks;
  marks.reserve(blocks.size());
  for (const Block& block : blocks)
    marks.push_back(MarkOf(block, PlanBlock(block, moment, SeedOf(block.id, moment), lookUp)));
  return marks;
}

}  // namespace

BlockMark MarkOf(const Block& block, const BlockPlan& plan) {
  BlockMark mark;
  mark.id = block.id;
  mark.trouble = block.aktief ? TroubleText(plan) : QString();
  mark.state = StateOf(block, plan, mark.trouble);
  mark.spots = plan.spots;
  mark.lengthMs = plan.LengthMs();
  mark.word = WordOf(mark.state, plan);
  return mark;
}

void MarkBlocks(const Catalogue& catalogue, const QDateTime& moment, const std::function<bool()>& isWanted,
                const std::function<void(std::vector<BlockMark> marks, bool last)>& report) {
  const std::vector<Block> blocks = ReadBlocks(catalogue);
  if (!isWanted()) return;
  report(MarksOf(blocks, moment, {}), false);
  const SoundFiles files = LookAtFiles(FilesOf(blocks, moment), Look::Presence);
  if (!isWanted()) return;
  report(MarksOf(blocks, moment, In(files)), true);
}
