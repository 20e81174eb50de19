// SPDX-License-Identifier: MIT
// The exact length of sound files, compared with the tools commonly used for it. First the time for a spot of 30
// seconds and for an hour, ours also within a program that links the library. Then more than a thousand MP3 files of
// every kind and some WAV: how often each tool is wrong by more than a millisecond, compared with the sound that was
// encoded. Fails when ours is wrong. usage: AudioLengthBench
#include "bench/Figures.h"
#include "bench/LengthFiles.h"
#include "bench/LengthTools.h"
#include "bench/Plain.h"
#include "platform/audio/Measure.h"
#include "platform/audio/Synth.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using bench::LengthFile;
using bench::LengthTool;
using bench::Median;
using bench::MillisecondsOf;

constexpr int kRuns = 5;
// Ours is given in whole milliseconds.
constexpr double kAllowedMs = 1;

// --- time

struct Timed {
  LengthFile file;
  std::string name;
};

LengthFile Tone(const fs::path& path, bool variable) {
  constexpr int kRate = 44100;
  constexpr double kSeconds = 30.04;
  audio::ToneOptions options;
  options.seconds = kSeconds;
  options.variableBitRate = variable;
  audio::WriteToneFile(path.string(), options);
  return {path, "", kRate, 2, {std::llround(kSeconds * kRate)}};
}

std::vector<Timed> SpotsAndAnHour(const fs::path& folder) {
  std::vector<Timed> files{{Tone(folder / "spot.wav", false), "WAV, 30 s"},
                           {Tone(folder / "constant.mp3", false), "MP3, constant bit rate, 30 s"},
                           {Tone(folder / "variable.mp3", true), "MP3, variable bit rate, 30 s"}};
  std::ifstream in(files[1].file.path, std::ios::binary);
  const std::string spot{std::istreambuf_iterator<char>(in), {}};
  const fs::path hour = folder / "hour.mp3";
  std::ofstream out(hour, std::ios::binary);
  for (int i = 0; i < 120; ++i)
    out << spot;
  files.push_back({{hour, "", 44100, 2, {}}, "MP3, an hour"});
  return files;
}

void CompareTimes(const fs::path& folder, const std::vector<LengthTool>& tools) {
  std::printf("time in ms, median of %d runs\n%-30s%10s", kRuns, "", "library");
  for (const LengthTool& tool : tools)
    std::printf("%10s", tool.name.c_str());
  for (const Timed& timed : SpotsAndAnHour(folder)) {
    const auto median = [](const auto& work) {
      std::vector<double> times;
      times.reserve(kRuns);
      for (int run = 0; run < kRuns; ++run)
        times.push_back(MillisecondsOf(work));
      return Median(times);
    };
    const double ours = median([&] { audio::MeasureMs(timed.file.path.string()); });
    std::printf("\n%-30s%10.2f", timed.name.c_str(), ours);
    bench::Report("length-" + timed.name, bench::Milliseconds(ours));
    for (const LengthTool& tool : tools)
      std::printf("%10.2f", median([&] { tool.MsOf(timed.file); }));
  }
  std::printf("\n\n");
}

// --- exactness

// Results of one tool on one kind of file.
struct Score {
  int wrong = 0;
  int silent = 0;
  double worstMs = 0;
};

// The distance to the nearest correct length.
double ErrorMs(const LengthFile& file, double told) {
  double least = HUGE_VAL;
  for (const std::int64_t samples : file.samples)
    least = std::min(least, std::abs(told - 1000.0 * static_cast<double>(samples) / file.sampleRate));
  return least;
}

class Scores {
 public:
  explicit Scores(const std::vector<LengthTool>& tools) : tools_(tools), times_(tools.size()) {}

  void Take(const LengthFile& file) {
    std::vector<Score>& scores = kinds_.try_emplace(file.kind, tools_.size()).first->second;
    ++files_[file.kind];
    for (std::size_t i = 0; i < tools_.size(); ++i) {
      std::optional<double> told;
      times_[i].push_back(MillisecondsOf([&] { told = tools_[i].MsOf(file); }));
      const double error = told ? ErrorMs(file, *told) : 0;
      scores[i].silent += told ? 0 : 1;
      scores[i].wrong += error > kAllowedMs ? 1 : 0;
      scores[i].worstMs = std::max(scores[i].worstMs, error);
      if (i == 0 && (!told || error > kAllowedMs)) Blame(file, told.value_or(0));
    }
    fs::remove(file.path);
  }

