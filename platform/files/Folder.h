// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>

namespace files {

// Creates a folder for copies of a file: users who may read the file may list the folder, users who may write it may
// add copies, and no others, regardless of the umask. Its group and owner become those of `file` as far as this user
// may set them. An existing folder, or a link to one, is left as it is. The parent folder must exist.
void MakeFolder(const std::filesystem::path& path, const FileStatus& file);

}  // namespace files
