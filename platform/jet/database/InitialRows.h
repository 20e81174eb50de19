// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/values/Bytes.h"

namespace jet {

// Owners and users in the catalogue, as the bytes that stand for them there. They belong to the creation date in the
// header; how they come from it is not known, so that both are taken from one real file.
struct Sids {
  Bytes engine;
  Bytes admin;
  Bytes creator;
  Bytes users;
};
const Sids& NewDatabaseSids();

// What MSysObjects and MSysACEs hold in a new database, in its order. Dates are `now`, in days since 1899-12-30.
void AddEngineRows(Transaction& pages, double now);

}  // namespace jet
