#include "platform/jet/Journal.h"

#include "platform/jet/Codec.h"
#include "platform/jet/Error.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <string>

namespace jet {
namespace {

constexpr char kMagic[] = "SPRJRNL1";
constexpr std::size_t kCountAt = 8;
constexpr std::size_t kOldLengthAt = 16;
constexpr std::size_t kNewLengthAt = 24;
constexpr std::size_t kChecksumAt = 32;
constexpr std::size_t kJournalHeadBytes = 40;
constexpr std::size_t kSector = 512;  // what a disk writes as a whole
constexpr std::size_t kSectors = kPageSize / kSector;
constexpr std::size_t kBeforeSumsAt = 8;
constexpr std::size_t kAfterSumsAt = kBeforeSumsAt + 8 * kSectors;
constexpr std::size_t kImageAt = kAfterSumsAt + 8 * kSectors;
constexpr std::size_t kRecordBytes = kImageAt + kPageSize;
constexpr std::uint64_t kLargestDatabase = std::uint64_t{1} << 31;

constexpr std::uint64_t kFirstSum = 0x9E3779B97F4A7C15;

/// Finds accidents, not attackers. Every step can be undone, so that no single changed word goes unseen.
std::uint64_t Sum(std::uint64_t sum, std::uint64_t word) {
  constexpr std::uint64_t kFactor = 0xFF51AFD7ED558CCD;  // odd
  sum = (sum ^ word) * kFactor;
  return sum ^ sum >> 29;
}

std::uint64_t Checksum(ByteView bytes) {
  std::uint64_t sum = kFirstSum;
  for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8)
    sum = Sum(sum, Load<std::uint64_t>(&bytes[at]));
  return sum;
}

/// The checksums of a page's sectors. Side by side: none of them has to wait for another's multiplication.
std::array<std::uint64_t, kSectors> SectorSums(ByteView page) {
  std::array<std::uint64_t, kSectors> sums;
  sums.fill(kFirstSum);
  for (std::size_t at = 0; at < kSector; at += 8) {
    for (std::size_t sector = 0; sector < kSectors; ++sector)
      sums[sector] = Sum(sums[sector], Load<std::uint64_t>(&page[sector * kSector + at]));
  }
  return sums;
}

void StoreSums(const PageBytes& page, std::uint8_t* at) {
  for (const std::uint64_t sum : SectorSums(page)) {
    Store(at, sum);
    at += sizeof sum;
  }
}

Bytes BuildJournal(std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength) {
  const auto isNew = [](const PageChange& change) { return change.before == nullptr; };
  const auto count = static_cast<std::uint32_t>(changes.size() - std::ranges::count_if(changes, isNew));
  Bytes journal;
  journal.reserve(kJournalHeadBytes + count * kRecordBytes);
  journal.resize(kJournalHeadBytes);
  for (const PageChange& change : changes) {
    if (isNew(change)) continue;
    const std::size_t start = journal.size();
    journal.resize(start + kRecordBytes);
    Store(&journal[start], change.number);
    StoreSums(*change.before, &journal[start + kBeforeSumsAt]);
    StoreSums(*change.after, &journal[start + kAfterSumsAt]);
    std::memcpy(&journal[start + kImageAt], change.before->data(), kPageSize);
  }
  std::memcpy(journal.data(), kMagic, kCountAt);
  Store(&journal[kCountAt], count);
  Store(&journal[kOldLengthAt], oldLength);
  Store(&journal[kNewLengthAt], newLength);
  Store(&journal[kChecksumAt], Checksum(journal));
  return journal;
}

}  // namespace

/// A journal as read. `complete` is false for one whose writing was not finished: then the database is untouched.
struct Journal::Content {
  Bytes bytes;
  bool present = false;
  bool complete = false;

  std::uint64_t OldLength() const { return Load<std::uint64_t>(&bytes[kOldLengthAt]); }
  std::uint64_t NewLength() const { return Load<std::uint64_t>(&bytes[kNewLengthAt]); }
  std::size_t Count() const { return (bytes.size() - kJournalHeadBytes) / kRecordBytes; }
  const std::uint8_t* Record(std::size_t i) const { return &bytes[kJournalHeadBytes + i * kRecordBytes]; }
  std::uint32_t PageAt(std::size_t i) const { return LoadU32(Record(i)); }
  ByteView ImageAt(std::size_t i) const { return {Record(i) + kImageAt, kPageSize}; }

  bool KnowsSector(std::size_t i, std::size_t sector, std::uint64_t sum) const {
    return sum == Load<std::uint64_t>(Record(i) + kBeforeSumsAt + 8 * sector) ||
           sum == Load<std::uint64_t>(Record(i) + kAfterSumsAt + 8 * sector);
  }

