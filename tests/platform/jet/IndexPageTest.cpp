// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexPage.h"

#include "platform/jet/values/Error.h"
#include "tests/platform/jet/SpotsImage.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using jet::Bytes;

jet::IndexPage PageOf(SpotsImage& sample, std::uint32_t number) {
  return {std::make_shared<jet::PageBytes>(sample.image.At(number)), number, sample.spots.page};
}

TEST(IndexPage, CompletesEntriesByTheirSharedPrefix) {
  SpotsImage sample;
  const jet::IndexPage leaf = PageOf(sample, sample.leaves[0]);
  ASSERT_EQ(leaf.Count(), 3u);
  Bytes entry;
  for (const int id : {1, 2, 3}) {
    leaf.CopyEntry(static_cast<std::size_t>(id - 1), entry);
    EXPECT_EQ(entry, sample.IdEntry(id));
    EXPECT_EQ(leaf.Row(static_cast<std::size_t>(id - 1)), sample.rows[static_cast<std::size_t>(id)]);
  }
  EXPECT_EQ(leaf.FreeBytes(), leaf.ExactFreeBytes());
}

TEST(IndexPage, FindsTheFirstEntryNotLess) {
  SpotsImage sample;
  for (const std::uint32_t number : {sample.leaves[0], sample.leaves[1]}) {
    const jet::IndexPage leaf = PageOf(sample, number);
    const int first = number == sample.leaves[0] ? 1 : 4;
    EXPECT_EQ(leaf.LowerBound({}), 0u);
    EXPECT_EQ(leaf.LowerBound(SpotsImage::IdKey(first - 1)), 0u);
    EXPECT_EQ(leaf.LowerBound(SpotsImage::IdKey(first + 1)), 1u);
    EXPECT_EQ(leaf.LowerBound(sample.IdEntry(first + 1)), 1u);
    EXPECT_EQ(leaf.LowerBound(sample.IdEntry(first + 1) + Bytes{0}), 2u);
    EXPECT_EQ(leaf.LowerBound(SpotsImage::IdKey(first + 3)), 3u);
    EXPECT_EQ(leaf.LowerBound(Bytes{0xFF}), 3u);
    EXPECT_EQ(leaf.LowerBound(Bytes{0x7F, 0x80}), 0u);
  }
}

TEST(IndexPage, ANodesLastChildIsItsTail) {
  SpotsImage sample;
  const jet::IndexPage node = PageOf(sample, sample.root);
  ASSERT_FALSE(node.IsLeaf());
  ASSERT_EQ(node.Count(), 1u);
  EXPECT_EQ(node.Child(0), sample.leaves[0]);
  EXPECT_EQ(node.Child(1), sample.leaves[1]);
  Bytes entry;
  node.CopyEntry(0, entry);
  EXPECT_EQ(entry, sample.IdEntry(3));
}

TEST(IndexPage, RefusesEntriesTooShortForTheirRowPointer) {
  SpotsImage sample;
  sample.image.At(sample.leaves[0])[27] |= 2;  // an entry that ends after one byte
  EXPECT_THROW(PageOf(sample, sample.leaves[0]), jet::Error);
}

}  // namespace
