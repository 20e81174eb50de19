// SPDX-License-Identifier: MIT
// The waveform of an MP3 of an hour: from the call to the first part of the picture, to the complete picture, and the
// same for a file that was opened before. Compared with plain decoding of the same file by mpg123 and ffmpeg. usage:
// WaveformBench [MP3]
#include "bench/Child.h"
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "media/WaveformFeed.h"
#include "platform/audio/Measure.h"
#include "platform/audio/PeakCache.h"
#include "platform/audio/Synth.h"
#include "platform/controls/WaveformStrip.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Median;
using bench::Require;

namespace {

constexpr int kRounds = 5;
constexpr double kPartSeconds = 300;
constexpr int kParts = 12;

// Encoding an hour would take longer than all measurements: the frames of five minutes are repeated twelve times.
QString HourOfSound(const QTemporaryDir& folder) {
  const QString part = folder.filePath(u"deel.mp3"_s);
  audio::ToneOptions options;
  options.seconds = kPartSeconds;
  audio::WriteToneFile(part.toStdString(), options);
  QFile read(part);
  Require(read.open(QIODevice::ReadOnly), "read the encoded part");
  QFile hour(folder.filePath(u"uur.mp3"_s));
  Require(hour.open(QIODevice::WriteOnly) && hour.write(read.readAll().repeated(kParts)) > 0, "write an hour of sound");
  return hour.fileName();
}

double Ms(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double CpuMs() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& time) {
    return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000;
  };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

struct Picture {
  double firstMs = 0;
  double wholeMs = 0;
  double cpuMs = 0;  // of the process
};

// The strip's picture of the file, as an editor requests it once the file's length is known.
Picture ShowWaveform(const QString& path, qint32 lengthMs) {
  controls::WaveformStrip strip;
  strip.resize(1200, 160);
  strip.show();
  QApplication::processEvents();
  WaveformFeed feed(&strip);
  const auto expected = static_cast<int>(audio::Peaks::BinCount(lengthMs));
  Picture picture;
  const double cpu = CpuMs();
  QElapsedTimer timer;
  timer.start();
  feed.Show(path, lengthMs);
  while (strip.PeakCount() < expected) {
    QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (picture.firstMs > 0 || strip.PeakCount() == 0) continue;
    strip.repaint();
    picture.firstMs = Ms(timer);
  }
  strip.repaint();
  picture.wholeMs = Ms(timer);
  picture.cpuMs = CpuMs() - cpu;
  Require(strip.PeakCount() == expected, "the whole file has its peaks");
  return picture;
}

struct Series {
  std::vector<double> first, whole, cpu;
  void Add(const Picture& picture) {
    first.push_back(picture.firstMs);
    whole.push_back(picture.wholeMs);
    cpu.push_back(picture.cpuMs);
  }
};

struct Decoder {
  const char* name;
  std::vector<std::string> words;
  std::vector<double> wall, cpu;
};

void Print(const Series& fresh, const Series& again, const std::vector<double>& scan,
           const std::vector<Decoder>& decoders) {
  std::printf("  length alone, as every opening needs it %9.1f ms\n", Median(scan));
  std::printf("  first picture                           %9.1f ms\n", Median(fresh.first));
  std::printf("  complete                                %9.1f ms, processor %9.1f ms\n", Median(fresh.whole),
              Median(fresh.cpu));
  std::printf("  opened again, complete                  %9.1f ms, processor %9.1f ms\n", Median(again.whole),
              Median(again.cpu));
  bench::Report("waveform-first", bench::Milliseconds(Median(fresh.first)));
  bench::Report("waveform-again", bench::Milliseconds(Median(again.whole)));
  for (const Decoder& decoder : decoders) {
    if (decoder.wall.empty()) continue;
    std::printf("  %-8s decoding to nothing            %9.1f ms, processor %9.1f ms: ratio %.2f, processor %.2f\n",
                decoder.name, Median(decoder.wall), Median(decoder.cpu), Median(fresh.whole) / Median(decoder.wall),
                Median(fresh.cpu) / Median(decoder.cpu));
    bench::ReportTimes(std::string("waveform-whole-") + decoder.name, Median(fresh.whole), decoder.name,
                       Median(decoder.wall));
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir folder;
  qputenv("XDG_CACHE_HOME", QFile::encodeName(folder.filePath(u"cache"_s)));
  const QApplication application(argc, argv);
  const QString path = argc > 1 ? QString::fromLocal8Bit(argv[1]) : HourOfSound(folder);
  const std::string file = path.toStdString();
  const qint32 lengthMs = audio::MeasureMs(file);
  Series fresh;
  Series again;
  std::vector<double> scan;
  std::vector<Decoder> decoders{{"mpg123", {"mpg123", "-q", "-t", file}, {}, {}},
                                {"ffmpeg", {"ffmpeg", "-v", "error", "-i", file, "-f", "null", "-"}, {}, {}}};
  for (int round = 0; round < kRounds; ++round) {
    scan.push_back(bench::MillisecondsOf([&] { Require(audio::MeasureMs(file) == lengthMs, "the same length"); }));
    QDir(folder.filePath(u"cache"_s)).removeRecursively();
    audio::PeakCache::ForgetMemory();
    fresh.Add(ShowWaveform(path, lengthMs));
    audio::PeakCache::ForgetMemory();
    again.Add(ShowWaveform(path, lengthMs));
    for (Decoder& decoder : decoders) {
      const bench::ChildRun run = bench::RunChild(decoder.words);
      if (run.cpuMs == 0) continue;
      decoder.wall.push_back(run.wallMs);
      decoder.cpu.push_back(run.cpuMs);
    }
  }
  std::printf("waveform of %.1f minutes of MP3, median of %d rounds\n", lengthMs / 60000.0, kRounds);
  Print(fresh, again, scan, decoders);
  return 0;
}
