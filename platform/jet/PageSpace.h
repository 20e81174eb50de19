#pragma once

#include "platform/jet/Transaction.h"

#include <cstdint>
#include <span>

namespace jet {

/// Which pages of a file are free, as the global map tells, and the file's growth. Lives as long as a Transaction.
class PageSpace {
 public:
  explicit PageSpace(Transaction& pages) : pages_(pages) {}

  /// Takes the lowest free page, or makes the file longer. The page is all zeros.
  std::uint32_t Allocate();
  /// Gives a page back. The caller takes it out of the map that it was in.
  void Free(std::uint32_t page);
  /// Gives many pages back without marking them as freed: of them nothing is written, neither to the file nor to its
  /// journal.
  void Release(std::span<const std::uint32_t> pages);

 private:
  static void RequireNoSystemPage(std::uint32_t page);
  std::uint32_t TakeLowest();
  void Extend(std::uint32_t page);
  void GrowRow(std::size_t bytes);
  void UseBitmapPages();
  void AddBitmapPage(std::size_t entry);

  Transaction& pages_;
};

}  // namespace jet
