// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Storage.h"

#include <cstdint>
#include <vector>

namespace jet::test {

// A file with a valid header and pages of one repeated number each: enough for tests of whole pages.
Bytes TinyDatabase(const std::vector<std::uint32_t>& pages);

// The numbers of all pages but the header; 0xBAD00000 + page number for a page that is not one repeated number.
std::vector<std::uint32_t> PagesOf(PageSource& pages);

// Opens the file as another process would, with recovery, and returns the pages.
std::vector<std::uint32_t> PagesAfterReopening(FileSystem& files, const FileSystem::Path& path);

// Fills page `number` (a new one when past the end) with `value`.
void Fill(Storage& storage, std::uint32_t number, std::uint32_t value);

// A WaitRule without real sleeping.
WaitRule NoSleep();

StorageOptions TestOptions(bool readOnly = false);

// Factor for the length of random searches: SPOTROOSTER_LONG_TESTS, or 1 when it is not set.
int LongTests();

}  // namespace jet::test
