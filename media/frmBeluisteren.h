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

// Listens to a block as it will sound at a moment: all its sounds on one time line, each starting at the mix point of
// the one before. The block is the one handed over (export/playout/BlockToHear.h); it changes nothing.
class frmBeluisteren : public Form {
  Q_OBJECT

 public:
  explicit frmBeluisteren(QWidget* owner);
  ~frmBeluisteren() override;

  void Form_Load() override;

  // What is planned for the chosen moment; before it is known, an empty plan.
  const BlockPlan& Plan() const { return plan_; }
  bool IsPlanned() const { return planned_; }

 protected:
  void Form_Unload() override;

 private:
  struct Planned {
    BlockPlan plan;
    QStringList files;  // of the sounds: paths of the host
    // Held by a null pointer when there is nothing to hear, or it cannot be read; the one who takes it empties the
    // inner.
    std::shared_ptr<std::unique_ptr<audio::MixDecoder>> sound;
    QString trouble;  // why it cannot be read
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
  void TakePlan(const Planned& planned);
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
  bool seedGiven_ = false;      // the user chose an order
  std::vector<qint64> starts_;  // of the clips, milliseconds
  LatestTask task_;
};
