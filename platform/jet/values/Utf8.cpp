// SPDX-License-Identifier: MIT
#include "platform/jet/values/Utf8.h"

#include <cstddef>

namespace jet {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendCode(std::string& out, char32_t code) {
  if (code < 0x80) {
    out += static_cast<char>(code);
    return;
  }
  if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
  } else {
    if (code < 0x10000) {
      out += static_cast<char>(0xE0 | (code >> 12));
    } else {
      out += static_cast<char>(0xF0 | (code >> 18));
      out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    }
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
  }
  out += static_cast<char>(0x80 | (code & 0x3F));
}

}  // namespace

void AppendUtf8(std::string& out, std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = text[i];
    if (IsHighSurrogate(code) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
      code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00);
    } else if (IsHighSurrogate(code) || IsLowSurrogate(code)) {
      code = kReplacement;
    }
    AppendCode(out, code);
  }
}

std::string ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  AppendUtf8(out, text);
  return out;
}

}  // namespace jet