  bool IsWhole() {
    if (bytes.size() < kJournalHeadBytes || std::memcmp(bytes.data(), kMagic, kCountAt) != 0) return false;
    if (bytes.size() != kJournalHeadBytes + std::size_t{LoadU32(&bytes[kCountAt])} * kRecordBytes) return false;
    const auto stored = Load<std::uint64_t>(&bytes[kChecksumAt]);
    Store(&bytes[kChecksumAt], std::uint64_t{0});
    return Checksum(bytes) == stored && OldLength() <= kLargestDatabase;
  }
};

Journal::Journal(FileSystem& files, const std::filesystem::path& database) : files_(files), path_(database) {
  path_ += "-journal";
}

Journal::Content Journal::Read() {
  Content content;
  const auto file = files_.OpenIfThere(path_, OpenMode::Read);
  if (file == nullptr) return content;
  content.present = true;
  content.bytes.resize(file->Size());
  content.bytes.resize(file->ReadAt(0, content.bytes));
  content.complete = content.IsWhole();
  return content;
}

void Journal::Write(std::span<const PageChange> changes, std::uint64_t oldLength, std::uint64_t newLength) {
  const auto file = files_.Open(path_, OpenMode::Create);
  try {
    file->WriteAt(0, BuildJournal(changes, oldLength, newLength));
    file->Sync();
    files_.SyncFolderOf(path_);
  } catch (const Error&) {
    RemoveQuietly();
    throw;
  }
}

void Journal::Remove() {
  files_.Remove(path_);
  files_.SyncFolderOf(path_);
}

void Journal::RemoveQuietly() noexcept {
  try {
    files_.Remove(path_);
  } catch (const Error&) {
    // It does no harm where it is: the database equals what it restores.
  }
}

void Journal::Commit(File& database, std::span<const PageChange> changes, std::uint64_t oldLength,
                     std::uint64_t newLength) {
  Write(changes, oldLength, newLength);
  try {
    for (const PageChange& change : changes)
      database.WriteAt(std::uint64_t{change.number} * kPageSize, *change.after);
    database.Sync();
    Remove();
  } catch (const Error&) {
    try {
      Recover(database);
    } catch (const Error&) {
      // The journal stays; whoever opens the database next takes the change back.
    }
    throw;
  }
}

bool Journal::WroteByOthers(File& database, const Content& content) {
  const std::uint64_t length = database.Size();
  if (length > std::max(content.OldLength(), content.NewLength()) || length < content.OldLength()) return true;
  PageBytes page;
  for (std::size_t i = 0; i < content.Count(); ++i) {
    if (database.ReadAt(std::uint64_t{content.PageAt(i)} * kPageSize, page) != kPageSize) return true;
    const auto sums = SectorSums(page);
    for (std::size_t sector = 0; sector < kSectors; ++sector) {
      if (!content.KnowsSector(i, sector, sums[sector])) return true;
    }
  }
  return false;
}

Journal::Recovery Journal::Recover(File& database) {
  const Content content = Read();
  if (!content.present) return Recovery::Nothing;
  if (!content.complete) {
    Remove();
    return Recovery::Discarded;
  }
  if (WroteByOthers(database, content)) SetAside(database);
  for (std::size_t i = 0; i < content.Count(); ++i)
    database.WriteAt(std::uint64_t{content.PageAt(i)} * kPageSize, content.ImageAt(i));
  if (database.Size() > content.OldLength()) database.Truncate(content.OldLength());
  database.Sync();
  Remove();
  return Recovery::RolledBack;
}

void Journal::SetAside(const File& database) {
  std::filesystem::path kept;
  int number = 0;
  do {
    kept = path_;
    kept += "-" + std::to_string(++number);
  } while (files_.Exists(kept));
  files_.Rename(path_, kept);
  files_.SyncFolderOf(kept);
  throw Error(ErrorCode::ForeignWrite,
              "Een wijziging van het bestand '" + database.Name() +
                  "' werd afgebroken, en daarna heeft een ander programma erin geschreven. Er is "
                  "niets teruggezet; de pagina's van voor de wijziging staan in '" +
                  kept.string() + "'. Controleer de database.");
}

std::optional<Journal::Overlay> Journal::ReadOverlay() {
  const Content content = Read();
  if (!content.complete) return std::nullopt;
  Overlay overlay;
  overlay.length = content.OldLength();
  for (std::size_t i = 0; i < content.Count(); ++i) {
    auto page = std::make_shared<PageBytes>();
    std::memcpy(page->data(), content.ImageAt(i).data(), kPageSize);
    overlay.pages[content.PageAt(i)] = std::move(page);
  }
  return overlay;
}

}  // namespace jet
