// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/LatestTask.h"
#include "export/playout/BlockMarks.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <vector>

// The mark of every block of the present catalogue at this moment. Read and looked up in a thread of its own, and taken
// over in slices, so that windows stay alive. It never shows an error: what cannot be read has no mark. User-interface
// thread only.
class BlockSurvey : public QObject {
  Q_OBJECT

 public:
  explicit BlockSurvey(QObject* parent = nullptr);

  // Begins again, whatever was under way.
  void Start();

  // All blocks were marked (their files perhaps not yet looked at).
  bool IsRead() const { return read_; }
  bool IsFinished() const { return finished_; }
  // Null while the block was not read.
  const BlockMark* Find(qint64 id) const;
  // Active blocks that are silent, or have fewer spots than they should.
  int InTrouble() const { return inTrouble_; }

 Q_SIGNALS:
  void changed(const QList<qint64>& ids);
  // Once, when nothing more will change; IsRead is false when the catalogue could not be read.
  void finished();

 private:
  void Take(std::vector<BlockMark> marks, bool last);
  void ProcessBatch();
  void TakeMark(const BlockMark& mark, QList<qint64>& ids);
  void Finish();

  QHash<qint64, BlockMark> marks_;
  std::vector<BlockMark> waiting_;
  std::size_t taken_ = 0;
  bool lastWaits_ = false;
  int inTrouble_ = 0;
  bool read_ = false;
  bool finished_ = false;
  QTimer slices_;
  LatestTask reading_;
};
