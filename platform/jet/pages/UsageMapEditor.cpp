// SPDX-License-Identifier: MIT
#include "platform/jet/pages/UsageMapEditor.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <bit>
#include <string>

namespace jet {

void UsageMapEditor::Set(const MapLayout::Run& run, std::uint32_t page, bool on) {
  const std::uint32_t bit = page - run.first;
  const std::size_t at = run.start + bit / 8;
  const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
  if ((((*pages_.Read(run.holder))[at] & mask) != 0) == on) return;  // no page to journal and write
  std::uint8_t& byte = pages_.Change(run.holder)[at];
  byte = static_cast<std::uint8_t>(on ? byte | mask : byte & ~mask);
}

void UsageMapEditor::Remove(std::uint32_t page) {
  if (const auto run = Layout().RunOf(pages_, page)) Set(*run, page, false);
}

bool UsageMapEditor::AddCovered(std::uint32_t page) {
  const auto run = Layout().RunOf(pages_, page);
  if (run) Set(*run, page, true);
  return run.has_value();
}

void UsageMapEditor::Add(PageSpace& space, std::uint32_t page) {
  if (AddCovered(page)) return;
  if (Layout().IsInline() && !MoveWindow(page)) UseBitmapPages(space);
  if (!Layout().RunOf(pages_, page)) AddBitmapPage(space, page / MapLayout::kPagesPerBitmapPage);
  if (AddCovered(page)) return;
  throw DamageAt(PageOf(where_), "een gebruikskaart reikt niet tot pagina " + std::to_string(page));
}

void UsageMapEditor::AddBitmapPage(PageSpace& space, std::size_t entry) {
  const auto place = Layout().OffsetOfEntry(entry);
  if (!place) throw DamageAt(PageOf(where_), "een gebruikskaart heeft geen plaats meer");
  const std::uint32_t bitmap = space.Allocate();
  PageBytes& content = pages_.Change(bitmap);
  content[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
  content[1] = 1;
  Store(pages_.Change(PageOf(where_)).data() + *place, bitmap);
}

// Moves the first page of an inline bitmap so that it covers `page` and all members. False when that is impossible.
bool UsageMapEditor::MoveWindow(std::uint32_t page) {
  const MapLayout::Run run = Layout().RunAt(pages_, 0).value();
  std::vector<std::uint32_t> members = Members();
  members.push_back(page);
  const auto [low, high] = std::minmax_element(members.begin(), members.end());
  const MapLayout::Run moved = {run.holder, run.start, run.bytes, *low / 8 * 8};
  if (!moved.Covers(*high)) return false;
  PageBytes& content = pages_.Change(run.holder);
  std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(run.start), run.bytes, std::uint8_t{0});
  Store(content.data() + run.start - MapLayout::kInlineHead + 1, moved.first);
  for (const std::uint32_t member : members)
    Set(moved, member, true);
  return true;
}

void UsageMapEditor::UseBitmapPages(PageSpace& space) {
  const std::vector<std::uint32_t> members = Members();
  Reset(MapLayout::kReference);
  for (const std::uint32_t member : members)
    Add(space, member);
}

// Makes the map empty, inline or by reference.
void UsageMapEditor::Reset(std::uint8_t kind) {
  const MapLayout layout = Layout();
  PageBytes& content = pages_.Change(layout.Page());
  std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(layout.Start()), layout.Length(), std::uint8_t{0});
  content[layout.Start()] = kind;
}

void UsageMapEditor::Clear(PageSpace& space) {
  const MapLayout layout = Layout();
  std::vector<std::uint32_t> bitmaps;
  for (std::size_t i = 0; !layout.IsInline() && i < layout.RunCount(); ++i) {
    if (const auto run = layout.RunAt(pages_, i)) bitmaps.push_back(run->holder);
  }
  Reset(MapLayout::kInline);
  space.Release(bitmaps);
}

std::vector<std::uint32_t> UsageMapEditor::Members() {
  std::vector<std::uint32_t> members;
  for (std::optional<std::uint32_t> member = HighestBelow(~0U); member; member = HighestBelow(*member))
    members.push_back(*member);
  return members;
}

std::optional<std::uint32_t> UsageMapEditor::HighestBelow(std::uint32_t below) {
  const MapLayout layout = Layout();
  for (std::size_t i = layout.RunCount(); i-- > 0;) {
    const auto run = layout.RunAt(pages_, i);
    if (!run || run->first >= below) continue;
    const PageRef page = pages_.Read(run->holder);
    std::uint32_t bit = std::min(run->End(), below) - run->first;
    while (bit-- > 0) {
      const std::uint8_t byte = (*page)[run->start + bit / 8];
      if (byte == 0) {
        bit &= ~7U;
      } else if ((byte >> (bit % 8) & 1) != 0) {
        return run->first + bit;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::uint32_t> UsageMapEditor::Lowest() {
  const MapLayout layout = Layout();
  for (std::size_t i = 0; i < layout.RunCount(); ++i) {
    const auto run = layout.RunAt(pages_, i);
    if (!run) continue;
    const PageRef page = pages_.Read(run->holder);
    for (std::size_t byte = 0; byte < run->bytes; ++byte) {
      const unsigned value = (*page)[run->start + byte];
      if (value != 0)
        return run->first + static_cast<std::uint32_t>(8 * byte) + static_cast<unsigned>(std::countr_zero(value));
    }
  }
  return std::nullopt;
}

}  // namespace jet
