// SPDX-License-Identifier: MIT
#include "platform/jet/check/Compact.h"

#include "platform/files/AtomicFile.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/check/DatabaseCopy.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/pages/Pages.h"
#include "platform/jet/storage/LockFile.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Error.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>

namespace jet {

namespace {

constexpr std::size_t kPagesAtOnce = 64;

// Writes pages to a file, encoded with this key.
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

// Writes a copy of `source` and compares both. `options`: for opening the source.
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
    // Content was copied as it is, so the message refers to the old file.
    const auto findings = CheckDatabase(source);
    const auto problem = std::ranges::find(findings, false, &Finding::remark);
    throw Damage(problem != findings.end() ? problem->text : "het is niet goed overgenomen");
  });
}

void CopyBytes(File& source, files::AtomicFile& target) {
  Bytes chunk(kPagesAtOnce * kPageSize);
  std::uint64_t copied = 0;
  while (const std::size_t count = source.ReadAt(copied, chunk)) {
    target.Write({reinterpret_cast<const char*>(chunk.data()), count});
    copied += count;
  }
}

std::filesystem::path KeptName(std::filesystem::path path) {
  return path += ".bak";
}

}  // namespace

void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target, const OpenOptions& options,
                 FileSystem& files) {
  const auto isThere = [&] { return SystemError("aanmaken", target.string(), EEXIST); };
  const auto database = Database::Open(source, options, files);
  const ReadTurn reading(*database);
  LockFile::CheckName(target);
  if (files.Exists(target)) throw isThere();
  files::AtomicFile file(target, database->Shared().OpenedFile().Status(), files);
  WriteCopy(*database, file, options, files);
  if (!file.CommitNew(target)) throw isThere();
}

// Uses the open file and its real path only: in a shared folder another user may replace the name by a link meanwhile.
void Compact(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files) {
  OpenOptions writable = options;
  writable.writable = true;
  const auto database = Database::Open(path, writable, files);
  const WriteTurn turn(*database);
  const std::filesystem::path real = database->Shared().Path();
  File& old = database->Shared().OpenedFile();
  const std::filesystem::path kept = KeptName(real);
  files::AtomicFile file(real, old.Status(), files);
  WriteCopy(*database, file, options, files);
  files::AtomicFile keeping(kept, old.Status(), files);
  CopyBytes(old, keeping);
  keeping.Commit();
  file.Commit();
}

}  // namespace jet
