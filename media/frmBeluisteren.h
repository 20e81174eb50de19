// SPDX-License-Identifier: MIT
#pragma once

#include "data/forms/Form.h"
#include "data/forms/LatestTask.h"
#include "export/playout/BlockPlan.h"

#include <QDateTime>

#include <memory>
#include <vector>

class ClipPeaks;
class QTimer;

namespace Ui {
class frmBeluisteren;
}
namespace audio {
class AudioPlayer;
class MixDecoder;
}  // namespace audio

// Plays a block as it will sound at a given moment: all its sounds on one time line, each starting at the mix point of
// the previous one. The caller passes the block by SetBlockToHear (export/playout/BlockToHear.h). Read-only.
class frmBeluisteren : public Form {
  Q_OBJECT

 public:
  explicit frmBeluisteren(QWidget* owner);
  ~frmBeluisteren() override;

  void Form_Load() override;

  // The plan for the chosen moment; empty until it is ready.
  const BlockPlan& Plan() const { return plan_; }
  bool IsPlanned() const { return planned_; }

 protected:
  void Form_Unload() override;

 private:
  struct Planned {
    BlockPlan plan;
    QStringList files;  // host paths of the sounds
    // Null when the block is silent or cannot be read. The receiver moves the inner pointer out.
    std::shared_ptr<std::unique_ptr<audio::MixDecoder>> sound;
    QString trouble;  // why the block cannot be read
  };
  static Planned PlanInBackground(const Block& block, const QDateTime& moment, quint32 seed);

  void SetUpIcons();
  void WireMoment();
  void WirePlayer();
  void WireKeys();

  QDateTime Moment() const;
  void MomentChanged();
  void SeedChanged();
  void Replan();
  void OnPlanReady(const Planned& planned);
  void ShowClips(const Planned& planned);
  void ShowLeftOut();
  QString Summary() const;

  void cmdPlay_Click();
  void cmdSTOP_Click();
  void cmdVolgendeMix_Click();
  void cmdAndereVolgorde_Click();
  void cmdSluiten_Click();
  void PlayOrStop();
  void SeekTo(qint64 position);
  void tmrPlayer_Timer();
  void DrawTime();
  void ShowStatus(const QString& text);

  std::unique_ptr<Ui::frmBeluisteren> ui_;
  Block block_;
  audio::AudioPlayer* player_;
  QTimer* tmrPlayer_;
  std::unique_ptr<ClipPeaks> peaks_;
  BlockPlan plan_;
  bool planned_ = false;
  bool seedChosen_ = false;     // the user entered a seed
  std::vector<qint64> starts_;  // of the clips, in milliseconds
  LatestTask task_;
};
