#pragma once
#include "data/SpotState.h"
#include "platform/dao/Recordset.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

class FileFinder;

// The state of every item-spot of the present catalogue, for marks and counts beside the told lists. It reads with a
// query of its own, in slices so that windows stay alive, and has the audio files looked up in the background. It never
// shows an error: what cannot be read has no state. User-interface thread only.
class SpotSurvey : public QObject {
  Q_OBJECT

 public:
  struct Spot {
    SpotFacts facts;
    SpotState state = SpotState::Loopt;
  };
  enum class Reading { AtOnce, InSlices };

  explicit SpotSurvey(QObject* parent = nullptr);
  ~SpotSurvey() override;

  // Begins anew. AtOnce: everything but the files is known on return; for these what was seen before counts until they
  // were looked at again.
  void Start(Reading reading);

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
  void Open();
  void ReadSlice();
  qint64 ReadRow();
  void LookForFiles();
  bool Take(qint64 id, runtime::Presence presence);

  QHash<qint64, Spot> spots_;
  QHash<QString, runtime::Presence> lastSeen_;  // by path: what counts until a file was looked at again
  SpotCounts counts_;
  QDateTime now_;
  dao::Recordset rows_;
  bool opened_ = false;
  bool read_ = false;
  bool finished_ = false;
  QTimer slices_;
  std::unique_ptr<FileFinder> finder_;
};
