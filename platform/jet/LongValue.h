#pragma once

#include "platform/jet/Pages.h"
#include "platform/jet/RowId.h"
#include "platform/jet/Value.h"

#include <functional>

namespace jet {

/// The head of a memo or OLE value, in its row's variable area.
struct LongValueHead {
  enum class Kind : std::uint8_t {
    Chain = 0,   ///< pieces, each beginning with the row pointer of the next
    Single = 1,  ///< one row on a long-value page
    Inline = 2   ///< the bytes follow the head
  };
  static constexpr std::size_t kBytes = 12;
  static constexpr std::uint32_t kMaxLength = 0x3FFFFFFF;

  std::uint32_t length = 0;  ///< in bytes
  Kind kind = Kind::Inline;
  RowId where = 0;
  std::uint32_t stamp = 0;
};

/// Takes a head apart. A value of no bytes at all is an empty inline one.
LongValueHead ParseLongValueHead(ByteView stored);

/// Puts together the whole value whose head (with what follows it) is `stored`.
void ReadLongValue(PageSource& pages, ByteView stored, Bytes& out);

/// Visits the pieces of a value that is not inline, in order, until its length is reached or the chain ends: `visit`
/// gets where the piece is and its part of the value. Answers how many bytes the pieces held.
std::uint64_t VisitPieces(PageSource& pages, const LongValueHead& head,
                          const std::function<void(RowId piece, ByteView part)>& visit);

}  // namespace jet
