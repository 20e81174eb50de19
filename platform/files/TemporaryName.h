// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>
#include <string_view>

namespace files {

// A new temporary name in the folder of `path`: hidden, with 16 random hexadecimal digits, in a form that no other
// program uses: ".NAME.0123456789abcdef.spotrooster-tmp". A long NAME is shortened. Open it with OpenMode::Create and
// followLink false. With an `owner`, a text that identifies on whose behalf the file is written, 12 of the digits are
// its hash.
std::filesystem::path TemporaryName(const std::filesystem::path& path, std::string_view owner = {});

// Whether the file name has that form. The folder is ignored.
bool IsTemporaryName(const std::filesystem::path& path);

// Removes the temporary files for `path` that a killed program left: those without the lock of LockTemporary. Files
// that cannot be read or removed are ignored.
void RemoveLeftovers(const std::filesystem::path& path, FileSystem& files = CurrentFileSystem());
// The same for the temporary files of an owner (not empty) in the folder of `path`, whatever file they are for.
void RemoveLeftoversOf(std::string_view owner, const std::filesystem::path& path,
                       FileSystem& files = CurrentFileSystem());
// The same for the temporary files of all paths that begin with `beginning`.
void RemoveLeftoversBeginning(const std::filesystem::path& beginning, FileSystem& files = CurrentFileSystem());

// Marks a temporary file as in use for as long as `file` is open. False when another program removed it as a leftover
// before it was locked: the caller must retry with another name. On a file system without locks this has no effect, and
// leftovers are not removed.
[[nodiscard]] bool LockTemporary(File& file, const std::filesystem::path& temporary, FileSystem& files);

}  // namespace files
