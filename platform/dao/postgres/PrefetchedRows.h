// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/postgres/KeyBatches.h"
#include "platform/dao/postgres/ServerAddress.h"

#include <cstdint>
#include <memory>

namespace dao {

// The prefetched row or rows of a key (Prefetch); null when this thread has none with all wanted fields.
std::unique_ptr<Cursor> FindPrefetched(const ServerAddress& address, const TableDef& table, std::size_t field,
                                       std::int64_t key, const FieldMask& wanted);

}  // namespace dao
