#include "platform/jet/Compact.h"

#include "platform/files/AtomicFile.h"
#include "platform/jet/Check.h"
#include "platform/jet/Damage.h"
#include "platform/jet/DatabaseCopy.h"
#include "platform/jet/Error.h"

#include <algorithm>
#include <memory>

namespace jet {

namespace {

constexpr std::size_t kPagesAtOnce = 64;

/// Writes pages as a file with this encoding key has them.
void WritePages(PageSource& pages, std::uint32_t key, File& file) {
  Bytes block;
  std::uint64_t written = 0;
  for (std::uint32_t number = 0; number < pages.PageCount(); ++number) {
    PageBytes page = *pages.Read(number);
    ApplyPageEncoding(key, number, page);
    block.insert(block.end(), page.begin(), page.end());
    if (block.size() < kPagesAtOnce * kPageSize && number + 1 < pages.PageCount()) continue;
    file.WriteAt(written, block);
    written += block.size();
    block.clear();
  }
  file.Sync();
}

/// Removes a file that was not finished.
class Unfinished {
 public:
  Unfinished(FileSystem& files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}
  ~Unfinished() {
    if (kept_) return;
    try {
      files_.Remove(path_);
    } catch (const Error&) {
      // What went wrong before is what the user hears of.
    }
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  void Keep() { kept_ = true; }

 private:
  FileSystem& files_;
  std::filesystem::path path_;
  bool kept_ = false;
};

/// Writes a copy of `source` to a new file at `path` and compares the two. `options` are for opening the source.
void CopyAll(Database& source, const std::filesystem::path& path, const OpenOptions& options, FileSystem& files) {
  InContext("Het bestand '" + source.Name() + "' is beschadigd: ", [&] {
    DatabaseCopy copy(source);
    WritePages(copy.Pages(), source.DatabaseHeader().encodingKey, *files.Open(path, OpenMode::Create));
    OpenOptions reading = options;
    reading.writable = false;
    const auto target = Database::Open(path, reading, files);
    const ReadTurn turn(*target);
    copy.Compare(*target);
    if (!HasProblem(CheckDatabase(*target))) return;
    // What was copied as it stands is for the user to find in the old file.
    const auto findings = CheckDatabase(source);
    const auto problem = std::ranges::find(findings, false, &Finding::remark);
    throw Damage(problem != findings.end() ? problem->text : "het is niet goed overgenomen");
  });
}

void KeepOld(const std::filesystem::path& path, FileSystem& files) {
  std::filesystem::path kept = path;
  kept += ".bak";
  const auto file = files.Open(path, OpenMode::Read);
  Bytes content(file->Size());
  content.resize(file->ReadAt(0, content));
  files::WriteFile(kept, {reinterpret_cast<const char*>(content.data()), content.size()}, files);
}

}  // namespace

void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target, const OpenOptions& options,
                 FileSystem& files) {
  const auto database = Database::Open(source, options, files);
  const ReadTurn reading(*database);
  if (files.Exists(target)) Database::Create(target, files);  // says that it is there
  Unfinished unfinished(files, target);
  CopyAll(*database, target, options, files);
  unfinished.Keep();
}

void Compact(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files) {
  OpenOptions writable = options;
  writable.writable = true;
  const auto database = Database::Open(path, writable, files);
  const WriteTurn nobodyElse(*database);
  std::filesystem::path temporary = path;
  temporary.replace_extension(".compact.mdb");
  if (files.Exists(temporary)) files.Remove(temporary);  // left by one that was killed
  Unfinished unfinished(files, temporary);
  CopyAll(*database, temporary, options, files);
  KeepOld(path, files);
  files.CopyPermissions(path, temporary);
  files.Rename(temporary, path);
  unfinished.Keep();
  files.SyncFolderOf(path);
}

}  // namespace jet
