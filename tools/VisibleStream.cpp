// SPDX-License-Identifier: MIT
#include "tools/VisibleStream.h"

#include <unistd.h>

namespace {

constexpr unsigned char kCarriageReturn = '\r';

// Length in bytes of the UTF-8 character that begins with this byte; 0 when none does.
std::size_t LengthOf(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first < 0xE0) return 2;
  if (first >= 0xE0 && first < 0xF0) return 3;
  return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

bool IsContinuation(unsigned char byte) {
  return (byte & 0xC0) == 0x80;
}

bool Commands(unsigned char byte) {
  return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

}  // namespace

VisibleBuffer::int_type VisibleBuffer::overflow(int_type byte) {
  if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
  return Take(static_cast<unsigned char>(byte)) ? byte : traits_type::eof();
}

int VisibleBuffer::sync() {
  if (length_ > 0 && !ShowBytes()) return -1;
  return target_.pubsync();
}

bool VisibleBuffer::Take(unsigned char byte) {
  if (length_ > 0) {
    // A carriage return is harmless only before a line break: alone it would overwrite the line.
    const bool isExpected = character_[0] == kCarriageReturn ? byte == '\n' : IsContinuation(byte);
    if (!isExpected && !ShowBytes()) return false;
  }
  if (length_ == 0) wanted_ = byte == kCarriageReturn ? 2 : LengthOf(byte);
  character_.at(length_++) = byte;
  if (wanted_ == 0) return ShowBytes();
  return length_ < wanted_ || PassCharacter();
}

bool VisibleBuffer::PassCharacter() {
  // U+0080 to U+009F are control characters too.
  const bool isSecondSet = length_ == 2 && character_[0] == 0xC2 && character_[1] < 0xA0;
  if (isSecondSet || (length_ == 1 && Commands(character_[0]))) return ShowBytes();
  const auto count = static_cast<std::streamsize>(length_);
  length_ = 0;
  return target_.sputn(reinterpret_cast<const char*>(character_.data()), count) == count;
}

bool VisibleBuffer::ShowBytes() {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  bool good = true;
  for (std::size_t i = 0; i < length_; ++i) {
    const char shown[] = {'\\', 'x', kDigits[character_.at(i) >> 4], kDigits[character_.at(i) & 0xF]};
    good = good && target_.sputn(shown, sizeof shown) == sizeof shown;
  }
  length_ = 0;
  return good;
}

VisibleOnTerminal::VisibleOnTerminal(std::ostream& stream, int descriptor)
    : stream_(stream), real_(stream.rdbuf()), visible_(*stream.rdbuf()) {
  if (::isatty(descriptor) == 1) stream_.rdbuf(&visible_);
}

VisibleOnTerminal::~VisibleOnTerminal() {
  stream_.flush();
  stream_.rdbuf(real_);
}
