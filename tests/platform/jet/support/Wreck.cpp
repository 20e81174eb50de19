// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/Wreck.h"

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/platform/jet/support/FaultyFiles.h"
#include "tests/platform/jet/support/Places.h"
#include "tests/platform/jet/support/TinyDatabase.h"

namespace jet::test {
namespace {

constexpr std::size_t kJournalHead = 40;
constexpr std::size_t kSumAt = 32;
constexpr std::size_t kJournalRecord = 4232;
constexpr std::size_t kJournalRecordHead = 136;
constexpr std::uint64_t kSumOfNothing = 0x9E3779B97F4A7C15;

void AddTo(std::uint64_t& sum, ByteView bytes) {
  for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
    sum = (sum ^ Load<std::uint64_t>(&bytes[at])) * 0xFF51AFD7ED558CCD;
    sum ^= sum >> 29;
  }
}

}  // namespace

std::vector<std::uint32_t> PagesBefore() {
  return {1, 2, 3};
}
std::vector<std::uint32_t> PagesAfter() {
  return {10, 2, 30, 40, 50};
}

void ChangePages(Storage& storage) {
  WriteTurn writing(storage);
  Fill(storage, 1, 10);
  Fill(storage, 3, 30);
  Fill(storage, 4, 40);
  Fill(storage, 5, 50);
  writing.Commit();
}

Wreck CrashMidway(const Bytes& before) {
  for (int call = 0;; ++call) {
    files::MemoryFileSystem memory;
    memory.Put(kPath, before);
    FaultyFiles files(memory);
    {
      Storage storage(kPath, TestOptions(), files);
      files.FailAt(call, Fault::Dead);
      try {
        ChangePages(storage);
      } catch (const Error&) {
        // The process is killed here.
      }
    }
    const Bytes after = memory.Get(kPath);
    if (after != before) return {after, memory.Get("/data/station.mdb-journal")};
  }
}

Wreck CrashMidway() {
  return CrashMidway(TinyDatabase(PagesBefore()));
}

void CopyInto(FileSystem& files, const FileSystem::Path& path, const Bytes& content) {
  const auto file = files.Open(path, OpenMode::Write);
  file->Truncate(0);
  file->WriteAt(0, content);
}

Bytes InFirstForm(Bytes journal) {
  journal[7] = '1';
  Store(&journal[kSumAt], std::uint64_t{0});
  std::uint64_t sum = kSumOfNothing;
  AddTo(sum, journal);
  Store(&journal[kSumAt], sum);
  return journal;
}

Bytes WithSum(Bytes journal) {
  Store(&journal[kSumAt], std::uint64_t{0});
  std::uint64_t sum = kSumOfNothing;
  AddTo(sum, ByteView(journal).first(kJournalHead));
  for (std::size_t record = kJournalHead; record < journal.size(); record += kJournalRecord)
    AddTo(sum, ByteView(journal).subspan(record, kJournalRecordHead));
  Store(&journal[kSumAt], sum);
  return journal;
}

}  // namespace jet::test
