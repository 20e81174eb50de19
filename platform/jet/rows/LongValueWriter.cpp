// SPDX-License-Identifier: MIT
#include "platform/jet/rows/LongValueWriter.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Utf8.h"

#include <vector>

namespace jet {

namespace {

constexpr std::size_t kMaxInOneRow = 4076;
constexpr std::size_t kPieceBytes = kMaxInOneRow - 4;  // each piece begins with the row pointer of the next
constexpr std::uint32_t kInlineFlag = 0x80000000;
constexpr std::uint32_t kSingleFlag = 0x40000000;

Bytes Head(std::size_t length, std::uint32_t flag, RowId where) {
  Bytes head(LongValueHead::kBytes);
  Store(head.data(), static_cast<std::uint32_t>(length) | flag);
  Store(head.data() + 4, where);
  return head;
}

const StoredColumn& WithMaps(const StoredColumn& column) {
  if (column.ownedMap != 0 && column.freeMap != 0) return column;
  throw Error(ErrorCode::Unsupported, "In veld '" + ToUtf8(column.name) + "' kan niet worden geschreven.");
}

}  // namespace

LongValueWriter::LongValueWriter(Transaction& pages, PageSpace& space, const StoredColumn& column)
    : pages_(pages), rows_(pages, space, kLongValueOwner, WithMaps(column).ownedMap, column.freeMap) {}

Bytes LongValueWriter::Write(ByteView value, bool mayInline) {
  if (value.size() > LongValueHead::kMaxLength) throw Error(ErrorCode::TooLong, "De waarde is te lang.");
  if (value.empty() || (mayInline && value.size() <= kMaxInline)) {
    Bytes stored = Head(value.size(), kInlineFlag, 0);
    stored.insert(stored.end(), value.begin(), value.end());
    return stored;
  }
  if (value.size() <= kMaxInOneRow) return Head(value.size(), kSingleFlag, rows_.Add(value));
  return Head(value.size(), 0, WriteChain(value, [&](ByteView piece) { return rows_.AddAlone(piece); }));
}

// From the last piece to the first, so that the place of the next one is known.
RowId WriteChain(ByteView value, const std::function<RowId(ByteView)>& put) {
  RowId next = 0;
  for (std::size_t end = value.size(); end > 0;) {
    const std::size_t start = (end - 1) / kPieceBytes * kPieceBytes;
    Bytes piece(4);
    Store(piece.data(), next);
    piece.insert(piece.end(), value.begin() + static_cast<std::ptrdiff_t>(start),
                 value.begin() + static_cast<std::ptrdiff_t>(end));
    next = put(piece);
    end = start;
  }
  return next;
}

void LongValueWriter::CollectPieces(ByteView stored, std::vector<RowId>& pieces) {
  const LongValueHead head = ParseLongValueHead(stored);
  if (head.kind == LongValueHead::Kind::Inline) return;
  VisitPieces(pages_, head, [&](RowId piece, ByteView) {
    pieces.push_back(piece);
    return true;
  });
}

}  // namespace jet
