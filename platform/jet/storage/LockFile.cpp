// SPDX-License-Identifier: MIT
#include "platform/jet/storage/LockFile.h"

#include "platform/jet/values/Error.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>

namespace jet {
namespace {

constexpr std::uint64_t kUserBytes = 0x10000000;
constexpr std::uint64_t kOurUserBytes = 0x80001000;  // past all bytes that Jet programs use
constexpr std::size_t kLockEntryBytes = 64;
constexpr std::size_t kNameBytes = 32;
constexpr int kMaxAttempts = 100;

std::string UpTo31Characters(const char* name, const char* otherwise) {
  return std::string(name != nullptr && *name != '\0' ? name : otherwise).substr(0, kNameBytes - 1);
}

std::string NameIn(ByteView entry, std::size_t at) {
  std::string name;
  for (std::size_t i = at; i < at + kNameBytes && entry[i] != 0; ++i)
    name.push_back(static_cast<char>(entry[i] < 0x20 || entry[i] > 0x7E ? '?' : entry[i]));
  while (!name.empty() && name.back() == ' ')
    name.pop_back();
  return name;
}

// A name of zero or more characters and its terminator.
bool IsName(ByteView half) {
  const auto end = std::find_if(half.begin(), half.end(), [](std::uint8_t byte) { return byte < 0x20; });
  return end != half.end() && *end == 0;
}

// Called before anything is written: the file may be an unrelated one of the user.
void CheckIsLockFile(File& file) {
  constexpr std::size_t kLargest = LockFile::kMaxUsers * kLockEntryBytes;
  Bytes content(std::min<std::uint64_t>(file.Size(), kLargest + 1));
  content.resize(file.ReadAt(0, content));
  const std::size_t names = content.size() / kNameBytes;
  bool isLockFile = content.size() <= kLargest;
  for (std::size_t i = 0; isLockFile && i < names; ++i)
    isLockFile = IsName(ByteView(content).subspan(i * kNameBytes, kNameBytes));
  const ByteView rest = ByteView(content).subspan(names * kNameBytes);
  if (isLockFile && (rest.empty() || IsName(rest))) return;
  throw Error(ErrorCode::Unsupported,
              "Het bestand '" + file.Name() +
                  "' heeft de naam van een lijst van gebruikers van de database, maar is iets anders. Geef het een "
                  "andere naam; zolang wordt er niet in de database geschreven.");
}

}  // namespace

LockFileUser ThisUser() {
  std::array<char, 256> host{};
  ::gethostname(host.data(), host.size() - 1);
  return {UpTo31Characters(host.data(), "?"), UpTo31Characters(std::getenv("USER"), "Admin")};
}

std::string Described(const LockFileUser& user) {
  if (user.name.empty()) return user.machine;
  return user.machine.empty() ? user.name : user.name + " op " + user.machine;
}

std::filesystem::path LockFile::Of(const std::filesystem::path& database) {
  std::filesystem::path path = database;
  return path.replace_extension(".ldb");
}

void LockFile::CheckName(const std::filesystem::path& database) {
  std::string ending = database.extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char c) { return std::tolower(c); });
  if (ending != ".ldb") return;
  throw Error(ErrorCode::Unsupported, "Een database kan niet '" + database.string() +
                                          "' heten: in een bestand met die naam staat wie een database open heeft. "
                                          "Geef de database een naam die op .mdb eindigt.");
}

LockFile::LockFile(FileSystem& files, const std::filesystem::path& path, File& database)
    : files_(files), path_(Of(path)), database_(database) {
  try {
    Require();
  } catch (...) {
    // Reported by Require before the first write.
  }
}

void LockFile::Require() {
  for (int attempt = 0; file_ == nullptr; ++attempt) {
    if (Enter()) return;
    if (attempt == kMaxAttempts)
      throw Error(ErrorCode::Locked, "Het bestand '" + path_.string() + "' wordt telkens verwijderd.");
  }
}

// The last user may remove the file at the same time: then we hold an unlinked file and try again.
bool LockFile::Enter() {
  auto file = OpenOrCreate();
  if (file == nullptr) return false;
  number_ = 0;
  const bool entered = TakeNumber(*file);
  if (files_.Identity(path_) != file->Identity()) {
    number_ = 0;
    return false;
  }
  if (entered) WriteEntry(*file);
  file_ = std::move(file);
  return true;
}

// Null when another program created or removed it in the meantime.
std::unique_ptr<File> LockFile::OpenOrCreate() {
  constexpr unsigned kOnlyMine = 0600;
  auto file = files_.OpenIfThere(path_, {.mode = OpenMode::Write, .followLink = false});
  if (file != nullptr) {
    CheckIsLockFile(*file);
    return file;
  }
  try {
    file = files_.Open(path_, {.mode = OpenMode::Create, .followLink = false, .permissions = kOnlyMine});
  } catch (const Error&) {
    if (files_.Exists(path_)) return nullptr;
    throw;
  }
  try {
    file->TakeAccessOf(database_.Status());
  } catch (...) {
    files_.Remove(path_);  // others could not use it
    throw;
  }
  return file;
}

bool LockFile::TakeNumber(File& file) {
  for (unsigned number = 1; number <= kMaxUsers; ++number) {
    if (!file.TryLock({kUserBytes + number, 1}, LockKind::Exclusive)) continue;
    file.TryLock({kOurUserBytes + number, 1}, LockKind::Exclusive);
    number_ = number;
    return true;
  }
  return false;
}

void LockFile::WriteEntry(File& file) const {
  std::array<std::uint8_t, kLockEntryBytes> entry{};
  const LockFileUser user = ThisUser();
  std::copy(user.machine.begin(), user.machine.end(), entry.begin());
  std::copy(user.name.begin(), user.name.end(), entry.begin() + kNameBytes);
  file.WriteAt((number_ - 1) * kLockEntryBytes, entry);
}

LockFile::~LockFile() {
  if (file_ == nullptr) return;
  try {
    // With all user bytes locked there is no other user, and none can enter before the file is removed.
    if (file_->TryLock({kUserBytes + 1, kMaxUsers}, LockKind::Exclusive) &&
        files_.Identity(path_) == file_->Identity()) {
      files_.Remove(path_);
    }
  } catch (...) {
    // A leftover file is harmless: only locks count.
  }
}

LockFileUser LockFile::UserAt(unsigned number) {
  std::array<std::uint8_t, kLockEntryBytes> entry{};
  if (file_ == nullptr || number == 0) return {};
  file_->ReadAt((number - 1) * kLockEntryBytes, entry);
  return {NameIn(entry, 0), NameIn(entry, kNameBytes)};
}

std::optional<unsigned> LockFile::ForeignUser() {
  if (file_ == nullptr || !file_->IsLockedByOther({kUserBytes + 1, kMaxUsers}, LockKind::Exclusive))
    return std::nullopt;
  for (unsigned number = 1; number <= kMaxUsers; ++number) {
    if (!file_->IsLockedByOther({kUserBytes + number, 1}, LockKind::Exclusive)) continue;
    if (!file_->IsLockedByOther({kOurUserBytes + number, 1}, LockKind::Exclusive)) return number;
  }
  return std::nullopt;
}

}  // namespace jet
