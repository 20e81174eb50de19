// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/database/Database.h"

#include <filesystem>

namespace jet {

// Writes what is in the database at `source` to a new file at `target`, without dead space, and compares the two row
// by row before it returns: tables (those of the system too) with properties, relations, saved queries and everything
// else that is kept in rows, password and encoding. An Error when `target` is there already, when the source cannot be
// read in full, or (Unsupported, naming it) when something of it would be lost. `options` are for opening the source.
// The new file has the permissions, group and owner of the source, as far as this user may set them, and is never open
// to more users.
void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target,
                 const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

// The same, and puts the result in the place of the old file, which is kept beside it with ".bak" behind its name.
// Both have the access of the old file, so that every user of it can use them. Nobody can write to the database
// meanwhile.
void Compact(const std::filesystem::path& path, const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

}  // namespace jet
