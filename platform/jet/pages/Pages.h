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

// Pages of the largest file: 2 GB.
constexpr std::uint32_t kMostPages = (std::uint32_t{1} << 31) / kPageSize;
// Pages that no file is without: header, maps, the definitions of the four engine tables.
constexpr std::uint32_t kSystemPages = 6;

using PageBytes = std::array<std::uint8_t, kPageSize>;
// A page's content, kept alive by whoever holds it, whatever becomes of the cache.
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

// Whether nothing was ever written to the page: given out, and all zeros.
bool IsUnwritten(const PageBytes& page);

// Where pages are read from: the file's own pages, or a statement's changed pages laid over them.
class PageSource {
 public:
  virtual ~PageSource() = default;
  virtual std::uint32_t PageCount() = 0;
  // Content of page `number`, decoded. An Error for a number past the end or a failing disk.
  virtual PageRef Read(std::uint32_t number) = 0;
};

// Nothing at all, for a Transaction that makes a whole file.
class NoPages final : public PageSource {
 public:
  std::uint32_t PageCount() override { return 0; }
  PageRef Read(std::uint32_t number) override;
};

// Encodes or decodes the content of page `number` as a file with this key has it; key 0 changes nothing.
void ApplyPageEncoding(std::uint32_t key, std::uint32_t number, PageBytes& page);

// Reads a page and checks its first two bytes against `type`.
PageRef ReadTyped(PageSource& pages, std::uint32_t number, PageType type);

// The pages of a file, with a bounded cache; the longest unused page makes room. Not thread-safe. The file must
// outlive it.
class Pages : public PageSource {
 public:
  explicit Pages(File& file, std::size_t cachedPages = 2048);

  // Page 0 as read when this was made or last refreshed.
  const Header& DatabaseHeader() const { return header_; }
  // Whole pages in the file; a cut last page does not count.
  std::uint32_t PageCount() override { return pageCount_; }
  PageRef Read(std::uint32_t number) override;
  // Forgets what was read, for when the file may have been changed.
  void Refresh();
  // Takes over a page that was written to the file, as the file's content from now on; one past the end makes it
  // longer.
  void Accept(std::uint32_t number, PageRef page);
  // Encodes or decodes the content of page `number`; without effect in a file that is not encoded.
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
