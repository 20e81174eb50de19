// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "tests/platform/jet/support/FaultyFiles.h"

#include <map>
#include <random>
#include <vector>

namespace jet::test {

// Sets `disk` to a state that a power cut after the first `cut` changes may leave. Content is durable after a sync of
// the file, names after a sync of the folder; before that, each 512-byte sector of a write and each change of a name is
// randomly kept or lost.
void ReplayUntil(const std::vector<FaultyFiles::Change>& changes, std::size_t cut,
                 const std::map<FileSystem::Path, Bytes>& before, std::mt19937& random, files::MemoryFileSystem& disk);

}  // namespace jet::test
