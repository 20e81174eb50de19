#include "platform/jet/Names.h"

#include <algorithm>

namespace jet {

namespace {

char16_t Folded(char16_t unit) {
  const bool ascii = unit >= u'A' && unit <= u'Z';
  const bool latin1 = unit >= 0xC0 && unit <= 0xDE && unit != 0xD7;
  return ascii || latin1 ? static_cast<char16_t>(unit + 0x20) : unit;
}

}  // namespace

bool SameName(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return Folded(x) == Folded(y); });
}

bool NameLess(std::u16string_view a, std::u16string_view b) {
  return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char16_t x, char16_t y) { return Folded(x) < Folded(y); });
}

}  // namespace jet
