#pragma once

#include "platform/jet/Journal.h"
#include "platform/jet/Pages.h"

#include <cstdint>

namespace jet {

/// The pages before a change that was not finished, laid over a file that cannot be written. `pages` must outlive it.
class OverlaidPages final : public PageSource {
 public:
  OverlaidPages(Pages& pages, Journal::Overlay overlay);
  std::uint32_t PageCount() override;
  PageRef Read(std::uint32_t number) override;

 private:
  Pages& pages_;
  Journal::Overlay overlay_;
};

}  // namespace jet
