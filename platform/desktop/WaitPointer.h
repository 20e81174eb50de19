// SPDX-License-Identifier: MIT
#pragma once

namespace desktop {

// Shows the wait pointer while it exists. Nests; user-interface thread only.
class WaitPointer {
 public:
  WaitPointer();
  ~WaitPointer();
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
};

// Shows the arrow pointer while it exists, also within the scope of a WaitPointer: for a box that asks something.
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
