#include "platform/jet/StoredText.h"

#include <algorithm>
#include <cstring>

#include "platform/jet/Codec.h"
#include "platform/jet/Error.h"

namespace jet {

namespace {

constexpr std::uint8_t kCompressionMark[] = {0xFF, 0xFE};

void SetPlain(ByteView bytes, std::u16string& out) {
  out.resize(bytes.size() / 2);
  std::memcpy(out.data(), bytes.data(), out.size() * 2);
}

// Plain text that begins with this character would be taken for compressed.
constexpr char16_t kByteOrderMark = 0xFEFF;

// The compressed form, switched to two bytes a character at once.
Bytes EncodeSwitched(std::u16string_view text) {
  const auto startsWithZero = [](char16_t unit) { return (unit & 0xFF) == 0; };
  if (std::any_of(text.begin(), text.end(), startsWithZero)) {
    throw Error(ErrorCode::Unsupported, "Een tekst die met het teken U+FEFF begint, kan niet worden opgeslagen.");
  }
  Bytes out = {kCompressionMark[0], kCompressionMark[1], 0};
  const Bytes plain = EncodePlainText(text);
  out.insert(out.end(), plain.begin(), plain.end());
  return out;
}

// Begins with one byte a character; a zero byte switches to two bytes a character and back.
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
  Bytes out(text.size() * 2);
  for (std::size_t i = 0; i < text.size(); ++i)
    Store<std::uint16_t>(out.data() + 2 * i, text[i]);
  return out;
}

Bytes EncodeText(std::u16string_view text, bool mayCompress) {
  constexpr std::size_t kShortestCompressed = 3;
  const auto fitsOneByte = [](char16_t unit) { return unit >= 1 && unit <= 0xFF; };
  if (!text.empty() && text[0] == kByteOrderMark) return EncodeSwitched(text);
  if (!mayCompress || text.size() < kShortestCompressed || !std::all_of(text.begin(), text.end(), fitsOneByte)) {
    return EncodePlainText(text);
  }
  Bytes out(kCompressionMark, kCompressionMark + 2);
  out.insert(out.end(), text.begin(), text.end());
  return out;
}

}  // namespace jet
