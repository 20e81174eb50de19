// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "data/UnreadableReason.h"
#include "data/forms/FilePresenceChecker.h"
#include "data/forms/LatestTask.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>
#include <vector>

// The state of every item-spot of the current catalogue, for the marks and counts of lists. The query and the checks of
// audio files run in other threads; their results are taken over in batches, so that windows stay responsive. Shows no
// errors: spots that cannot be read have no state. User-interface thread only.
class SpotStateLoader : public QObject {
  Q_OBJECT

 public:
  struct Spot {
    SpotFacts facts;
    SpotState state = SpotState::Loopt;
  };

  explicit SpotStateLoader(QObject* parent = nullptr);

  // Starts reading; cancels an earlier start. Waits up to `maxWait` for the rows of a small catalogue, so that the
  // first paint shows their states. Until a file is checked again its earlier result counts.
  void Start(std::chrono::milliseconds maxWait = {});

  // True when all rows are read; their files may not be checked yet.
  bool IsRead() const { return read_; }
  // True when all files are checked too, or after an error.
  bool IsFinished() const { return finished_; }
  // Null when the spot is not read yet.
  const Spot* Find(qint64 id) const;
  const SpotCounts& Counts() const { return counts_; }
  // True when the counts are right: every file was checked, now or at an earlier start.
  bool AreCountsKnown() const { return read_ && unchecked_ == 0; }
  // Why the catalogue could not be read; empty when it was.
  const UnreadableReason& Failure() const { return failure_; }

 Q_SIGNALS:
  // The state of these spots or the reachability of their files is known now or has changed.
  void changed(const QList<qint64>& ids);
  // Emitted once, after the last change. IsRead is then false when the catalogue could not be read.
  void finished();

 private:
  struct Row {
    qint64 id = 0;
    SpotFacts facts;
  };
  // Stops when the task was replaced: refills in quick succession do not compete for the processor. Throws
  // runtime::Error. Any thread.
  static std::vector<Row> ReadRows(const QString& databasePath, const QString& table, const LatestTask::Token& token);

  void OnRowsLoaded(std::vector<Row> rows);
  void OnFailure(const UnreadableReason& reason);
  void ProcessBatch();
  void AddRow(Row row);
  void OnFilesChecked(const std::vector<FilePresenceChecker::Result>& found, bool last);
  bool ApplyPresence(qint64 id, runtime::Presence presence);
  void Finish();

  QHash<qint64, Spot> spots_;
  QHash<QString, runtime::Presence> lastPresence_;  // by path; valid until a file is checked again
  SpotCounts counts_;
  int unchecked_ = 0;  // spots whose file was never checked
  QDateTime now_;
  std::vector<Row> rows_;  // read; taken over up to nextRow_
  std::size_t nextRow_ = 0;
  std::vector<FilePresenceChecker::Request> files_;
  UnreadableReason failure_;
  bool read_ = false;
  bool finished_ = false;
  QTimer batchTimer_;
  LatestTask reading_;
  FilePresenceChecker checker_;
};
