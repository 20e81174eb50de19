// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexCursor.h"

#include "platform/jet/values/Damage.h"

namespace jet {

IndexCursor::IndexCursor(PageSource& pages, std::uint32_t table, std::uint32_t root)
    : pages_(pages), table_(table), root_(root) {}

IndexPage IndexCursor::Load(std::uint32_t number) {
  CountStep(number);
  return {pages_.Read(number), number, table_};
}

void IndexCursor::CountStep(std::uint32_t number) {
  if (++steps_ > pages_.PageCount()) throw DamageAt(number, "de index verwijst in een kring");
}

// Descends from the root; `choose` returns the entry of each node to follow.
template <typename Choose>
void IndexCursor::Descend(Choose choose) {
  steps_ = 0;
  leaf_.reset();
  IndexPage page = Load(root_);
  while (!page.IsLeaf()) {
    std::uint32_t child = page.Child(choose(page));
    // A node may have no tail; then the last entry's child is the right-most.
    if (child == 0 && page.Count() > 0) child = page.Child(page.Count() - 1);
    if (child == 0) throw DamageAt(page.Number(), "een indexknoop heeft geen kinderen");
    page = Load(child);
  }
  leaf_ = page;
}

void IndexCursor::SeekFirst() {
  Descend([](const IndexPage&) { return std::size_t{0}; });
  entry_ = 0;
  Settle(End::First);
}

void IndexCursor::SeekLast() {
  Descend([](const IndexPage& node) { return node.Count(); });
  entry_ = leaf_->Count() - 1;
  Settle(End::Last);
}

void IndexCursor::Seek(ByteView key) {
  Descend([&](const IndexPage& node) { return node.LowerBound(key); });
  entry_ = leaf_->LowerBound(key);
  Settle(End::First);
}

void IndexCursor::Next() {
  ++entry_;
  Settle(End::First);
}

void IndexCursor::Previous() {
  --entry_;
  Settle(End::Last);
}

void IndexCursor::MoveToLeaf(std::uint32_t number, End end) {
  if (number == 0) return leaf_.reset();
  IndexPage page = Load(number);
  if (!page.IsLeaf()) throw DamageAt(number, "een knoop staat tussen de bladen van een index");
  leaf_ = page;
  entry_ = end == End::First ? 0 : leaf_->Count() - 1;
}

// When the position is outside its leaf, moves to the next leaf that is not empty, in either direction.
void IndexCursor::Settle(End whenEmpty) {
  while (leaf_ && entry_ >= leaf_->Count()) {
    MoveToLeaf(whenEmpty == End::First ? leaf_->Next() : leaf_->Previous(), whenEmpty);
  }
  if (leaf_) leaf_->CopyEntry(entry_, bytes_);
}

}  // namespace jet
