// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/OpenOptions.h"
#include "platform/jet/pages/Files.h"

#include <filesystem>

namespace jet {

// Copies the database at `source` to a new file at `target` without unused space, and compares both row by row before
// it returns. Copies all tables (also system tables) with properties, relations, saved queries and everything else that
// is stored in rows, password and encoding. Throws Error when `target` exists, when the source cannot be read
// completely, or (Unsupported, with its name) when something would be lost. `options`: for opening the source. The new
// file has the permissions, group and owner of the source, as far as this user may set them, and never grants access to
// more users.
void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target,
                 const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

// The same, and replaces the old file, which is kept with ".bak" appended to its name. Both have the permissions of the
// old file. The database is locked for writers meanwhile.
void Compact(const std::filesystem::path& path, const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

}  // namespace jet
