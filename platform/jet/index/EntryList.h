// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Bytes.h"

#include <cstdint>
#include <vector>

namespace jet {

// A sortable list of short byte strings (index entries) in one block of memory. Compares unsigned bytes.
class EntryList {
 public:
  void Add(ByteView entry);
  std::size_t Count() const { return places_.size(); }
  ByteView At(std::size_t i) const { return ByteView(bytes_).subspan(places_[i].start, places_[i].length); }
  void Sort();
  // A list of the last `count` bytes of every entry.
  EntryList LastBytes(std::size_t count) const;

  static bool Less(ByteView a, ByteView b);

 private:
  struct Place {
    std::uint64_t beginning;  // the first bytes as a number, which decides most comparisons
    std::uint64_t start : 48;
    std::uint64_t length : 16;
  };

  Bytes bytes_;
  std::vector<Place> places_;
};

}  // namespace jet
