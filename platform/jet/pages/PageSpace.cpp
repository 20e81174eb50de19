// SPDX-License-Identifier: MIT
#include "platform/jet/pages/PageSpace.h"

#include "platform/jet/pages/FreePages.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/values/Damage.h"

namespace jet {

std::uint32_t PageSpace::Allocate() {
  const std::uint32_t page = TakeLowest();
  while (page >= pages_.PageCount())
    pages_.Append();
  pages_.Renew(page);
  return page;
}

std::uint32_t PageSpace::TakeLowest() {
  FreePages free(pages_);
  const std::uint32_t page = free.Next();
  if (pages_.IsWronglyFree(page)) throw DamageAt(page, "is in gebruik, maar is als vrij gemarkeerd");
  // Another program may have freed this index page but left it in the index's map; it gets a new owner now.
  for (const RowId map : pages_.IndexMapsWith(page))
    UsageMapEditor(pages_, map).Remove(page);
  free.Remove(page);
  return page;
}

bool PageSpace::IsFree(std::uint32_t page) {
  return FreePages(pages_).Contains(page);
}

void PageSpace::RequireNoSystemPage(std::uint32_t page) {
  if (page < kSystemPages) throw DamageAt(page, "een pagina van het systeem kan niet worden vrijgegeven");
}

void PageSpace::Free(std::uint32_t page) {
  RequireNoSystemPage(page);
  std::uint8_t& type = pages_.Change(page)[0];
  if (type == static_cast<std::uint8_t>(PageType::Definition)) {
    type = static_cast<std::uint8_t>(PageType::FreedDefinition);
  } else if (type == static_cast<std::uint8_t>(PageType::Data)) {
    type = static_cast<std::uint8_t>(PageType::FreedData);
  }
  FreePages(pages_).Add(page);
}

void PageSpace::Release(std::span<const std::uint32_t> pages) {
  FreePages free(pages_);
  for (const std::uint32_t page : pages) {
    RequireNoSystemPage(page);
    free.Add(page);
  }
}

}  // namespace jet
