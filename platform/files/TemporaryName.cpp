// SPDX-License-Identifier: MIT
#include "platform/files/TemporaryName.h"

#include "platform/files/Error.h"

#include <algorithm>
#include <array>
#include <cstdint>
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
constexpr std::size_t kOwnerDigits = 12;
constexpr std::size_t kAfterName = 1 + kRandomDigits + kEnding.size();
constexpr std::size_t kLongestName = 255;  // bytes, of the usual file systems

// Hidden files begin with a dot.
std::string HiddenName(const Path& path) {
  std::string name = ".";
  name += path.filename().string();
  return name;
}

// The first part of the temporary names of a file, never cut within a UTF-8 character.
std::string Beginning(const Path& path) {
  std::string name = HiddenName(path);
  const auto isWithinCharacter = [&](std::size_t at) { return (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80; };
  std::size_t length = std::min(name.size(), kLongestName - kAfterName);
  while (length < name.size() && length > 1 && isWithinCharacter(length))
    --length;
  name.resize(length);
  return name;
}

// FNV-1a: the same in every run of the program.
std::string OwnerDigits(std::string_view owner) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char byte : owner)
    hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
  std::array<char, kRandomDigits + 1> digits{};
  std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
  return std::string(digits.data()).substr(0, kOwnerDigits);
}

std::string Digits(std::string_view owner) {
  std::random_device random;
  std::array<char, kRandomDigits + 1> digits{};
  std::snprintf(digits.data(), digits.size(), "%08x%08x", random(), random());
  if (owner.empty()) return digits.data();
  return OwnerDigits(owner) + std::string(digits.data()).substr(kOwnerDigits);
}

// The 16 digits of a temporary name.
std::string_view DigitsOf(std::string_view name) {
  return name.substr(name.size() - kAfterName + 1, kRandomDigits);
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

// Removes the unused temporary files in the folder of `path` whose names `isLeftover` accepts.
template <typename Accept>
void RemoveUnused(const Path& path, FileSystem& files, const Accept& isLeftover) {
  const Path folder = path.has_parent_path() ? path.parent_path() : Path(".");
  std::vector<Path> names;
  try {
    names = files.NamesIn(folder);
  } catch (const Error&) {
    return;
  }
  for (const Path& name : names) {
    if (IsTemporaryName(name) && isLeftover(name.string())) RemoveIfUnused(folder / name, files);
  }
}

}  // namespace

Path TemporaryName(const Path& path, std::string_view owner) {
  return path.parent_path() / (Beginning(path) + "." + Digits(owner) + std::string(kEnding));
}

bool IsTemporaryName(const Path& path) {
  const std::string name = path.filename().string();
  if (name.size() <= kAfterName || name.front() != '.' || !name.ends_with(kEnding)) return false;
  return name[name.size() - kAfterName] == '.' && DigitsOf(name).find_first_not_of(kDigits) == std::string_view::npos;
}

void RemoveLeftovers(const Path& path, FileSystem& files) {
  const std::string beginning = Beginning(path);
  RemoveUnused(path, files, [&](const std::string& name) {
    return name.size() == beginning.size() + kAfterName && name.starts_with(beginning);
  });
}

void RemoveLeftoversOf(std::string_view owner, const Path& path, FileSystem& files) {
  RemoveUnused(path, files,
               [digits = OwnerDigits(owner)](const std::string& name) { return DigitsOf(name).starts_with(digits); });
}

void RemoveLeftoversBeginning(const Path& beginning, FileSystem& files) {
  RemoveUnused(beginning, files,
               [first = HiddenName(beginning)](const std::string& name) { return name.starts_with(first); });
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
