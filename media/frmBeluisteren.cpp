// SPDX-License-Identifier: MIT
#include "media/frmBeluisteren.h"

#include "data/Globals.h"
#include "export/playout/BlockToHear.h"
#include "export/playout/PlanTexts.h"
#include "export/playout/SoundFiles.h"
#include "media/ClipPeaks.h"
#include "media/SoundOutput.h"
#include "media/ui_frmBeluisteren.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/audio/Error.h"
#include "platform/audio/MixDecoder.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Trapped.h"

#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr QSize kListeningSize(920, 620);
constexpr int kListeningTickMs = 20;

}  // namespace

frmBeluisteren::frmBeluisteren(QWidget* owner)
    : Form(owner),
      ui_(std::make_unique<Ui::frmBeluisteren>()),
      block_(TakeBlockToHear()),
      player_(NewPlayer(this)),
      tmrPlayer_(new QTimer(this)),
      task_(this) {
  ui_->setupUi(this);
  peaks_ = std::make_unique<ClipPeaks>(ui_->strip);
  player_->setObjectName(u"Player"_s);
  tmrPlayer_->setInterval(kListeningTickMs);
  SetUpIcons();
  WireMoment();
  WirePlayer();
  WireKeys();
  resize(kListeningSize.boundedTo(screen()->availableSize()));
}

frmBeluisteren::~frmBeluisteren() = default;

void frmBeluisteren::Form_Load() {
  Trapped(__func__, [&] {
    setWindowTitle(u"Beluisteren: "_s + (block_.naam.isEmpty() ? u"nieuw item"_s : block_.naam));
    const QDateTime now = runtime::Now();
    const QSignalBlocker day(ui_->datDag);
    const QSignalBlocker hours(ui_->cboUur);
    ui_->datDag->SetDate(now.date());
    for (int hour = 0; hour < 24; ++hour)
      ui_->cboUur->AddItem(QString::number(hour), hour);
    ui_->cboUur->SetListIndex(now.time().hour());
    const bool random = block_.several && block_.random;
    ui_->lblVolgorde->setVisible(random);
    ui_->txtVolgorde->setVisible(random);
    ui_->cmdAndereVolgorde->setVisible(random);
    player_->SetDeviceID(global.card);
    player_->SetNumBuffers(global.buffers);
    player_->SetBufferSize(global.bufferSize);
    ShowStatus(player_->StatusText());
    MomentChanged();
    ui_->strip->setFocus();
  });
}

void frmBeluisteren::WireMoment() {
  connect(ui_->optNu, &QRadioButton::toggled, this, &frmBeluisteren::MomentChanged);
  connect(ui_->datDag, &controls::DateCombo::textChanged, this, &frmBeluisteren::MomentChanged);
  connect(ui_->cboUur, &QComboBox::currentIndexChanged, this, &frmBeluisteren::MomentChanged);
  connect(ui_->txtVolgorde, &QLineEdit::textEdited, this, &frmBeluisteren::SeedChanged);
  connect(ui_->cmdAndereVolgorde, &QPushButton::clicked, this, &frmBeluisteren::cmdAndereVolgorde_Click);
}

// The user chooses an hour: within an hour a block does not change.
QDateTime frmBeluisteren::Moment() const {
  if (ui_->optNu->isChecked()) return runtime::Now();
  const int hour = static_cast<int>(ui_->cboUur->ItemData(std::max(0, ui_->cboUur->ListIndex())));
  return {ui_->datDag->Date().value_or(runtime::Now().date()), QTime(hour, 0)};
}

void frmBeluisteren::MomentChanged() {
  Trapped(__func__, [&] {
    const bool chosen = !ui_->optNu->isChecked();
    ui_->datDag->setEnabled(chosen);
    ui_->cboUur->setEnabled(chosen);
    ui_->lblUur->setEnabled(chosen);
    if (chosen && !ui_->datDag->HoldsDate()) return;  // incomplete input
    if (!seedChosen_) ui_->txtVolgorde->setText(QString::number(SeedOf(block_.id, Moment())));
    Replan();
  });
}

void frmBeluisteren::SeedChanged() {
  Trapped(__func__, [&] {
    bool number = false;
    ui_->txtVolgorde->text().toUInt(&number);
    if (!number) return;  // incomplete input
    seedChosen_ = true;
    Replan();
  });
}

void frmBeluisteren::cmdAndereVolgorde_Click() {
  Trapped(__func__, [&] {
    ui_->txtVolgorde->setText(QString::number(ui_->txtVolgorde->text().toUInt() + 1));
    SeedChanged();
  });
}

