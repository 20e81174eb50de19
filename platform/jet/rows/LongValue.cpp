// SPDX-License-Identifier: MIT
#include "platform/jet/rows/LongValue.h"

#include "platform/jet/pages/DataPage.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>

namespace jet {

namespace {

constexpr std::size_t kNextPieceBytes = 4;

StoredRow FindPiece(PageSource& pages, RowId where) {
  auto row = FindRow(pages, where, false, kLongValueOwner);
  if (!row) throw DamageAt(PageOf(where), "een stuk van een lange waarde ontbreekt");
  return *row;
}

}  // namespace

LongValueHead ParseLongValueHead(ByteView stored) {
  LongValueHead head;
  if (stored.empty()) return head;
  const std::uint32_t first = U32(stored, 0);
  const unsigned kind = first >> 30;
  if (kind > 2) throw Damage("lange waarde van onbekende soort");
  head.kind = static_cast<LongValueHead::Kind>(kind);
  head.length = first & LongValueHead::kMaxLength;
  head.where = U32(stored, 4);
  head.stamp = U32(stored, 8);
  return head;
}

std::uint64_t VisitPieces(PageSource& pages, const LongValueHead& head,
                          const std::function<bool(RowId, ByteView)>& visit) {
  if (head.kind == LongValueHead::Kind::Single) {
    const StoredRow row = FindPiece(pages, head.where);
    visit(head.where, row.bytes);
    return row.bytes.size();
  }
  std::uint64_t done = 0;
  for (RowId next = head.where; next != 0 && done < head.length;) {
    const StoredRow row = FindPiece(pages, next);
    const ByteView part =
        Part(row.bytes, kNextPieceBytes, row.bytes.size() - std::min(row.bytes.size(), kNextPieceBytes));
    if (part.empty()) throw DamageAt(PageOf(next), "een stuk van een lange waarde is leeg");
    done += part.size();
    if (!visit(next, part)) break;
    next = LoadU32(row.bytes.data());
  }
  return done;
}

void ReadLongValue(PageSource& pages, ByteView stored, Bytes& out) {
  out.clear();
  const LongValueHead head = ParseLongValueHead(stored);
  if (head.length == 0) return;
  if (head.kind == LongValueHead::Kind::Inline) {
    const ByteView part = Part(stored, LongValueHead::kBytes, head.length);
    out.assign(part.begin(), part.end());
    return;
  }
  // A chain that loops would otherwise be followed up to a length of 1 GiB.
  if (head.length > std::uint64_t{pages.PageCount()} * kPageSize)
    throw Damage("lange waarde is langer dan het bestand");
  const auto append = [&](RowId, ByteView part) {
    const std::size_t wanted = std::min<std::size_t>(part.size(), head.length - out.size());
    out.insert(out.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(wanted));
    return true;
  };
  if (VisitPieces(pages, head, append) < head.length) throw Damage("lange waarde is afgebroken");
}

void LongValueBudget::Spend(PageSource& pages, const LongValueHead& head) {
  if (head.kind == LongValueHead::Kind::Inline) return;
  if (spent_ + head.length > std::uint64_t{pages.PageCount()} * kPageSize)
    throw Damage("lange waarden zijn samen langer dan het bestand");
  spent_ += head.length;
}

}  // namespace jet
