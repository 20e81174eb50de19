// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

// One named property of a table or column, with its stored value.
struct Property {
  std::u16string name;
  std::uint8_t type = 0;  // a ColumnType
  bool ddl = false;
  Bytes data;

  bool operator==(const Property&) const = default;
};

// The properties of one column, or (empty name) of the table itself.
struct PropertySet {
  std::u16string column;
  std::vector<Property> properties;

  const Property* Find(std::u16string_view name) const;
  bool FlagOf(std::u16string_view name, bool whenMissing) const;
  std::u16string TextOf(std::u16string_view name) const;

  bool operator==(const PropertySet&) const = default;
};

// Parses the property block of a catalogue row.
std::vector<PropertySet> ParseProperties(ByteView block);
// The inverse of ParseProperties.
Bytes BuildProperties(const std::vector<PropertySet>& sets);

}  // namespace jet
