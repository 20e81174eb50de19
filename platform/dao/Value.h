// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace dao {

using Bytes = std::vector<std::uint8_t>;

// The value of a field in a storage, by the field's type: NULL; a whole number (Boolean as -1 or 0, Byte, Integer,
// Long); a floating-point number (Single, Double, Currency, Numeric, and Date as days since 30-12-1899); text (Text,
// Memo, Guid in braces, and a Currency or Numeric of more than 15 digits: see ExactNumber.h); bytes (Binary).
using Value = std::variant<std::monostate, std::int64_t, double, std::u16string, Bytes>;

// As Value, without owning text and bytes.
using ValueView =
    std::variant<std::monostate, std::int64_t, double, std::u16string_view, std::span<const std::uint8_t>>;

inline bool IsNull(const Value& value) {
  return std::holds_alternative<std::monostate>(value);
}

inline ValueView View(const Value& value) {
  return std::visit([](const auto& held) -> ValueView { return held; }, value);
}

inline Value Owned(const ValueView& view) {
  if (const auto* text = std::get_if<std::u16string_view>(&view)) return std::u16string(*text);
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&view)) return Bytes(bytes->begin(), bytes->end());
  if (const auto* whole = std::get_if<std::int64_t>(&view)) return *whole;
  if (const auto* number = std::get_if<double>(&view)) return *number;
  return {};
}

}  // namespace dao
