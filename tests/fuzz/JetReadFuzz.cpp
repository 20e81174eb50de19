// SPDX-License-Identifier: MIT
// Opens any bytes as a database and reads everything: catalogue, definitions, rows, indexes, integrity check. Damage
// may only throw jet::Error, and memory stays under four times the file size plus 64 MB.
#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/values/Error.h"
#include "tests/fuzz/CpuLimit.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/fuzz/HeapLimit.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace {

// Reads a cursor to its end. Continues after damage, up to a limit, so that a repeated error ends the loop.
template <typename Cursor>
std::size_t WalkToEnd(Cursor cursor) {
  constexpr int kMaxErrors = 1000;
  std::size_t count = 0;
  for (int errors = 0; errors < kMaxErrors;) {
    try {
      if (!cursor.Next()) return count;
      ++count;
    } catch (const jet::Error&) {
      ++errors;
    }
  }
  return count;
}

void WalkTable(const jet::Table& table) {
  jet::ColumnSet all;
  for (std::size_t i = 0; i < table.Definition().columns.size(); ++i)
    all.push_back(i);
  WalkToEnd(table.Scan(all));
  for (std::size_t i = 0; i < table.Definition().indexes.size(); ++i) {
    const std::vector<jet::Value> null(1);
    try {
      if (table.CanLookup(i)) WalkToEnd(table.Lookup(i, null));
      jet::KeyCursor entries = table.ScanByIndex(i, true);
      for (int fetched = 0; fetched < 100 && entries.Next(); ++fetched)
        table.Fetch(entries.Id(), all);
      WalkToEnd(table.ScanByIndex(i, false));
    } catch (const jet::Error&) {
    }
  }
}

void WalkDatabase(jet::Database& database) {
  std::set<std::int32_t> seen;
  for (const jet::CatalogEntry& entry : database.Objects().Entries()) {
    if (!entry.IsTable() || !seen.insert(entry.id).second) continue;
    try {
      WalkTable(database.OpenTable(entry.name));
    } catch (const jet::Error&) {
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::CpuLimit cpu;
  const fuzz::HeapLimit heap(4 * size + (std::size_t{64} << 20));
  files::MemoryFileSystem files;
  files.Put("fuzz.mdb", jet::Bytes(data, data + size));
  try {
    const auto database = jet::Database::Open("fuzz.mdb", {}, files);
    jet::CheckDatabase(*database);
    WalkDatabase(*database);
  } catch (const jet::Error&) {
  }
  return 0;
}
