// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/values/Bytes.h"

namespace jet {

// The content of a new database: header, maps, the four engine tables and their rows, in sixteen pages, each as the
// original engine writes it. Dates are `now`, in days since 1899-12-30.
Bytes NewDatabase(double now);

// Writes page 1 of a new file: the map of free pages, with the first `taken` pages in use, and the empty second map.
void FormatFreePagesMap(Transaction& pages, std::uint32_t taken);

}  // namespace jet
