// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Codec.h"

#include <cstdint>
#include <set>

namespace jet::test {

// Changes the layout of the map of free pages (page 1, row 0) in the bytes of a sound file to those of other programs.
// Parses and writes page 1 without the code under test.
class FreeMapImage {
 public:
  // The bytes must outlive it.
  explicit FreeMapImage(Bytes& file);

  // The free pages of the file.
  const std::set<std::uint32_t>& Free() const { return free_; }
  std::uint32_t PageCount() const;

  // An inline bitmap that begins at page `first`, in the shortest possible row. Free pages below `first` are then in no
  // map.
  void PutWindow(std::uint32_t first);
  // Bitmap pages, appended to the file.
  void PutBitmapPages();
  // Makes the second row of page 1 so long that the first cannot grow.
  void LeaveNoRoom();

 private:
  void Put(const Bytes& first, const Bytes& second);

  Bytes& file_;
  std::set<std::uint32_t> free_;
  Bytes second_;  // row 1
};

}  // namespace jet::test
