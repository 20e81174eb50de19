// SPDX-License-Identifier: MIT
#include "platform/jet/storage/Journal.h"

#include "platform/jet/values/Error.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace jet {
namespace {

// A user without write access to the database must not change it through a journal.
bool MayWrite(const files::FileStatus& journal, const files::FileStatus& database) {
  constexpr unsigned kGroupMayWrite = 020;
  constexpr unsigned kAllMayWrite = 02;
  if (journal.owner == database.owner || journal.owner == 0 || journal.owner == ::geteuid()) return true;
  if ((database.permissions & kGroupMayWrite) != 0 && journal.group == database.group) return true;
  return (database.permissions & kAllMayWrite) != 0;
}

// Whether the database is in a state that the journal's change cannot have left.
bool WasChangedByOthers(File& database, JournalReader& journal) {
  const std::uint64_t length = database.Size();
  if (length > journal.NewLength() || length < journal.OldLength()) return true;
  PageBytes page;
  for (std::size_t i = 0; i < journal.Count(); ++i) {
    const JournalReader::Record record = journal.Read(i);
    if (database.ReadAt(std::uint64_t{record.page} * kPageSize, page) != kPageSize) return true;
    const auto sums = journal::SectorSums(page);
    for (std::size_t sector = 0; sector < sums.size(); ++sector) {
      if (!record.KnowsSector(sector, sums[sector])) return true;
    }
  }
  return false;
}

// Writes neighbouring pages together: a call for each page of a large change costs more than copying it.
void WritePages(File& database, std::span<const PageChange> changes) {
  constexpr std::size_t kMostTogether = 64;
  Bytes together;
  while (!changes.empty()) {
    const std::uint64_t start = std::uint64_t{changes[0].number} * kPageSize;
    std::size_t count = 1;
    while (count < std::min(changes.size(), kMostTogether) && changes[count].number == changes[0].number + count)
      ++count;
    if (count == 1) {
      database.WriteAt(start, *changes[0].after);
    } else {
      together.clear();
      for (const PageChange& change : changes.first(count))
        together.insert(together.end(), change.after->begin(), change.after->end());
      database.WriteAt(start, together);
    }
    changes = changes.subspan(count);
  }
}

std::string Quoted(const std::filesystem::path& path) {
  return "'" + path.string() + "'";
}

}  // namespace

JournalImages::JournalImages(std::unique_ptr<File> file) : file_(std::move(file)), reader_(*file_) {
  for (std::size_t i = 0; i < reader_.Count(); ++i)
    records_[reader_.Read(i).page] = i;
}

std::shared_ptr<PageBytes> JournalImages::Read(std::uint32_t page) {
  const auto found = records_.find(page);
  if (found == records_.end()) return nullptr;
  auto image = std::make_shared<PageBytes>();
  std::memcpy(image->data(), reader_.Read(found->second).image.data(), kPageSize);
  return image;
}

Journal::Journal(FileSystem& files, const std::filesystem::path& database)
    : files_(files), database_(database), path_(database) {
  path_ += "-journal";
}

std::unique_ptr<File> Journal::OpenTrusted(File& database) {
  auto file = files_.OpenIfThere(path_, {.mode = OpenMode::Read, .followLink = false});
  if (file == nullptr || MayWrite(file->Status(), database.Status())) return file;
  throw Error(ErrorCode::ForeignWrite, "Het bestand " + Quoted(path_) +
                                           " is van een gebruiker die niet in de database mag schrijven. Het wordt "
                                           "niet vertrouwd, en zolang het er staat wordt '" +
                                           database.Name() + "' niet gelezen of geschreven. Verplaats het.");
}

void Journal::Write(const files::FileStatus& status, std::span<const PageChange> changes, std::uint64_t newLength) {
  constexpr unsigned kOnlyMine = 0600;
  std::unique_ptr<File> file;
  try {
    file = files_.Open(path_, {.mode = OpenMode::Create, .followLink = false, .permissions = kOnlyMine});
  } catch (const Error&) {
    files_.OpenIfThere(
        path_, {.mode = OpenMode::Read, .followLink = false});  // throws the precise error for a folder or device
    throw;
  }
  try {
    file->TakeAccessOf(status);
    file->WriteAt(0, journal::Build(changes, status.size, newLength));
    file->Sync();
    files_.SyncFolderOf(path_);
  } catch (...) {
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
  } catch (...) {
    // Harmless: the database still equals what the journal restores.
  }
}

