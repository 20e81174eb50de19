// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace jet {

constexpr std::size_t kPageSize = 4096;
// Default size of the cache of a file, in pages: 8 MB.
constexpr std::size_t kCachedPages = 2048;
// Pages in the largest file (2 GB).
constexpr std::uint32_t kMaxPages = (std::uint32_t{1} << 31) / kPageSize;
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
  // Decoded content of page `number`. Throws Error for a number past the end or a failing disk.
  virtual PageRef Read(std::uint32_t number) = 0;
};

// An empty source, for a Transaction that creates a file.
class NoPages final : public PageSource {
 public:
  std::uint32_t PageCount() override { return 0; }
  PageRef Read(std::uint32_t number) override;
};

// Reads a page and checks its first two bytes against `type`.
PageRef ReadTyped(PageSource& pages, std::uint32_t number, PageType type);

}  // namespace jet
