// SPDX-License-Identifier: MIT
#include "platform/jet/values/ValueText.h"

namespace jet {

std::u16string TextOf(const Guid& guid) {
  constexpr char16_t kDigits[] = u"0123456789ABCDEF";
  constexpr int kHyphen = -1;
  constexpr int kPrinted[] = {3, 2, 1, 0, kHyphen, 5, 4, kHyphen, 7, 6, kHyphen, 8, 9, kHyphen, 10, 11, 12, 13, 14, 15};
  std::u16string text = u"{";
  for (const int place : kPrinted) {
    if (place == kHyphen) {
      text += u'-';
      continue;
    }
    const std::uint8_t byte = guid.bytes[static_cast<std::size_t>(place)];
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text + u'}';
}

}  // namespace jet