Journal::Outcome Journal::Commit(File& database, const files::FileStatus& status, std::span<const PageChange> changes,
                                 std::uint64_t newLength) {
  Write(status, changes, newLength);
  try {
    // The new end of the file first: on a full disk this fails before a page is overwritten.
    const auto oldEnd = std::ranges::lower_bound(changes, status.size / kPageSize, {}, &PageChange::number);
    WritePages(database, {oldEnd, changes.end()});
    WritePages(database, {changes.begin(), oldEnd});
    database.Sync();
    files_.Remove(path_);
  } catch (...) {
    try {
      Recover(database);
    } catch (...) {
      // The journal remains; the next program that opens the database undoes the change.
    }
    throw;
  }
  try {
    files_.SyncFolderOf(path_);
  } catch (...) {
    return Outcome::Done;
  }
  return Outcome::Durable;
}

Journal::Recovery Journal::Recover(File& database) {
  const auto file = OpenTrusted(database);
  if (file == nullptr) return Recovery::Nothing;
  JournalReader journal(*file);
  if (IsReplaced(database)) return Recovery::Replaced;
  if (journal.GetKind() == JournalReader::Kind::Unfinished) {
    Remove();
    return Recovery::Discarded;
  }
  if (journal.GetKind() == JournalReader::Kind::Foreign) {
    throw Error(ErrorCode::ForeignWrite, "Het bestand " + Quoted(path_) +
                                             " is geen journaal van een wijziging van de database. Er is niets "
                                             "teruggezet; het heet nu " +
                                             Quoted(SetAside()) + ".");
  }
  if (WasChangedByOthers(database, journal)) {
    throw Error(ErrorCode::ForeignWrite,
                "Een wijziging van het bestand '" + database.Name() +
                    "' werd afgebroken, en daarna heeft een ander programma erin geschreven of is er een kopie "
                    "teruggezet. Het bestand is gelaten zoals het is; de pagina's van voor de wijziging staan in " +
                    Quoted(SetAside()) + ". Controleer de database.");
  }
  for (std::size_t i = 0; i < journal.Count(); ++i) {
    const JournalReader::Record record = journal.Read(i);
    database.WriteAt(std::uint64_t{record.page} * kPageSize, record.image);
  }
  if (database.Size() > journal.OldLength()) database.Truncate(journal.OldLength());
  database.Sync();
  Remove();
  return Recovery::RolledBack;
}

// After a replacement the journal may belong to a running writer of the new file.
bool Journal::IsReplaced(File& database) {
  const auto named = files_.Identity(database_);
  return named && *named != database.Identity();
}

std::filesystem::path Journal::SetAside() {
  std::filesystem::path kept;
  int number = 0;
  do {
    kept = path_;
    kept += "-";
    kept += std::to_string(++number);
  } while (files_.Exists(kept));
  files_.Rename(path_, kept);
  files_.SyncFolderOf(kept);
  return kept;
}

std::unique_ptr<JournalImages> Journal::ReadImages(File& database) {
  auto file = OpenTrusted(database);
  if (file == nullptr) return nullptr;
  JournalReader journal(*file);
  if (journal.GetKind() == JournalReader::Kind::Unfinished) return nullptr;
  if (journal.GetKind() == JournalReader::Kind::Sound && !WasChangedByOthers(database, journal))
    return std::make_unique<JournalImages>(std::move(file));
  throw Error(ErrorCode::ForeignWrite,
              "Het bestand " + Quoted(path_) + " past niet bij '" + database.Name() +
                  "': na een afgebroken wijziging heeft een ander programma erin geschreven, of er is een kopie "
                  "teruggezet. Verplaats het journaal, of open de database eenmaal om te schrijven.");
}

}  // namespace jet
