// The length of sound files, beside the tools that people ask for it: time and error of each. The reference is a full
// decode. Every tool runs as a process of its own, ours too; the time within a program that links the library stands
// beside it.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "platform/audio/Decoder.h"
#include "platform/audio/Measure.h"
#include "platform/audio/Synth.h"

namespace {

namespace fs = std::filesystem;
constexpr int kRuns = 5;
constexpr double kLongMs = 2000;  // what takes longer is run once

double MedianMs(const std::function<void()>& work) {
  std::vector<double> times;
  for (int run = 0; run < kRuns && (times.empty() || times.back() < kLongMs); ++run) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

// The number that a command prints.
std::optional<double> NumberFrom(const std::string& command) {
  FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return std::nullopt;
  char line[256] = "";
  const bool read = fgets(line, sizeof line, pipe) != nullptr;
  while (fgetc(pipe) != EOF)
    continue;
  pclose(pipe);
  char* end = line;
  const double number = std::strtod(line, &end);
  return read && end != line && number > 0 ? std::optional(number) : std::nullopt;
}

struct Tool {
  std::string name;
  std::string program;
  std::function<std::string(const std::string& file)> command;
  double msPerUnit;
};

std::vector<Tool> Tools(const std::string& self) {
  const auto with = [](const std::string& head, const std::string& tail) {
    return [=](const std::string& file) { return head + " '" + file + "'" + tail; };
  };
  return {{"this program", self, with("'" + self + "' --measure", ""), 1},
          {"mpg123 (decodes)", "mpg123", with("mpg123 -q -s", " | wc -c"), 1000.0 / (44100 * 4)},
          {"ffprobe", "ffprobe", with("ffprobe -v error -show_entries format=duration -of csv=p=0", ""), 1000},
          {"soxi", "soxi", with("soxi -D", ""), 1000},
          {"mediainfo", "mediainfo", with("mediainfo '--Inform=General;%Duration%'", ""), 1}};
}

bool IsInstalled(const std::string& program) {
  return std::system(("command -v '" + program + "' >/dev/null 2>&1").c_str()) == 0;
}

double FullDecodeMs(const std::string& file) {
  const auto decoder = audio::OpenDecoder(file);
  std::vector<float> block(8192 * static_cast<std::size_t>(decoder->Channels()));
  std::size_t frames = 0;
  while (const std::size_t got = decoder->Read(block.data(), 8192))
    frames += got;
  return static_cast<double>(frames) * 1000 / decoder->SampleRate();
}

std::string Bytes(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string Write(const std::string& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
  return file;
}

std::string Tone(const std::string& file, double seconds, bool variable) {
  audio::ToneOptions options;
  options.seconds = seconds;
  options.variableBitRate = variable;
  audio::WriteToneFile(file, options);
  return file;
}

// Without its first frame, which holds the length header: from the next two bytes of sync and version on.
std::string WithoutHeader(const std::string& bytes) {
  const std::size_t next = bytes.find(bytes.substr(0, 2), 64);
  return bytes.substr(std::min(next, bytes.size()));
}

std::vector<std::string> MakeFiles(const fs::path& folder) {
  const auto at = [&](const char* name) { return (folder / name).string(); };
  std::vector<std::string> files = {Tone(at("spot.wav"), 30.04, false), Tone(at("spot-constant.mp3"), 30.04, false),
                                    Tone(at("spot-variable.mp3"), 30.04, true)};
  const std::string variable = Bytes(files[2]);
  const std::string bare = WithoutHeader(variable);
  files.push_back(Write(at("spot-variable-no-header.mp3"), bare));
  files.push_back(Write(at("spot-cut-old-header.mp3"), variable.substr(0, variable.size() / 2)));
  std::string hour;
  for (int i = 0; i < 120; ++i)
    hour += bare;
  files.push_back(Write(at("hour-variable-no-header.mp3"), hour));
  return files;
}

void Compare(const std::string& file, const std::vector<Tool>& tools) {
  const double reference = FullDecodeMs(file);
  std::printf("\n%s, %.1f s\n", fs::path(file).filename().c_str(), reference / 1000);
  const double inside = MedianMs([&] { audio::MeasureMs(file); });
  std::printf("  %-22s %9.2f ms   error %10.1f ms\n", "audio::MeasureMs", inside, audio::MeasureMs(file) - reference);
  double own = 0;
  for (const Tool& tool : tools) {
    std::optional<double> told;
    const double time = MedianMs([&] { told = NumberFrom(tool.command(file)); });
    if (own == 0) own = time;
    if (told) {
      std::printf("  %-22s %9.2f ms   error %10.1f ms   %6.1f x\n", tool.name.c_str(), time,
                  *told * tool.msPerUnit - reference, time / own);
    } else {
      std::printf("  %-22s tells nothing\n", tool.name.c_str());
    }
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::strcmp(arguments[1], "--measure") == 0) {
    std::printf("%d\n", audio::MeasureMs(arguments[2]));
    return 0;
  }
  std::string name = (fs::temp_directory_path() / "audio-bench-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) return 1;
  std::vector<Tool> tools;
  for (const Tool& tool : Tools(fs::read_symlink("/proc/self/exe").string())) {
    if (IsInstalled(tool.program)) tools.push_back(tool);
  }
  std::printf("Length of sound files: median of %d runs; the last column is the ratio to this program\n", kRuns);
  for (const std::string& file : MakeFiles(name))
    Compare(file, tools);
  fs::remove_all(name);
}
