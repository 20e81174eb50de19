// SPDX-License-Identifier: MIT
#include "platform/jet/pages/CachedFromPages.h"

#include "platform/jet/pages/Transaction.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <gtest/gtest.h>

namespace jet {
namespace {

// Computes a value from pages 2 and 4 and counts the computations.
class CachedFromPagesTest : public testing::Test {
 protected:
  int FirstBytes() {
    return remembered_.Get(pages_, [&](PageSource& pages) {
      ++made_;
      return (*pages.Read(2))[0] + (*pages.Read(4))[0];
    });
  }

  test::FreshDatabase database_;
  Transaction pages_{database_->Source()};
  CachedFromPages<int> remembered_;
  int made_ = 0;
};

TEST_F(CachedFromPagesTest, IsComputedOnceWhileItsPagesStay) {
  const int first = FirstBytes();
  pages_.Change(5)[100] = 1;
  EXPECT_EQ(FirstBytes(), first);
  EXPECT_EQ(made_, 1);
}

TEST_F(CachedFromPagesTest, IsComputedAgainWhenAPageChanged) {
  const int first = FirstBytes();
  ++pages_.Change(4)[0];
  EXPECT_EQ(FirstBytes(), first + 1);
  ++pages_.Change(4)[0];
  EXPECT_EQ(FirstBytes(), first + 2);
  EXPECT_EQ(made_, 3);
}

TEST_F(CachedFromPagesTest, IsComputedAgainWhenTheFileGrew) {
  FirstBytes();
  pages_.Append();
  FirstBytes();
  EXPECT_EQ(made_, 2);
}

TEST_F(CachedFromPagesTest, AnErrorIsNotCached) {
  const auto fail = [](PageSource&) -> int { throw Error(ErrorCode::Damaged, "kapot"); };
  FirstBytes();
  ++pages_.Change(2)[0];
  EXPECT_THROW(remembered_.Get(pages_, fail), Error);
  FirstBytes();
  EXPECT_EQ(made_, 2);
}

}  // namespace
}  // namespace jet
