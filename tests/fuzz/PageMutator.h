// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Bytes.h"

#include <cstdint>
#include <random>

namespace fuzz {

// Damages database files: sets the fields of pages (kinds, counts, offsets, page and row pointers) to nearly valid
// values. Never moves bytes, so that other pages stay valid.
class PageMutator {
 public:
  explicit PageMutator(unsigned seed) : random_(seed) {}

  // Makes 1 to 4 changes in a file of at least one page. Bytes after the last complete page are not changed.
  void Mutate(jet::ByteSpan file);

 private:
  std::size_t Below(std::size_t end) { return random_() % end; }
  jet::ByteSpan Page(std::size_t number) { return file_.subspan(number * kPage, kPage); }
  void MutateField(jet::ByteSpan page);
  void MutateBytes(jet::ByteSpan page);
  void CopyWithin(jet::ByteSpan page);
  void CopyPage();
  std::size_t FieldOf(jet::ByteSpan page, std::size_t* size);
  std::size_t MapFieldOf(jet::ByteSpan page, std::size_t slots, std::size_t* size);
  std::uint32_t ValueFor(std::uint32_t old, std::size_t size);

  static constexpr std::size_t kPage = 4096;
  std::mt19937 random_;
  jet::ByteSpan file_;
};

}  // namespace fuzz
