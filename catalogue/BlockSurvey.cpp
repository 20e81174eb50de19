// SPDX-License-Identifier: MIT
#include "catalogue/BlockSurvey.h"

#include "data/Catalogue.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <utility>

namespace {

// Marks taken over per turn of the event loop.
constexpr std::size_t kMarksPerBatch = 250;

bool IsProblem(const BlockMark& mark) {
  return mark.state == BlockMark::State::Silent || mark.state == BlockMark::State::Short;
}

}  // namespace

BlockSurvey::BlockSurvey(QObject* parent) : QObject(parent), reading_(this) {
  connect(&batchTimer_, &QTimer::timeout, this, &BlockSurvey::ProcessBatch);
}

void BlockSurvey::Start() {
  batchTimer_.stop();
  marks_.clear();
  pending_.clear();
  next_ = 0;
  problemCount_ = 0;
  failure_ = {};
  read_ = finished_ = pendingIsLast_ = false;
  reading_.Send([this, catalogue = CurrentCatalogue(), now = runtime::Now(),
                 whose = CatalogueWords()](const LatestTask::Token& token) {
    try {
      MarkBlocks(
          catalogue, now, [&token] { return token.IsCurrent(); },
          [this, &token](std::vector<BlockMark> marks, bool last) {
            token.Post([this, marks = std::move(marks), last]() mutable { OnMarks(std::move(marks), last); });
          });
    } catch (const runtime::Error& error) {
      token.Post([this, reason = ReasonFor(catalogue.databasePath, whose, error.Description())] { OnFailure(reason); });
    }
  });
}

const BlockMark* BlockSurvey::Find(qint64 id) const {
  const auto mark = marks_.constFind(id);
  return mark == marks_.constEnd() ? nullptr : &*mark;
}

void BlockSurvey::OnMarks(std::vector<BlockMark> marks, bool last) {
  while (next_ < pending_.size())
    ProcessBatch();
  pending_ = std::move(marks);
  next_ = 0;
  pendingIsLast_ = last;
  batchTimer_.start(0);
}

void BlockSurvey::ProcessBatch() {
  QList<qint64> ids;
  const std::size_t end = std::min(pending_.size(), next_ + kMarksPerBatch);
  for (; next_ < end; ++next_)
    ApplyMark(pending_[next_], ids);
  const bool all = next_ == pending_.size();
  if (all) {
    batchTimer_.stop();
    read_ = true;
  }
  if (!ids.isEmpty()) Q_EMIT changed(ids);
  if (all && pendingIsLast_) Finish();
}

void BlockSurvey::ApplyMark(const BlockMark& mark, QList<qint64>& ids) {
  BlockMark& known = marks_[mark.id];
  if (known == mark) return;
  problemCount_ += (IsProblem(mark) ? 1 : 0) - (IsProblem(known) ? 1 : 0);
  known = mark;
  ids += mark.id;
}

// Without a box: a list has already reported the error itself, and marks are optional.
void BlockSurvey::OnFailure(const UnreadableReason& reason) {
  failure_ = reason;
  Finish();
}

void BlockSurvey::Finish() {
  finished_ = true;
  Q_EMIT finished();
}
