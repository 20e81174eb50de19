// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>

namespace files {

// A new name beside `path` for a file in the making: hidden, with 16 random digits, and of a form that no other
// program gives: ".NAME.0123456789abcdef.spotrooster-tmp". A long NAME is shortened. Still to be opened with
// OpenMode::Create and followLink false.
std::filesystem::path TemporaryName(const std::filesystem::path& path);

// Whether a file name has that form. The folder in front of it does not matter.
bool IsTemporaryName(const std::filesystem::path& path);

// Removes the temporary files for `path` that a killed program left behind: those on which nobody holds the lock that
// LockTemporary takes. What cannot be looked at or removed stays.
void RemoveLeftovers(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());

// Marks a temporary file as being in use for as long as `file` is open. False when it was taken for a leftover and
// removed in the moment before: then begin again with another name. Where the file system has no locks this is without
// effect, and leftovers stay.
[[nodiscard]] bool LockTemporary(File& file, const std::filesystem::path& temporary, FileSystem& files);

}  // namespace files