  bool AreOursRight() const { return oursWrong_ == 0; }

  void Print(const std::string& id) const {
    std::printf("\n%-34s%6s", "wrong by over 1 ms, or silent", "files");
    for (const LengthTool& tool : tools_)
      std::printf("%10s", tool.name.c_str());
    std::vector<Score> sums(tools_.size());
    for (const auto& [kind, scores] : kinds_) {
      PrintLine(kind, files_.at(kind), scores);
      for (std::size_t i = 0; i < sums.size(); ++i) {
        sums[i].wrong += scores[i].wrong;
        sums[i].silent += scores[i].silent;
        sums[i].worstMs = std::max(sums[i].worstMs, scores[i].worstMs);
      }
    }
    int all = 0;
    for (const auto& [kind, count] : files_)
      all += count;
    PrintLine("all", all, sums);
    std::string others;
    for (std::size_t i = 1; i < tools_.size(); ++i)
      others += (i > 1 ? ", " : "") + tools_[i].name + ' ' + std::to_string(sums[i].wrong + sums[i].silent);
    bench::Report("length-wrong-" + id, std::to_string(sums[0].wrong + sums[0].silent) + " of " + std::to_string(all),
                  others);
    std::printf("\n%-40s", "largest error, ms");
    for (const Score& sum : sums)
      std::printf("%10.1f", sum.worstMs);
    std::printf("\n%-40s", "time a file as a process, median, ms");
    for (const auto& times : times_)
      std::printf("%10.2f", Median(times));
    std::printf("\n");
  }

 private:
  void Blame(const LengthFile& file, double told) {
    ++oursWrong_;
    std::printf("wrong: %s, %d Hz, %d channels: %.0f ms, not %.2f\n", file.kind.c_str(), file.sampleRate, file.channels,
                told, 1000.0 * static_cast<double>(file.samples.front()) / file.sampleRate);
  }

  static void PrintLine(const std::string& kind, int files, const std::vector<Score>& scores) {
    std::printf("\n%-34s%6d", kind.c_str(), files);
    for (const Score& score : scores)
      std::printf("%10d", score.wrong + score.silent);
  }

  const std::vector<LengthTool>& tools_;
  std::map<std::string, std::vector<Score>> kinds_;
  std::map<std::string, int> files_;
  std::vector<std::vector<double>> times_;
  int oursWrong_ = 0;
};

bool CompareLengths(const fs::path& folder, const std::vector<LengthTool>& tools) {
  Scores mp3(tools);
  const int made = bench::MakeMp3Files(folder, [&](const LengthFile& file) { mp3.Take(file); });
  std::printf("%d MP3 files", made);
  mp3.Print("mp3");
  std::vector<LengthTool> readers = tools;
  std::erase_if(readers, [](const LengthTool& tool) { return tool.name == "mpg123"; });
  Scores wav(readers);
  std::printf("\n%d WAV files", bench::MakeWavFiles(folder, [&](const LengthFile& file) { wav.Take(file); }));
  wav.Print("wav");
  return mp3.AreOursRight() && wav.AreOursRight();
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::strcmp(arguments[1], "--measure") == 0) {
    std::printf("%d\n", audio::MeasureMs(arguments[2]));
    return 0;
  }
  std::string name = (fs::temp_directory_path() / "length-bench-XXXXXX").string();
  bench::Require(mkdtemp(name.data()) != nullptr, "a temporary folder");
  const std::vector<LengthTool> tools = bench::InstalledTools();
  CompareTimes(name, tools);
  const bool lame = std::system("command -v lame >/dev/null 2>&1") == 0;
  if (!lame) std::printf("no lame here: exactness is not measured\n");
  const bool right = !lame || CompareLengths(name, tools);
  fs::remove_all(name);
  bench::Require(right, "a length of ours");
}
