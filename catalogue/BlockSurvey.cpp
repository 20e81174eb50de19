// SPDX-License-Identifier: MIT
#include "catalogue/BlockSurvey.h"

#include "data/Catalogue.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <utility>

namespace {

// Marks taken over between two turns of the event loop.
constexpr std::size_t kBlockSlice = 250;

bool IsTrouble(const BlockMark& mark) {
  return mark.state == BlockMark::State::Silent || mark.state == BlockMark::State::Short;
}

}  // namespace

BlockSurvey::BlockSurvey(QObject* parent) : QObject(parent), reading_(this) {
  connect(&slices_, &QTimer::timeout, this, &BlockSurvey::ProcessBatch);
}

void BlockSurvey::Start() {
  slices_.stop();
  marks_.clear();
  waiting_.clear();
  taken_ = 0;
  inTrouble_ = 0;
  read_ = finished_ = lastWaits_ = false;
  reading_.Send([this, catalogue = CurrentCatalogue(), now = runtime::Now()](const LatestTask::Token& token) {
    try {
      MarkBlocks(
          catalogue, now, [&token] { return token.IsCurrent(); },
          [this, &token](std::vector<BlockMark> marks, bool last) {
            token.Post([this, marks = std::move(marks), last]() mutable { Take(std::move(marks), last); });
          });
    } catch (const runtime::Error&) {
      // The list itself says what is wrong; marks are an extra.
      token.Post([this] { Finish(); });
    }
  });
}

const BlockMark* BlockSurvey::Find(qint64 id) const {
  const auto mark = marks_.constFind(id);
  return mark == marks_.constEnd() ? nullptr : &*mark;
}

void BlockSurvey::Take(std::vector<BlockMark> marks, bool last) {
  while (taken_ < waiting_.size())
    ProcessBatch();
  waiting_ = std::move(marks);
  taken_ = 0;
  lastWaits_ = last;
  slices_.start(0);
}

void BlockSurvey::ProcessBatch() {
  QList<qint64> ids;
  const std::size_t end = std::min(waiting_.size(), taken_ + kBlockSlice);
  for (; taken_ < end; ++taken_)
    TakeMark(waiting_[taken_], ids);
  const bool all = taken_ == waiting_.size();
  if (all) {
    slices_.stop();
    read_ = true;
  }
  if (!ids.isEmpty()) Q_EMIT changed(ids);
  if (all && lastWaits_) Finish();
}

void BlockSurvey::TakeMark(const BlockMark& mark, QList<qint64>& ids) {
  BlockMark& known = marks_[mark.id];
  if (known == mark) return;
  inTrouble_ += (IsTrouble(mark) ? 1 : 0) - (IsTrouble(known) ? 1 : 0);
  known = mark;
  ids += mark.id;
}

void BlockSurvey::Finish() {
  finished_ = true;
  Q_EMIT finished();
}
