// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Storage.h"

#include <cstdint>
#include <vector>

namespace jet::test {

// A file with a valid header and pages that each hold one repeated number: enough for what knows pages only.
Bytes TinyDatabase(const std::vector<std::uint32_t>& pages);

// The numbers of all pages but the header; a page that is not all one number is told as 0xBAD00000 + its number.
std::vector<std::uint32_t> PagesOf(PageSource& pages);

// Opens as another process would, recovers what must be, and tells the pages.
std::vector<std::uint32_t> PagesAfterReopening(FileSystem& files, const FileSystem::Path& path);

// Makes page `number` (past the end: a new one) hold `value`.
void Fill(Storage& storage, std::uint32_t number, std::uint32_t value);

// Waits without sleeping, for as many attempts as the limit allows.
WaitRule NoSleep();

StorageOptions TestOptions(bool readOnly = false);

// How much longer than in the suite a search shall run: SPOTROOSTER_LONG_TESTS, 1 when it is not set.
int LongTests();

}  // namespace jet::test
