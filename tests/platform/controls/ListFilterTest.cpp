// SPDX-License-Identifier: MIT
// Filtering a list by a search text and a predicate.
#include "platform/runtime/Error.h"
#include "tests/platform/controls/Lines.h"

namespace {

using namespace Qt::StringLiterals;

TEST_F(Lines, SearchHidesLinesWithoutTheText) {
  list.SetFilterText(u"R"_s);
  EXPECT_EQ(list.ShownCount(), 2);
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_TRUE(list.IsShown(2));
  EXPECT_FALSE(list.IsShown(0));
  EXPECT_EQ(list.ItemData(0), 10);
  list.SetFilterText({});
  EXPECT_EQ(list.ShownCount(), 4);
}

TEST_F(Lines, ExtendedAndShortenedSearchFindsTheSameAsANewOne) {
  for (const QString& text : {u"r"_s, u"ru"_s, u"rui"_s, u"ru"_s, u"u"_s, u"it"_s, u"cit"_s, QString()}) {
    list.SetFilterText(text);
    for (int index = 0; index < list.ListCount(); ++index)
      EXPECT_EQ(list.IsShown(index), list.Text(index).contains(text, Qt::CaseInsensitive)) << text.toStdString();
  }
}

TEST_F(Lines, SearchIncludesLinesChangedMeanwhile) {
  list.SetFilterText(u"a"_s);
  list.SetText(2, u"Aardbei"_s);
  list.RemoveItem(0);
  list.AddItem(u"Abrikoos"_s, 50);
  list.SetFilterText(u"ab"_s);
  EXPECT_EQ(list.ShownCount(), 1);
  list.SetFilterText(u"a"_s);
  EXPECT_EQ(list.ShownCount(), 3);
  list.MoveLine(3, 0);
  list.SetFilterText(u"aa"_s);
  EXPECT_EQ(list.ShownCount(), 2);
  EXPECT_TRUE(list.IsShown(1));
  list.Clear();
  list.AddItem(u"Framboos"_s);
  EXPECT_EQ(list.ShownCount(), 0);
  list.SetText(0, u"Aalbes"_s);
  list.SetFilterText(u"aal"_s);
  EXPECT_EQ(list.ShownCount(), 1);
}

TEST_F(Lines, HiddenLineIsDeselectedAndAVisibleOneIsNot) {
  list.SetListIndex(2);
  clicked.clear();
  list.SetFilterText(u"r"_s);
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(lost.count(), 0);
  list.SetFilterText(u"dr"_s);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(lost.count(), 1);
  list.SetFilterText({});
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, IndexesCountHiddenLines) {
  list.SetFilterText(u"dr"_s);
  Click(0);
  EXPECT_EQ(list.ListIndex(), 3);
  EXPECT_EQ(list.ItemData(list.ListIndex()), 40);
  EXPECT_THROW(list.SetListIndex(0), runtime::Error);
  EXPECT_FALSE(list.SelectWhereItemData(10));
}

TEST_F(Lines, PredicateFiltersInAdditionToTheText) {
  list.SetFilter([this](int index) { return list.ItemData(index) > 20; });
  EXPECT_EQ(list.ShownCount(), 2);
  list.SetFilterText(u"dr"_s);
  EXPECT_EQ(list.ShownCount(), 1);
  list.AddItem(u"Drop"_s, 50);
  list.AddItem(u"Drank"_s, 5);
  EXPECT_EQ(list.ShownCount(), 2);
  list.SetFilter(nullptr);
  EXPECT_EQ(list.ShownCount(), 3);
}

}  // namespace
