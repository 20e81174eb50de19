// SPDX-License-Identifier: MIT
#include "platform/jet/values/Names.h"

#include "platform/jet/values/TextOrder.h"

namespace jet {

bool SameName(std::u16string_view a, std::u16string_view b) {
  return TextOrder::Legacy().Compare(a, b) == 0;
}

bool NameLess(std::u16string_view a, std::u16string_view b) {
  return TextOrder::Legacy().Compare(a, b) < 0;
}

}  // namespace jet
