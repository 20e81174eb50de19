#include "platform/jet/OverlaidPages.h"

#include <memory>
#include <utility>

namespace jet {

// The journal keeps pages as they stand in the file, encoded ones too; a reader wants them as Pages gives them.
OverlaidPages::OverlaidPages(Pages& pages, Journal::Overlay overlay) : pages_(pages), overlay_(std::move(overlay)) {
  for (auto& [number, page] : overlay_.pages) {
    auto decoded = std::make_shared<PageBytes>(*page);
    pages_.ApplyEncoding(number, *decoded);
    page = std::move(decoded);
  }
}

std::uint32_t OverlaidPages::PageCount() {
  return static_cast<std::uint32_t>(overlay_.length / kPageSize);
}

PageRef OverlaidPages::Read(std::uint32_t number) {
  const auto found = overlay_.pages.find(number);
  return found != overlay_.pages.end() ? found->second : pages_.Read(number);
}

}  // namespace jet
