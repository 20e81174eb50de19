// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Value.h"

#include <functional>

namespace jet {

// The head of a memo or OLE value, stored in the row's variable area.
struct LongValueHead {
  enum class Kind : std::uint8_t {
    Chain = 0,   // pieces, each beginning with the row pointer of the next
    Single = 1,  // one row on a long-value page
    Inline = 2   // the bytes follow the head
  };
  static constexpr std::size_t kBytes = 12;
  static constexpr std::uint32_t kMaxLength = 0x3FFFFFFF;

  std::uint32_t length = 0;  // in bytes
  Kind kind = Kind::Inline;
  RowId where = 0;
  std::uint32_t stamp = 0;
};

// Parses a head. No bytes at all mean an empty inline value.
LongValueHead ParseLongValueHead(ByteView stored);

// Reads the complete value whose head (with the inline bytes) is `stored`.
void ReadLongValue(PageSource& pages, ByteView stored, Bytes& out);

// Calls `visit` with the RowId and bytes of each piece of a value that is not inline, in order, until the length is
// reached, the chain ends or `visit` returns false. Returns the number of bytes visited.
std::uint64_t VisitPieces(PageSource& pages, const LongValueHead& head,
                          const std::function<bool(RowId piece, ByteView part)>& visit);

// Limits what one scan of rows reads. In a sound file each piece belongs to one value, so all values together are
// shorter than the file; in a damaged file many values of the file's size may share pieces.
class LongValueBudget {
 public:
  // Called before a value is read. Throws Damage when it and the previous ones are longer than the file; a later,
  // shorter one may still fit.
  void Spend(PageSource& pages, const LongValueHead& head);

 private:
  std::uint64_t spent_ = 0;  // bytes outside of rows
};

}  // namespace jet
