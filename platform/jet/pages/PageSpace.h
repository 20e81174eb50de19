// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <span>

namespace jet {

// Gives out the free pages of a file and takes pages back. Lives as long as a Transaction.
class PageSpace {
 public:
  explicit PageSpace(Transaction& pages) : pages_(pages) {}

  // Takes the lowest free page, or makes the file longer. The page is all zeros. An Error (Damaged) when the page is
  // in use although the file calls it free.
  std::uint32_t Allocate();
  // Whether the file calls the page free.
  bool IsFree(std::uint32_t page);
  // Gives a page back. The caller takes it out of the map that it was in.
  void Free(std::uint32_t page);
  // Gives many pages back without marking them as freed: of them nothing is written, neither to the file nor to its
  // journal.
  void Release(std::span<const std::uint32_t> pages);

 private:
  static void RequireNoSystemPage(std::uint32_t page);
  std::uint32_t TakeLowest();

  Transaction& pages_;
};

}  // namespace jet
