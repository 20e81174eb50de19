// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/values/Bytes.h"

namespace jet {

// The file that this library makes when it makes a new database: header, maps, the four engine tables and their rows,
// sixteen pages, each as the original engine makes it. Dates are `now`, in days since 1899-12-30.
Bytes NewDatabase(double now);

// Makes page 1 of a new file: the map of free pages, in which the first `taken` pages are in use, and the second map,
// which is empty.
void FormatGlobalMap(Transaction& pages, std::uint32_t taken);

}  // namespace jet
