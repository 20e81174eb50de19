#include "platform/jet/check/Compact.h"

#include "platform/files/AtomicFile.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/check/DatabaseCopy.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Error.h"

#include <algorithm>
#include <memory>
#include <string>

namespace jet {

namespace {

constexpr std::size_t kPagesAtOnce = 64;

/// Writes pages as a file with this encoding key has them.
void WritePages(PageSource& pages, std::uint32_t key, files::AtomicFile& file) {
  std::string block;
  for (std::uint32_t number = 0; number < pages.PageCount(); ++number) {
    PageBytes page = *pages.Read(number);
    ApplyPageEncoding(key, number, page);
    block.append(page.begin(), page.end());
    if (block.size() < kPagesAtOnce * kPageSize && number + 1 < pages.PageCount()) continue;
    file.Write(block);
    block.clear();
  }
  file.Sync();
}

/// Writes a copy of `source` and compares the two. `options` are for opening the source.
void WriteCopy(Database& source, files::AtomicFile& file, const OpenOptions& options, FileSystem& files) {
  InContext("Het bestand '" + source.Name() + "' is beschadigd: ", [&] {
    DatabaseCopy copy(source);
    WritePages(copy.Pages(), source.DatabaseHeader().encodingKey, file);
    OpenOptions reading = options;
    reading.writable = false;
    const auto target = Database::Open(file.TemporaryPath(), reading, files);
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
  files::AtomicFile file(target, files);
  WriteCopy(*database, file, options, files);
  file.Commit();
}

void Compact(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files) {
  OpenOptions writable = options;
  writable.writable = true;
  const auto database = Database::Open(path, writable, files);
  const WriteTurn nobodyElse(*database);
  files::AtomicFile file(path, files);
  WriteCopy(*database, file, options, files);
  KeepOld(path, files);
  file.Commit();
}

}  // namespace jet
