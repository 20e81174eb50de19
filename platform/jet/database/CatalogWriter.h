// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/table/Properties.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace jet {

// Adds the rows of a new table to MSysObjects and MSysACEs.
void AddTableToCatalogue(Transaction& pages, std::u16string_view name, std::uint32_t page,
                         const std::vector<PropertySet>& properties);

// The current local time in days since 1899-12-30.
double Now();

}  // namespace jet
