// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace jet {

class Transaction;

// The pages, ascending, that are free in the file and that this change fills with something else. A change that is
// undone makes them free again with any content, so the journal need not have them: for an emptied table that is filled
// again, it would be as large as the table.
std::vector<std::uint32_t> ReusedPages(Transaction& change);

}  // namespace jet
