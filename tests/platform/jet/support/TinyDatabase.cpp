// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/TinyDatabase.h"

#include "platform/jet/pages/Header.h"
#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace jet::test {

Bytes TinyDatabase(const std::vector<std::uint32_t>& pages) {
  PageBytes header{};
  header[1] = 1;
  std::memcpy(&header[4], "Standard Jet DB", 15);
  header[0x14] = 1;
  ApplyHeaderMask(header);
  for (std::size_t at = kCommitCounters; at < kPageSize; at += 2)
    Store<std::uint16_t>(&header[at], 0x0100);
  Bytes file(header.begin(), header.end());
  for (const std::uint32_t value : pages) {
    for (std::size_t i = 0; i < kPageSize; i += 4) {
      file.resize(file.size() + 4);
      Store(&file[file.size() - 4], value);
    }
  }
  return file;
}

std::vector<std::uint32_t> PagesOf(PageSource& pages) {
  std::vector<std::uint32_t> values;
  for (std::uint32_t number = 1; number < pages.PageCount(); ++number) {
    const PageRef page = pages.Read(number);
    std::uint32_t value = LoadU32(page->data());
    for (std::size_t i = 0; i < kPageSize; i += 4) {
      if (LoadU32(page->data() + i) != value) value = 0xBAD00000 + number;
    }
    values.push_back(value);
  }
  return values;
}

std::vector<std::uint32_t> PagesAfterReopening(FileSystem& files, const FileSystem::Path& path) {
  Storage storage(path, TestOptions(), files);
  const ReadTurn reading(storage);
  return PagesOf(storage.Source());
}

void Fill(Storage& storage, std::uint32_t number, std::uint32_t value) {
  Transaction& changes = storage.Changes();
  if (number >= changes.PageCount()) number = changes.Append();
  PageBytes& page = changes.Change(number);
  for (std::size_t i = 0; i < kPageSize; i += 4)
    Store(&page[i], value);
}

WaitRule NoSleep() {
  return {std::chrono::milliseconds{20}, [](std::chrono::milliseconds) {}};
}

StorageOptions TestOptions(bool readOnly) {
  StorageOptions options;
  options.readOnly = readOnly;
  options.wait = NoSleep();
  return options;
}

int LongTests() {
  const char* factor = std::getenv("SPOTROOSTER_LONG_TESTS");
  return factor != nullptr ? std::max(1, std::atoi(factor)) : 1;
}

}  // namespace jet::test
