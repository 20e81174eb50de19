// SPDX-License-Identifier: MIT
#include "platform/jet/pages/PageSource.h"

#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <string>

namespace jet {

bool IsUnwritten(const PageBytes& page) {
  return std::all_of(page.begin(), page.end(), [](std::uint8_t byte) { return byte == 0; });
}

PageRef NoPages::Read(std::uint32_t number) {
  throw DamageAt(number, "ligt voorbij het einde van het bestand");
}

PageRef ReadTyped(PageSource& pages, std::uint32_t number, PageType type) {
  PageRef page = pages.Read(number);
  if ((*page)[0] != static_cast<std::uint8_t>(type) || (*page)[1] != 1) {
    throw DamageAt(number, "soort " + std::to_string((*page)[0]) + " in plaats van " +
                               std::to_string(static_cast<unsigned>(type)));
  }
  return page;
}

}  // namespace jet
