// SPDX-License-Identifier: MIT
#pragma once

namespace desktop {

// Shows the hourglass for as long as it lives. Nests; user-interface thread only.
class WaitPointer {
 public:
  WaitPointer();
  ~WaitPointer();
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
};

// Shows the ordinary pointer for as long as it lives, also under a WaitPointer: for a box that asks something
// meanwhile.
class ArrowPointer {
 public:
  ArrowPointer();
  ~ArrowPointer();
  ArrowPointer(const ArrowPointer&) = delete;
  ArrowPointer& operator=(const ArrowPointer&) = delete;

 private:
  bool overridden_;
};

}  // namespace desktop
