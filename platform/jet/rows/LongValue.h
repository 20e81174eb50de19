// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Value.h"

#include <functional>

namespace jet {

// The head of a memo or OLE value, in its row's variable area.
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

// Takes a head apart. A value of no bytes at all is an empty inline one.
LongValueHead ParseLongValueHead(ByteView stored);

// Puts together the whole value whose head (with what follows it) is `stored`.
void ReadLongValue(PageSource& pages, ByteView stored, Bytes& out);

// Visits the pieces of a value that is not inline, in order, until its length is reached, the chain ends or `visit`
// returns false: it gets where the piece is and its part of the value. Returns how many bytes the pieces held.
std::uint64_t VisitPieces(PageSource& pages, const LongValueHead& head,
                          const std::function<bool(RowId piece, ByteView part)>& visit);

// Bounds what one walk over rows reads. In a sound file each piece belongs to one value, so that all values together
// are shorter than the file; in a damaged one, many values of the file's size may share their pieces.
class LongValueBudget {
 public:
  // To be called before a value is read: Damage when it and those before it are longer than the file. The next one may
  // still fit.
  void Spend(PageSource& pages, const LongValueHead& head);

 private:
  std::uint64_t spent_ = 0;  // bytes outside of rows
};

}  // namespace jet
