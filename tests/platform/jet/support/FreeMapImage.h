// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Codec.h"

#include <cstdint>
#include <set>

namespace jet::test {

// The map of free pages in the bytes of a sound file (page 1, row 0), to be laid out as other writers leave it. Page 1
// is taken apart and put together here, without the code under test.
class FreeMapImage {
 public:
  // The bytes must outlive it.
  explicit FreeMapImage(Bytes& file);

  // Pages of the file that are free.
  const std::set<std::uint32_t>& Free() const { return free_; }
  std::uint32_t PageCount() const;

  // A bitmap in the row that begins at page `first`, as short as such rows are made: free pages below `first` are in
  // no map from now on.
  void PutWindow(std::uint32_t first);
  // Bitmap pages at the end of the file.
  void PutBitmapPages();
  // Makes the second row of page 1 so long that the first cannot become longer.
  void LeaveNoRoom();

 private:
  void Put(const Bytes& first, const Bytes& second);

  Bytes& file_;
  std::set<std::uint32_t> free_;
  Bytes second_;  // row 1
};

}  // namespace jet::test
