// SPDX-License-Identifier: MIT
#include "platform/files/TemporaryName.h"

#include "platform/files/Error.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace files {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view kEnding = ".spotrooster-tmp";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kRandomDigits = 16;
constexpr std::size_t kAfterName = 1 + kRandomDigits + kEnding.size();
constexpr std::size_t kLongestName = 255;  // bytes, of the usual file systems

// The first part of the temporary names of a file: a dot and its name, never cut within a UTF-8 character.
std::string Beginning(const Path& path) {
  std::string name = "." + path.filename().string();
  const auto isWithinCharacter = [&](std::size_t at) { return (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80; };
  std::size_t length = std::min(name.size(), kLongestName - kAfterName);
  while (length < name.size() && length > 1 && isWithinCharacter(length))
    --length;
  name.resize(length);
  return name;
}

std::string RandomDigits() {
  std::random_device random;
  std::array<char, kRandomDigits + 1> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x%08x", random(), random());
  return digits.data();
}

// Removes the file when no program uses it. The lock is held until the removal, so that none starts using it.
void RemoveIfUnused(const Path& path, FileSystem& files) {
  try {
    const auto file = files.OpenIfThere(path, {OpenMode::Write, false});
    if (file != nullptr && file->TryLockWhole()) files.Remove(path);
  } catch (const Error&) {
    // The file does no harm; the next call retries.
  }
}

}  // namespace

Path TemporaryName(const Path& path) {
  return path.parent_path() / (Beginning(path) + "." + RandomDigits() + std::string(kEnding));
}

bool IsTemporaryName(const Path& path) {
  const std::string name = path.filename().string();
  if (name.size() <= kAfterName || name.front() != '.' || !name.ends_with(kEnding)) return false;
  const std::string_view digits = std::string_view(name).substr(name.size() - kAfterName + 1, kRandomDigits);
  return name[name.size() - kAfterName] == '.' && digits.find_first_not_of(kDigits) == std::string_view::npos;
}

void RemoveLeftovers(const Path& path, FileSystem& files) {
  const Path folder = path.has_parent_path() ? path.parent_path() : Path(".");
  const std::string beginning = Beginning(path);
  std::vector<Path> names;
  try {
    names = files.NamesIn(folder);
  } catch (const Error&) {
    return;
  }
  for (const Path& name : names) {
    const bool isOfPath = name.string().size() == beginning.size() + kAfterName && name.string().starts_with(beginning);
    if (isOfPath && IsTemporaryName(name)) RemoveIfUnused(folder / name, files);
  }
}

bool LockTemporary(File& file, const Path& temporary, FileSystem& files) {
  try {
    return file.TryLockWhole() && files.Identity(temporary) == file.Identity();
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Unsupported) throw;
    return true;
  }
}

}  // namespace files
