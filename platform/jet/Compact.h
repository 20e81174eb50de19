#pragma once

#include "platform/jet/Database.h"

#include <filesystem>

namespace jet {

/// Writes what is in the database at `source` to a new file at `target`, without dead space, and compares the two row
/// by row before it answers. An Error when `target` is there already, or (Unsupported) when the source has objects
/// other than tables, such as queries and forms, which would be lost. `options` are for opening the source.
void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target,
                 const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

/// The same, and puts the result in the place of the old file, which is kept beside it with ".bak" behind its name.
/// Nobody can write to the database meanwhile.
void Compact(const std::filesystem::path& path, const OpenOptions& options = {}, FileSystem& files = HostFileSystem());

}  // namespace jet
