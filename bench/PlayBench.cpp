// SPDX-License-Identifier: MIT
// Playing a file in the editor of an item-spot: the processor time of the process as a share of one core, and how often
// the window does not respond for longer than one frame of a 60 Hz screen. First a spot whose waveform is in the cache;
// then an hour of sound while its waveform is computed. The sound goes to the player's silent output, which takes the
// frames at the clock's pace: a sound device is neither needed nor measured. usage: PlayBench [SECONDS]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "data/Globals.h"
#include "media/SoundOutput.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/audio/SilentOutput.h"
#include "platform/audio/Synth.h"
#include "platform/controls/WaveformStrip.h"
#include "platform/dao/Database.h"
#include "platform/runtime/HostPath.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

using namespace Qt::StringLiterals;
using bench::Require;

namespace {

constexpr double kPictureMs = 16;
constexpr int kSpotSeconds = 60;
constexpr int kLongest = 120000;  // ms, limit for the background work of opening a file

double CpuMs(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
}

// A timer in the event loop of its thread: how late each tick comes is how long the thread did not respond. The
// thread's processor time since the previous tick is its own work; the rest was waiting for a processor.
class StallMeter {
 public:
  StallMeter() {
    tick_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick_, &QTimer::timeout, [this] { Take(); });
    wall_.start();
    cpu_ = CpuMs(CLOCK_THREAD_CPUTIME_ID);
    tick_.start(kTickMs);
  }

  // Ticks more than a frame late because of work of this program.
  int OwnStalls() const { return ownStalls_; }

  void Print() const {
    std::printf(
        "  %d ticks, the latest %.1f ms late, most own work between two %.1f ms; over %.0f ms late: %d, by own "
        "work: %d\n",
        ticks_, latest_, mostWork_, kPictureMs, stalls_, ownStalls_);
  }

 private:
  static constexpr int kTickMs = 5;

  void Take() {
    const double late = static_cast<double>(wall_.nsecsElapsed()) / 1e6 - kTickMs;
    const double work = CpuMs(CLOCK_THREAD_CPUTIME_ID) - cpu_;
    wall_.start();
    cpu_ += work;
    ++ticks_;
    latest_ = std::max(latest_, late);
    mostWork_ = std::max(mostWork_, work);
    stalls_ += late > kPictureMs ? 1 : 0;
    ownStalls_ += late > kPictureMs && work > kPictureMs ? 1 : 0;
  }

  QTimer tick_;
  QElapsedTimer wall_;
  double cpu_ = 0;
  int ticks_ = 0;
  int stalls_ = 0;
  int ownStalls_ = 0;
  double latest_ = 0;
  double mostWork_ = 0;
};

void RunFor(int ms) {
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
}

template <class Condition>
void RunUntil(const Condition& condition, const char* what) {
  QElapsedTimer timer;
  timer.start();
  while (!condition() && timer.elapsed() < kLongest)
    RunFor(20);
  Require(condition(), what);
}

void AddSpot(int id, const QString& path) {
  dao::OpenDatabase(global.serverDatabasePath)
      .Execute(
          u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec, Aktief) VALUES (%1, \"Spot %1\", \"%2\", 60, 1)"_s.arg(
              QString::number(id), runtime::PathText(path)));
}

// The editor of that spot, playing for some seconds.
void Play(const char* row, const char* what, int id, int seconds, bool inBackgroundToo) {
  global.gstrSelectedID = QString::number(id);
  frmItemSpotsDetail editor(nullptr);
  editor.Form_Load();
  editor.show();
  if (!inBackgroundToo) {
    const auto* strip = editor.findChild<controls::WaveformStrip*>(u"waveform"_s);
    const auto* loudness = editor.findChild<QLabel*>(u"lblLuidheid"_s);
    RunUntil([&] { return strip->PeakCount() == kSpotSeconds * 100 && !loudness->text().isEmpty(); },
             "the file is read");
  }
  RunFor(500);
  auto* player = editor.findChild<audio::AudioPlayer*>(u"Player"_s);
  const qint32 before = player->Position();
  editor.findChild<QPushButton*>(u"cmdPlay"_s)->click();
  RunUntil([&] { return player->Position() > before; }, "it plays");
  const qint32 from = player->Position();
  const double cpu = CpuMs(CLOCK_PROCESS_CPUTIME_ID);
  QElapsedTimer timer;
  timer.start();
  const StallMeter stalls;
  RunFor(1000 * seconds);
  const double wall = static_cast<double>(timer.nsecsElapsed()) / 1e6;
  const double used = CpuMs(CLOCK_PROCESS_CPUTIME_ID) - cpu;
  const double heard = player->Position() - from;
  std::printf("%s, %.1f s: %.2f %% of a core\n", what, wall / 1000, 100 * used / wall);
  bench::Report(row, QString::number(100 * used / wall, 'f', 1).toStdString() + " % of a core, " +
                         std::to_string(stalls.OwnStalls()) + " stalls");
  stalls.Print();
  editor.findChild<QPushButton*>(u"cmdSTOP"_s)->click();
  Require(std::abs(heard - wall) < 500, "it played at the clock's pace");
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 20;
  Require(seconds > 0 && seconds < kSpotSeconds, "less than the file's length");
  const QTemporaryDir cache;
  qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
  const QApplication application(argc, argv);
  const bench::SpotStation station(0);
  const SoundOutputScope silent([](const audio::OutputRequest& request) {
    return std::make_unique<audio::SilentOutput>(request.sampleRate, std::string());
  });
  audio::ToneOptions options;
  options.seconds = kSpotSeconds;
  const QString spot = station.File(u"spot.mp3"_s);
  audio::WriteToneFile(spot.toStdString(), options);
  QFile read(spot);
  QFile hour(station.File(u"uur.mp3"_s));
  Require(read.open(QIODevice::ReadOnly) && hour.open(QIODevice::WriteOnly), "the files");
  Require(hour.write(read.readAll().repeated(60)) > 0 && hour.flush(), "an hour of sound");
  AddSpot(1, spot);
  AddSpot(2, hour.fileName());
  Play("play-spot", "a spot", 1, seconds, false);
  Play("play-hour", "an hour, while its waveform and loudness are read (their work included)", 2, seconds, true);
  return 0;
}