// Checks and measures the files in the background, since their drive may be unresponsive.
void frmBeluisteren::Replan() {
  planned_ = false;
  plan_ = BlockPlan();
  starts_.clear();
  player_->Close();
  peaks_->Cancel();
  ui_->strip->SetClips({});
  ui_->strip->SetEmptyText(u"Bezig met zoeken naar de geluiden ..."_s);
  DrawTime();
  for (QPushButton* button : {ui_->cmdPlay, ui_->cmdSTOP, ui_->cmdVolgendeMix})
    button->setEnabled(false);
  task_.Send([this, block = block_, moment = Moment(),
              seed = ui_->txtVolgorde->text().toUInt()](const LatestTask::Token& token) {
    if (!token.IsCurrent()) return;
    token.Post([this, planned = PlanInBackground(block, moment, seed)] { OnPlanReady(planned); });
  });
}

frmBeluisteren::Planned frmBeluisteren::PlanInBackground(const Block& block, const QDateTime& moment, quint32 seed) {
  Planned planned;
  const SoundFiles files = LookAtFiles(FilesOf({block}, moment), Look::Measure);
  planned.plan = PlanBlock(block, moment, seed, In(files));
  try {
    std::vector<audio::MixClip> clips;
    for (const PlannedSound& sound : planned.plan.sounds) {
      planned.files += runtime::HostPath(sound.path);
      clips.push_back({planned.files.last().toStdString(), sound.mixMs});
    }
    if (!clips.empty())
      planned.sound = std::make_shared<std::unique_ptr<audio::MixDecoder>>(std::make_unique<audio::MixDecoder>(clips));
  } catch (const audio::Error& error) {
    planned.trouble = QString::fromUtf8(error.what());
  } catch (const runtime::Error& error) {
    planned.trouble = error.Description();
  }
  return planned;
}

void frmBeluisteren::OnPlanReady(const Planned& planned) {
  Trapped("Replan", [&] {
    planned_ = true;
    plan_ = planned.plan;
    ShowLeftOut();
    ui_->lblTotaal->setText(Summary());
    if (plan_.IsSilent()) {
      ui_->strip->SetEmptyText(u"Dit blok is op dit moment stil: "_s + SilenceText(plan_.silence) + u'.');
    } else if (!planned.sound) {
      ui_->strip->SetEmptyText(planned.trouble);
    } else {
      ShowClips(planned);
    }
  });
}

void frmBeluisteren::ShowClips(const Planned& planned) {
  audio::MixDecoder& sound = **planned.sound;
  const int rate = sound.SampleRate();
  std::vector<controls::ClipStrip::Clip> clips;
  for (std::size_t at = 0; at < plan_.sounds.size(); ++at) {
    const audio::MixDecoder::Place& place = sound.Places()[at];
    starts_.push_back(audio::MsOfFrames(place.start, rate));
    clips.push_back(
        {plan_.sounds[at].naam, starts_.back(), audio::MsOfFrames(place.frames, rate), plan_.sounds[at].mixMs});
  }
  ui_->strip->SetClips(std::move(clips));
  player_->Open(std::move(*planned.sound), block_.naam);
  peaks_->Read(planned.files);
  for (QPushButton* button : {ui_->cmdPlay, ui_->cmdSTOP})
    button->setEnabled(true);
  ui_->cmdVolgendeMix->setEnabled(starts_.size() > 1);
  DrawTime();
}

QString frmBeluisteren::Summary() const {
  QStringList parts;
  if (const std::optional<qint64> length = plan_.LengthMs(); length && !plan_.IsSilent())
    parts += u"Duur "_s + DurationText(*length);
  parts += plan_.spots == 1 ? u"1 spot"_s : u"%1 spots"_s.arg(plan_.spots);
  if (plan_.IsShort()) parts.last() += u" van de %1"_s.arg(plan_.wanted);
  for (const PlannedSound& sound : plan_.sounds) {
    if (&sound == &plan_.sounds.back() || sound.mixMs == sound.storedMixMs) continue;
    parts += u"mixpunt van ‘%1’ ingekort tot %2 ms"_s.arg(sound.naam).arg(sound.mixMs);
  }
  return parts.join(u", "_s);
}

void frmBeluisteren::ShowLeftOut() {
  ui_->lstNietGespeeld->Clear();
  for (const LeftOutSound& sound : plan_.leftOut) {
    const int line = ui_->lstNietGespeeld->AddItem(sound.naam.isEmpty() ? KindText(sound.kind) : sound.naam, sound.id);
    controls::LineDetails details;
    const bool waits = sound.reason == LeftOut::NotItsTurn || sound.reason == LeftOut::NotBegun ||
                       sound.reason == LeftOut::OutsideHours;
    details.mark = waits ? controls::LineMark::Clock : controls::LineMark::Cross;
    details.tone = waits ? controls::LineTone::Quiet : controls::LineTone::Wrong;
    details.wordInTone = !waits;
    details.word = ReasonText(sound.reason);
    details.toolTip = sound.path;
    ui_->lstNietGespeeld->SetDetails(line, details);
  }
  ui_->lstNietGespeeld->SetEmptyText(u"Alles wat in dit blok hoort, speelt."_s);
}

void frmBeluisteren::Form_Unload() {
  task_.Cancel();
  tmrPlayer_->stop();
  player_->Stop();
  peaks_->Cancel();
}

void frmBeluisteren::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}
