// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Files.h"
#include "platform/jet/pages/Header.h"

#include <array>
#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>

namespace jet {

// Pages in the largest file (2 GB).
constexpr std::uint32_t kMostPages = (std::uint32_t{1} << 31) / kPageSize;
// Pages that every file has: header, maps, the definitions of the four engine tables.
constexpr std::uint32_t kSystemPages = 6;

using PageBytes = std::array<std::uint8_t, kPageSize>;
// A page's content; stays valid when the cache drops the page.
using PageRef = std::shared_ptr<const PageBytes>;

// The first byte of a page.
enum class PageType : std::uint8_t {
  Unwritten = 0,
  Data = 1,
  Definition = 2,
  IndexNode = 3,
  IndexLeaf = 4,
  UsageBitmap = 5,
  FreedDefinition = 8,
  FreedData = 9
};

// Whether the page was allocated but never written: all zeros.
bool IsUnwritten(const PageBytes& page);

// A source of pages: the file, or a statement's changed pages over the file.
class PageSource {
 public:
  virtual ~PageSource() = default;
  virtual std::uint32_t PageCount() = 0;
  // Decoded content of page `number`. An Error for a number past the end or a failing disk.
  virtual PageRef Read(std::uint32_t number) = 0;
};

// An empty source, for a Transaction that creates a file.
class NoPages final : public PageSource {
 public:
  std::uint32_t PageCount() override { return 0; }
  PageRef Read(std::uint32_t number) override;
};

// Encodes or decodes (the operation is its own inverse) the content of page `number` with this key; key 0 means no
// encoding.
void ApplyPageEncoding(std::uint32_t key, std::uint32_t number, PageBytes& page);

// Reads a page and checks its first two bytes against `type`.
PageRef ReadTyped(PageSource& pages, std::uint32_t number, PageType type);

// The pages of a file, with an LRU cache. Not thread-safe. The file must outlive it.
class Pages : public PageSource {
 public:
  explicit Pages(File& file, std::size_t cachedPages = 2048);

  // Page 0 as read by the constructor or the last Refresh.
  const Header& DatabaseHeader() const { return header_; }
  // Complete pages in the file; a truncated last page does not count.
  std::uint32_t PageCount() override { return pageCount_; }
  PageRef Read(std::uint32_t number) override;
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

  File& file_;
  std::size_t capacity_;
  Header header_;
  std::uint32_t pageCount_ = 0;
  std::list<Entry> recent_;  // most recently used first
  std::unordered_map<std::uint32_t, std::list<Entry>::iterator> index_;
};

}  // namespace jet
