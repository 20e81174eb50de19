// SPDX-License-Identifier: MIT
#include "platform/jet/index/Counters.h"

#include "platform/jet/rows/StoredTableFormat.h"
#include "platform/jet/values/Codec.h"

#include <algorithm>

namespace jet {

void Counters::CountRows(std::int64_t change) {
  std::uint8_t* count = pages_.Change(definition_).data() + kRowCountAt;
  const std::int64_t rows = LoadU32(count);
  Store(count, static_cast<std::uint32_t>(std::max<std::int64_t>(rows + change, 0)));
}

void Counters::CountNoRows() {
  Store(pages_.Change(definition_).data() + kRowCountAt, std::uint32_t{0});
}

void Counters::CountNewKeys(const StoredIndex& index, std::size_t keys) {
  using table_definition::kContinuationHead;
  constexpr std::size_t kPerContinuation = kPageSize - kContinuationHead;
  std::size_t page = 0;
  std::size_t at = index.distinctKeysAt;
  if (at + 4 > kPageSize) {
    page = 1 + (at - kPageSize) / kPerContinuation;
    at = kContinuationHead + (at - kPageSize) % kPerContinuation;
  }
  if (page >= definitionPages_.size() || at + 4 > kPageSize) return;
  std::uint8_t* count = pages_.Change(definitionPages_[page]).data() + at;
  Store(count, static_cast<std::uint32_t>(LoadU32(count) + keys));
}

std::int32_t Counters::LastAutonumber() {
  return Load<std::int32_t>(pages_.Read(definition_)->data() + kAutonumberAt);
}

void Counters::RaiseAutonumber(std::int64_t number) {
  if (number <= LastAutonumber()) return;
  Store(pages_.Change(definition_).data() + kAutonumberAt, static_cast<std::int32_t>(number));
}

}  // namespace jet
