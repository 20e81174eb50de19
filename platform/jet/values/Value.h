// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>
#include <string>
#include <variant>

namespace jet {

// The type byte of a column block in a table definition.
enum class ColumnType : std::uint8_t {
  Boolean = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Currency = 5,
  Single = 6,
  Double = 7,
  Date = 8,
  Binary = 9,
  Text = 10,
  Ole = 11,
  Memo = 12,
  Guid = 15,
  Decimal = 16,
  SystemBinary = 17,  // 3992 bytes in one helper table of Access
};

// An amount in ten-thousandths.
struct Currency {
  std::int64_t scaled = 0;
  bool operator==(const Currency&) const = default;
};

// A number of up to 28 digits: magnitude = high * 2^64 + low, to be divided by 10^scale.
struct Decimal {
  bool negative = false;
  std::uint8_t scale = 0;
  std::uint64_t high = 0;
  std::uint64_t low = 0;
  bool operator==(const Decimal&) const = default;
};

// The sixteen bytes as stored: three little-endian numbers (4, 2, 2 bytes), then eight bytes in printed order.
struct Guid {
  std::array<std::uint8_t, 16> bytes{};
  bool operator==(const Guid&) const = default;
};

// Null, Boolean, whole number (Byte, Integer, Long), floating number (Single, Double, and Date as days since
// 1899-12-30), Currency, Decimal, text (Text, Memo), bytes (Binary, Ole), GUID.
using Value = std::variant<std::monostate, bool, std::int64_t, double, Currency, Decimal, std::u16string, Bytes, Guid>;

inline bool IsNull(const Value& value) {
  return std::holds_alternative<std::monostate>(value);
}

}  // namespace jet
