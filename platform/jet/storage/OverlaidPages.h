// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/storage/Journal.h"

#include <cstdint>
#include <map>
#include <memory>

namespace jet {

// A read-only file with the old pages of an unfinished change over it. `pages` must outlive it.
class OverlaidPages final : public PageSource {
 public:
  OverlaidPages(Pages& pages, std::unique_ptr<JournalImages> images) : pages_(pages), images_(std::move(images)) {}
  std::uint32_t PageCount() override;
  PageRef Read(std::uint32_t number) override;

 private:
  Pages& pages_;
  std::unique_ptr<JournalImages> images_;
  std::map<std::uint32_t, PageRef> kept_;  // some of the images, decoded
};

}  // namespace jet
