// SPDX-License-Identifier: MIT
#include "platform/jet/table/TableShape.h"

#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/Properties.h"

#include <utility>

namespace jet {

std::shared_ptr<const TableShape> CachedTableShape::Get(PageSource& pages, const CatalogEntry& entry,
                                                        const Properties& properties) {
  DefinitionStream read = ReadDefinition(pages, static_cast<std::uint32_t>(entry.id));
  if (IsCurrent(read, entry, properties)) return shape_;
  shape_.reset();
  read = ReadDefinition(pages, static_cast<std::uint32_t>(entry.id));
  StoredTable stored = ParseDefinition(read);
  TableDefinition definition = Describe(entry.name, stored, *properties);
  TakeCounters(read.bytes, stored);
  shape_ = std::make_shared<TableShape>(TableShape{std::move(stored), std::move(definition), nullptr});
  stream_ = std::move(read.bytes);
  properties_ = properties;
  return shape_;
}

// Moves the counters of `read` to the shape: when the definition is another one, the shape is not used any more.
bool CachedTableShape::IsCurrent(DefinitionStream& read, const CatalogEntry& entry, const Properties& properties) {
  if (shape_ == nullptr || (properties != properties_ && *properties != *properties_) ||
      entry.name != shape_->definition.name)
    return false;
  if (read.bytes.size() != stream_.size() || read.pages != shape_->stored.pages) return false;
  if (shape_.use_count() > 1) shape_ = std::make_shared<TableShape>(*shape_);  // open tables keep their counters
  TakeCounters(read.bytes, shape_->stored);
  return read.bytes == stream_;
}

}  // namespace jet
