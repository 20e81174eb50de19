// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/IndexPage.h"
#include "platform/jet/pages/Transaction.h"

#include <vector>

namespace jet {

// A parsed index page that can be changed and saved. Entries are complete (key and row pointer); those of a node have a
// child each. The right-most child of a node has no entry: it is the tail.
struct IndexNode {
  bool leaf = true;
  std::uint8_t level = 0;
  std::uint32_t table = 0;
  std::uint32_t previous = 0;
  std::uint32_t next = 0;
  std::uint32_t tail = 0;
  std::vector<Bytes> entries;
  std::vector<std::uint32_t> children;  // nodes only: one for each entry

  // A node that lists its right-most child as an entry is converted to the form with a tail.
  static IndexNode Load(PageSource& pages, std::uint32_t number, std::uint32_t table);
  // Whether the entries fit on one page, with a shared prefix if necessary.
  bool Fits() const { return Fits(0, entries.size()); }
  // The same for the entries [begin, end).
  bool Fits(std::size_t begin, std::size_t end) const;
  // Writes a node that fits.
  void Save(Transaction& pages, std::uint32_t number) const;

 private:
  std::size_t Shared(std::size_t begin, std::size_t end) const;
  std::size_t BytesNeeded(std::size_t begin, std::size_t end, std::size_t shared) const;
};

}  // namespace jet
