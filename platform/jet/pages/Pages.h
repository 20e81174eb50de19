// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Header.h"
#include "platform/jet/pages/PageSource.h"

#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>

namespace files {
class File;
}

namespace jet {

// Encodes or decodes (the operation is its own inverse) the content of page `number` with this key; key 0 means no
// encoding.
void ApplyPageEncoding(std::uint32_t key, std::uint32_t number, PageBytes& page);

// The pages of a file, with an LRU cache. Not thread-safe. The file must outlive it.
class Pages : public PageSource {
 public:
  explicit Pages(files::File& file, std::size_t cachedPages = kCachedPages);

  // Page 0 as read by the constructor or the last Refresh.
  const Header& DatabaseHeader() const { return header_; }
  // Complete pages in the file; a truncated last page does not count.
  std::uint32_t PageCount() override { return pageCount_; }
  PageRef Read(std::uint32_t number) override;
  // Empties the cache.
  void Clear() noexcept;
  // Empties the cache and reads page 0 again; for use when the file may have changed.
  void Refresh();
  // Puts a page that was just written to the file into the cache; one past the end increases PageCount.
  void Accept(std::uint32_t number, PageRef page);
  // Encodes or decodes the content of page `number`; no effect in a file that is not encoded.
  void ApplyEncoding(std::uint32_t number, PageBytes& page) const;

 private:
  struct Entry {
    std::uint32_t number;
    PageRef page;
  };

  PageRef Load(std::uint32_t number);
  void Keep(std::uint32_t number, PageRef page);

  files::File& file_;
  std::size_t capacity_;
  Header header_;
  std::uint32_t pageCount_ = 0;
  std::list<Entry> recent_;  // most recently used first
  std::unordered_map<std::uint32_t, std::list<Entry>::iterator> index_;
};

}  // namespace jet
