// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "data/forms/FilePresenceChecker.h"
#include "data/forms/LatestTask.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>
#include <vector>

// The state of every item-spot of the present catalogue, for marks and counts beside the told lists. A query of its own
// and the look at the audio files run in threads of their own; what they find is taken over in slices, so that windows
// stay alive. It never shows an error: what cannot be read has no state. User-interface thread only.
class SpotStateLoader : public QObject {
  Q_OBJECT

 public:
  struct Spot {
    SpotFacts facts;
    SpotState state = SpotState::Loopt;
  };

  explicit SpotStateLoader(QObject* parent = nullptr);

  // Begins anew, whatever was under way. With patience it waits so long for the rows of a small catalogue: what is
  // known by then stands in the first picture. Until a file was looked at again, what was seen of it before counts.
  void Start(std::chrono::milliseconds patience = {});

  // All rows were read (their files perhaps not yet looked at).
  bool IsRead() const { return read_; }
  // All files were looked at too.
  bool IsFinished() const { return finished_; }
  // Nothing while the spot was not read.
  const Spot* Find(qint64 id) const;
  const SpotCounts& Counts() const { return counts_; }

 Q_SIGNALS:
  // The state or the reachability of these spots became known or changed.
  void changed(const QList<qint64>& ids);
  // Once, when nothing more will change: all is known, or the catalogue could not be read (then IsRead is false).
  void finished();

 private:
  struct Row {
    qint64 id = 0;
    SpotFacts facts;
  };
  // Nothing when the catalogue cannot be read. For any thread.
  static std::optional<std::vector<Row>> ReadRows(const QString& databasePath, const QString& table);

  void OnRowsLoaded(std::optional<std::vector<Row>> rows);
  void ProcessBatch();
  void TakeRow(Row row);
  void TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last);
  bool TakeFile(qint64 id, runtime::Presence presence);
  void Finish();

  QHash<qint64, Spot> spots_;
  QHash<QString, runtime::Presence> lastSeen_;  // by path: what counts until a file was looked at again
  SpotCounts counts_;
  QDateTime now_;
  std::vector<Row> rows_;  // read, and taken over up to taken_
  std::size_t taken_ = 0;
  std::vector<FilePresenceChecker::Request> files_;
  bool read_ = false;
  bool finished_ = false;
  QTimer slices_;
  LatestTask reading_;
  FilePresenceChecker checker_;
};
