#include "platform/jet/LockFile.h"

#include "platform/jet/Error.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace jet {
namespace {

constexpr std::uint64_t kUserBytes = 0x10000000;
constexpr std::size_t kLockEntryBytes = 64;
constexpr std::size_t kNameBytes = 32;
constexpr int kMostAttempts = 100;

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

}  // namespace

LockFileUser ThisUser() {
  std::array<char, 256> host{};
  ::gethostname(host.data(), host.size() - 1);
  return {UpTo31Characters(host.data(), "?"), UpTo31Characters(std::getenv("USER"), "Admin")};
}

LockFile::LockFile(FileSystem& files, const std::filesystem::path& database, Lock& lock)
    : files_(files), path_(database), lock_(lock) {
  path_.replace_extension(".ldb");
  try {
    for (int attempt = 0; attempt < kMostAttempts && !Enter(); ++attempt) {
    }
  } catch (const Error&) {
    file_.reset();
    number_ = 0;
  }
}

// The last user of the file may be removing it: then ours is a file without a name, and we begin again.
bool LockFile::Enter() {
  file_ = files_.Open(path_, OpenMode::OpenOrCreate);
  const bool entered = TakeNumber();
  if (files_.Identity(path_) != file_->Identity()) {
    if (number_ != 0) lock_.UnmarkUser(number_);
    number_ = 0;
    return false;
  }
  if (entered) WriteEntry();
  return true;
}

bool LockFile::TakeNumber() {
  for (unsigned number = 1; number <= Lock::kMostUsers; ++number) {
    if (!file_->TryLock({kUserBytes + number, 1}, LockKind::Exclusive)) continue;
    lock_.MarkUser(number);
    number_ = number;
    return true;
  }
  return false;
}

void LockFile::WriteEntry() {
  std::array<std::uint8_t, kLockEntryBytes> entry{};
  const LockFileUser user = ThisUser();
  std::copy(user.machine.begin(), user.machine.end(), entry.begin());
  std::copy(user.name.begin(), user.name.end(), entry.begin() + kNameBytes);
  file_->WriteAt((number_ - 1) * kLockEntryBytes, entry);
}

LockFile::~LockFile() {
  if (file_ == nullptr) return;
  try {
    // With all the bytes ours, nobody else is in, and nobody gets in before the name is gone.
    if (file_->TryLock({kUserBytes + 1, Lock::kMostUsers}, LockKind::Exclusive) &&
        files_.Identity(path_) == file_->Identity()) {
      files_.Remove(path_);
    }
    file_.reset();
    if (number_ != 0) lock_.UnmarkUser(number_);
  } catch (const Error&) {
    // A file that stays behind proves nothing to anybody.
  }
}

LockFileUser LockFile::UserAt(unsigned number) {
  std::array<std::uint8_t, kLockEntryBytes> entry{};
  if (file_ == nullptr || number == 0) return {};
  file_->ReadAt((number - 1) * kLockEntryBytes, entry);
  return {NameIn(entry, 0), NameIn(entry, kNameBytes)};
}

std::optional<unsigned> LockFile::ForeignUser() {
  if (file_ == nullptr || !file_->IsLockedByOther({kUserBytes + 1, Lock::kMostUsers}, LockKind::Exclusive))
    return std::nullopt;
  for (unsigned number = 1; number <= Lock::kMostUsers; ++number) {
    if (!file_->IsLockedByOther({kUserBytes + number, 1}, LockKind::Exclusive)) continue;
    if (!lock_.IsOurs(number)) return number;
  }
  return std::nullopt;
}

}  // namespace jet
