// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <span>

namespace jet {

// Allocates and frees pages of a file within one Transaction, which must outlive it.
class PageSpace {
 public:
  explicit PageSpace(Transaction& pages) : pages_(pages) {}

  // Takes the lowest free page, or extends the file. The page is all zeros. Throws Error (Damaged) when the page is in
  // use although the file marks it as free.
  std::uint32_t Allocate();
  // Whether the file marks the page as free.
  bool IsFree(std::uint32_t page);
  // Frees a page. The caller removes it from the map that it was in.
  void Free(std::uint32_t page);
  // Frees many pages without writing to them, so that neither the file nor the journal gets their content.
  void Release(std::span<const std::uint32_t> pages);

 private:
  static void RequireNoSystemPage(std::uint32_t page);
  std::uint32_t TakeLowest();

  Transaction& pages_;
};

}  // namespace jet
