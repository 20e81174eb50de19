// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "tests/platform/jet/support/FaultyFiles.h"

#include <map>
#include <random>
#include <vector>

namespace jet::test {

// Puts on `disk` what a power cut after the first `cut` changes may leave: of all that was not synced, any part. Bytes
// of a file are safe after a sync of the file, names after a sync of the folder; before it, each 512-byte sector of
// each write and each change of a name is there or not, by chance.
void ReplayUntil(const std::vector<FaultyFiles::Change>& changes, std::size_t cut,
                 const std::map<FileSystem::Path, Bytes>& before, std::mt19937& random, files::MemoryFileSystem& disk);

}  // namespace jet::test
