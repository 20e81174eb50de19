// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/storage/Storage.h"

#include <cstdint>
#include <vector>

namespace jet::test {

// What a process leaves that died after it overwrote the first page of /data/station.mdb.
struct Wreck {
  Bytes database;
  Bytes journal;
};

// The pages of the tiny database before and after ChangePages.
std::vector<std::uint32_t> PagesBefore();
std::vector<std::uint32_t> PagesAfter();
// Changes two pages and appends two, as one statement.
void ChangePages(Storage& storage);
// `before` is the whole file that the process changed.
Wreck DieMidway(const Bytes& before);
Wreck DieMidway();

// Puts the bytes into the file that is there, as `cp` does.
void CopyInto(FileSystem& files, const FileSystem::Path& path, const Bytes& content);
// The checksum that a journal has of itself, of these bytes.
std::uint64_t JournalSum(ByteView bytes);
// The journal with the right checksum of itself.
Bytes WithSum(Bytes journal);

}  // namespace jet::test
