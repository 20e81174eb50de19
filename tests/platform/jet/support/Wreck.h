// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/storage/Storage.h"

#include <cstdint>
#include <vector>

namespace jet::test {

// The files left by a process that was killed after it overwrote the first page of /data/station.mdb.
struct Wreck {
  Bytes database;
  Bytes journal;
};

// The pages of the tiny database before and after ChangePages.
std::vector<std::uint32_t> PagesBefore();
std::vector<std::uint32_t> PagesAfter();
// Changes two pages and appends two, as one statement.
void ChangePages(Storage& storage);
// `before`: the content of the file before the change.
Wreck CrashMidway(const Bytes& before);
Wreck CrashMidway();

// Overwrites the existing file, as `cp` does.
void CopyInto(FileSystem& files, const FileSystem::Path& path, const Bytes& content);
// The journal with its checksum corrected.
Bytes WithSum(Bytes journal);
// The same journal in the first form of the format, whose checksum covers the old pages too.
Bytes InFirstForm(Bytes journal);

}  // namespace jet::test
