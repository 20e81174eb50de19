#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "platform/jet/Properties.h"
#include "platform/jet/Transaction.h"

namespace jet {

/// Owners and users in the catalogue, as the bytes that stand for them there. They belong to the creation date in the
/// header; how they come from it is not known, so that both are taken from one real file.
struct Sids {
  Bytes engine;
  Bytes admin;
  Bytes creator;
  Bytes users;
};
const Sids& NewDatabaseSids();

/// The file that this library makes when it makes a new database: header, maps, the four engine tables and their rows,
/// page by page as the original engine makes them. Dates are `now`, in days since 1899-12-30.
Bytes NewDatabase(double now);

/// The rows that a new table needs in MSysObjects and MSysACEs.
void AddTableToCatalogue(Transaction& pages, std::u16string_view name, std::uint32_t page,
                         const std::vector<PropertySet>& properties);

/// The local time now, in days since 1899-12-30.
double Now();

}  // namespace jet
