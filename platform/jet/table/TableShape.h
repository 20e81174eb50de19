// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Definition.h"

#include <memory>
#include <vector>

namespace jet {

struct CatalogEntry;
struct PropertySet;

// What a file says about a table apart from its rows. Shared by the tables and writers that are opened while it stays.
struct TableShape {
  StoredTable stored;
  TableDefinition definition;
  // What a higher layer derived from this shape, to be used again with it.
  mutable std::shared_ptr<const void> derived;
};

// The shape of one table, parsed again only when its definition changed: most statements change only its counters.
class CachedTableShape {
 public:
  using Properties = std::shared_ptr<const std::vector<PropertySet>>;

  // Throws Error when the definition is damaged.
  std::shared_ptr<const TableShape> Get(PageSource& pages, const CatalogEntry& entry, const Properties& properties);

 private:
  bool IsCurrent(DefinitionStream& read, const CatalogEntry& entry, const Properties& properties);

  std::shared_ptr<TableShape> shape_;
  Bytes stream_;  // what it was parsed from, without the counters
  Properties properties_;
};

}  // namespace jet
