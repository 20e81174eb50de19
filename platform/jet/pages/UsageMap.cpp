// SPDX-License-Identifier: MIT
#include "platform/jet/pages/UsageMap.h"

namespace jet {

UsageMap UsageMap::Read(PageSource& pages, RowId where) {
  UsageMap map;
  if (where == 0) return map;
  const MapLayout layout(pages, where);
  map.bits_.resize(pages.PageCount());
  map.firstPage_ = layout.FirstPage();
  for (std::size_t i = 0; i < layout.RunCount(); ++i) {
    const auto run = layout.RunAt(pages, i);
    if (!run) continue;
    map.AddBits(pages, *run);
    map.end_ = run->End();
  }
  if (!layout.IsInline()) {
    map.end_ = static_cast<std::uint32_t>(layout.RunCount()) * MapLayout::kPagesPerBitmapPage;
    for (const MapLayout::Run& run : map.runs_)
      map.bitmapPages_.push_back(run.holder);
  }
  return map;
}

void UsageMap::AddBits(PageSource& pages, const MapLayout::Run& run) {
  runs_.push_back(run);
  const PageRef holder = pages.Read(run.holder);
  for (std::size_t i = 0; i < run.bytes; ++i) {
    const std::uint8_t byte = (*holder)[run.start + i];
    if (byte == 0) continue;
    for (unsigned bit = 0; bit < 8; ++bit) {
      const std::uint32_t page = run.first + static_cast<std::uint32_t>(8 * i) + bit;
      if ((byte >> bit & 1) == 0) continue;
      if (page < bits_.size()) {
        bits_[page] = true;
      } else {
        pastEnd_.push_back(page);
      }
    }
  }
}

std::vector<std::uint32_t> UsageMap::Members() const {
  std::vector<std::uint32_t> members;
  for (std::uint32_t page = 0; page < bits_.size(); ++page) {
    if (bits_[page]) members.push_back(page);
  }
  return members;
}

}  // namespace jet
