#include "platform/jet/Utf8.h"

#include <cstddef>

namespace jet {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

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

void AppendUtf16(std::u16string& out, char32_t code) {
  if (code < 0x10000) {
    out += static_cast<char16_t>(code);
    return;
  }
  out += static_cast<char16_t>(0xD7C0 + (code >> 10));
  out += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
}

struct Decoded {
  char32_t code;
  std::size_t length;
};

// Reads one code point; overlong forms, surrogates and cut sequences give U+FFFD for one byte.
Decoded DecodeOne(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < length) return {kReplacement, 1};
  char32_t code = first & (0xFF >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {kReplacement, 1};
    code = code << 6 | (byte(i) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return {kReplacement, 1};
  return {code, length};
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

std::u16string FromUtf8(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const Decoded next = DecodeOne(text);
    AppendUtf16(out, next.code);
    text.remove_prefix(next.length);
  }
  return out;
}

}  // namespace jet
