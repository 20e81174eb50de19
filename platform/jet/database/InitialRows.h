// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/values/Bytes.h"

namespace jet {

// Security identifiers of owners and users in the catalogue. They depend on the creation date in the header in an
// unknown way, so both are fixed values from one real file.
struct Sids {
  Bytes engine;
  Bytes admin;
  Bytes creator;
  Bytes users;
};
const Sids& NewDatabaseSids();

// Adds the rows that MSysObjects and MSysACEs have in a new database. Dates are `now`, in days since 1899-12-30.
void AddEngineRows(Transaction& pages, double now);

}  // namespace jet
