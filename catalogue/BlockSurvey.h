// SPDX-License-Identifier: MIT
#pragma once

#include "data/UnreadableReason.h"
#include "data/forms/LatestTask.h"
#include "export/playout/BlockMarks.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <vector>

// The mark of every block of the current catalogue at this moment. Reads the blocks and checks their files in another
// thread, and takes the results over in batches, so that windows stay responsive. Shows no errors: without readable
// data there are no marks. User-interface thread only.
class BlockSurvey : public QObject {
  Q_OBJECT

 public:
  explicit BlockSurvey(QObject* parent = nullptr);

  // Starts reading; cancels an earlier start.
  void Start();

  // True when all blocks are marked; their files may not be checked yet.
  bool IsRead() const { return read_; }
  bool IsFinished() const { return finished_; }
  // Null when the block is not read yet.
  const BlockMark* Find(qint64 id) const;
  // Number of active blocks that are silent or have too few spots.
  int ProblemCount() const { return problemCount_; }
  // Why the catalogue could not be read; empty when it was.
  const UnreadableReason& Failure() const { return failure_; }

 Q_SIGNALS:
  void changed(const QList<qint64>& ids);
  // Emitted once, after the last change. IsRead is then false when the catalogue could not be read.
  void finished();

 private:
  void OnMarks(std::vector<BlockMark> marks, bool last);
  void ProcessBatch();
  void ApplyMark(const BlockMark& mark, QList<qint64>& ids);
  void OnFailure(const UnreadableReason& reason);
  void Finish();

  QHash<qint64, BlockMark> marks_;
  std::vector<BlockMark> pending_;
  std::size_t next_ = 0;
  bool pendingIsLast_ = false;
  int problemCount_ = 0;
  UnreadableReason failure_;
  bool read_ = false;
  bool finished_ = false;
  QTimer batchTimer_;
  LatestTask reading_;
};
