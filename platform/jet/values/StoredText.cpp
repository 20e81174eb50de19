// SPDX-License-Identifier: MIT
#include "platform/jet/values/StoredText.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

constexpr std::uint8_t kCompressionMark[] = {0xFF, 0xFE};

void SetPlain(ByteView bytes, std::u16string& out) {
  out.resize(bytes.size() / 2);
  std::memcpy(out.data(), bytes.data(), out.size() * 2);
}

// Plain text that begins with this character would be read as compressed.
constexpr char16_t kByteOrderMark = 0xFEFF;

void AppendPlain(std::u16string_view text, Bytes& out) {
  const std::size_t start = out.size();
  out.resize(start + 2 * text.size());
  if (!text.empty()) std::memcpy(out.data() + start, text.data(), 2 * text.size());
}

// The compressed form, switched to two bytes per character from the start.
void AppendSwitched(std::u16string_view text, Bytes& out) {
  const auto startsWithZero = [](char16_t unit) { return (unit & 0xFF) == 0; };
  if (std::any_of(text.begin(), text.end(), startsWithZero)) {
    throw Error(ErrorCode::Unsupported, "Een tekst die met het teken U+FEFF begint, kan niet worden opgeslagen.");
  }
  out.insert(out.end(), {kCompressionMark[0], kCompressionMark[1], 0});
  AppendPlain(text, out);
}

// Starts with one byte per character; a zero byte switches to two bytes per character and back.
void DecodeSwitching(ByteView bytes, std::u16string& out) {
  out.clear();
  bool compressed = true;
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (bytes[at] == 0) {
      compressed = !compressed;
      ++at;
    } else if (compressed) {
      out += static_cast<char16_t>(bytes[at++]);
    } else if (at + 1 < bytes.size()) {
      out += static_cast<char16_t>(LoadU16(bytes.data() + at));
      at += 2;
    } else {
      return;
    }
  }
}

}  // namespace

void DecodeText(ByteView bytes, std::u16string& out) {
  if (bytes.size() < 2 || bytes[0] != kCompressionMark[0] || bytes[1] != kCompressionMark[1]) {
    if (bytes.empty()) return out.clear();
    return SetPlain(bytes, out);
  }
  const ByteView body = bytes.subspan(2);
  if (body.empty()) return out.clear();
  if (std::memchr(body.data(), 0, body.size()) != nullptr) return DecodeSwitching(body, out);
  out.resize(body.size());
  for (std::size_t i = 0; i < body.size(); ++i)
    out[i] = static_cast<char16_t>(body[i]);
}

std::u16string DecodeText(ByteView bytes) {
  std::u16string text;
  DecodeText(bytes, text);
  return text;
}

std::u16string DecodePlainText(ByteView bytes) {
  std::u16string text;
  if (bytes.size() >= 2) SetPlain(bytes, text);
  return text;
}

Bytes EncodePlainText(std::u16string_view text) {
  Bytes out;
  AppendPlain(text, out);
  return out;
}

void AppendText(std::u16string_view text, bool mayCompress, Bytes& out) {
  constexpr std::size_t kShortestCompressed = 3;
  const auto fitsOneByte = [](char16_t unit) { return unit >= 1 && unit <= 0xFF; };
  if (!text.empty() && text[0] == kByteOrderMark) return AppendSwitched(text, out);
  if (!mayCompress || text.size() < kShortestCompressed || !std::all_of(text.begin(), text.end(), fitsOneByte)) {
    return AppendPlain(text, out);
  }
  out.insert(out.end(), kCompressionMark, kCompressionMark + 2);
  out.insert(out.end(), text.begin(), text.end());
}

Bytes EncodeText(std::u16string_view text, bool mayCompress) {
  Bytes out;
  AppendText(text, mayCompress, out);
  return out;
}

}  // namespace jet
