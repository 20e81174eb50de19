// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/FileSystem.h"

#include <filesystem>

namespace files {

// Makes a folder for copies of a file: who may read the file may look into the folder, who may write it may add copies,
// and nobody else, whatever the umask is. Its group and owner become those of `file` as far as this user may set them.
// A folder of that name, or a link to one, is left as it is. The folder above it must exist.
void MakeFolder(const std::filesystem::path& path, const FileStatus& file);

}  // namespace files
