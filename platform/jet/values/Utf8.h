// SPDX-License-Identifier: MIT
// Converts the file's UTF-16 to UTF-8, for messages and output.
#pragma once

#include <string>
#include <string_view>

namespace jet {

constexpr bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// A lone surrogate becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
// The same, appended to `out`.
void AppendUtf8(std::string& out, std::u16string_view text);

}  // namespace jet
