// SPDX-License-Identifier: MIT
#include "platform/controls/ListBox.h"
#include "tests/platform/controls/Lines.h"

#include <QAccessible>
#include <QImage>
#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;
using controls::ListBox;

namespace {

using Indexes = std::vector<int>;

class MarkableLines : public Lines {
 protected:
  MarkableLines() : marked(&list, &ListBox::markedChanged) { list.SetMarkable(true); }

  QSignalSpy marked;
};

}  // namespace

TEST_F(Lines, OnlyOneLineIsMarkedUnlessTheListIsMarkable) {
  Click(0);
  Click(2, Qt::ControlModifier);
  EXPECT_EQ(list.Marked(), Indexes{2});
}

TEST_F(MarkableLines, CtrlMarksOneMoreAndListIndexIsTheLast) {
  Click(2);
  Click(0, Qt::ControlModifier);
  EXPECT_EQ(list.Marked(), (Indexes{0, 2}));
  EXPECT_EQ(list.MarkedCount(), 2);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(clicked.count(), 2);
}

TEST_F(MarkableLines, UnmarkingTheLastOneReturnsToAnother) {
  Click(1);
  Click(3, Qt::ControlModifier);
  Click(3, Qt::ControlModifier);
  EXPECT_EQ(list.Marked(), Indexes{1});
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(clicked.count(), 3);
}

TEST_F(MarkableLines, TheOnlyMarkedLineStaysMarked) {
  Click(1);
  Click(1, Qt::ControlModifier);
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(MarkableLines, ShiftMarksARange) {
  Click(0);
  Click(2, Qt::ShiftModifier);
  EXPECT_EQ(list.Marked(), (Indexes{0, 1, 2}));
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(MarkableLines, ShiftAndDownMarkFromAListWithoutASelection) {
  for (int key = 0; key < 3; ++key)
    QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(list.Marked(), (Indexes{0, 1, 2}));
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(MarkableLines, CtrlAMarksAll) {
  Click(1);
  QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(list.MarkedCount(), 4);
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(MarkableLines, AnArrowKeyMarksOneLineAgain) {
  Click(0);
  Click(2, Qt::ShiftModifier);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.Marked(), Indexes{3});
}

TEST_F(MarkableLines, SelectionByTheProgramIsOneLineWhateverKeyIsDown) {
  Click(0);
  Click(2, Qt::ShiftModifier);
  QTest::keyPress(&list, Qt::Key_Control, Qt::ControlModifier);
  list.SetListIndex(3);
  EXPECT_EQ(list.Marked(), Indexes{3});
}

TEST_F(MarkableLines, AFilterKeepsTheMarkedLinesThatItShows) {
  Click(0);
  Click(1, Qt::ControlModifier);
  Click(2, Qt::ControlModifier);
  marked.clear();
  list.SetFilterText(u"an"_s);  // Banaan
  EXPECT_EQ(list.Marked(), Indexes{1});
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_GE(marked.count(), 1);
  EXPECT_EQ(lost.count(), 0);
  list.SetFilterText({});
  EXPECT_EQ(list.Marked(), Indexes{1});
}

TEST_F(MarkableLines, FilteringAgainKeepsAllMarks) {
  list.SetFilter([](int) { return true; });
  Click(0);
  Click(3, Qt::ControlModifier);
  list.Refilter();
  EXPECT_EQ(list.Marked(), (Indexes{0, 3}));
  EXPECT_EQ(list.ListIndex(), 3);
}

TEST_F(MarkableLines, ClearingRemovesTheMarks) {
  Click(0);
  Click(1, Qt::ShiftModifier);
  list.Clear();
  EXPECT_EQ(list.MarkedCount(), 0);
  EXPECT_EQ(list.ListIndex(), -1);
}

// --- lines that were edited

TEST_F(Lines, AnEditedLineIsNotSelectedAndTheNextKeySelectsIt) {
  list.ShowEdited({2});
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(Lines, AnEditedLineIsScrolledIntoSight) {
  std::vector<ListBox::Line> more;
  more.reserve(200);
  for (int line = 0; line < 200; ++line)
    more.push_back({QString::number(line), 100 + line});
  list.AddItems(std::move(more));
  list.ShowEdited({190});
  EXPECT_TRUE(list.viewport()->rect().contains(Middle(190)));
}

TEST_F(Lines, AnEditedLineLooksDifferentUntilALineIsSelected) {
  const auto line = [this] { return list.grab(list.visualRect(list.model()->index(2, 0))).toImage(); };
  const QImage plain = line();
  list.ShowEdited({2});
  EXPECT_NE(line(), plain);
  Click(0);
  EXPECT_EQ(line(), plain);
}

TEST_F(Lines, AnEditedLineSaysSo) {
  list.ShowEdited({1});
  EXPECT_TRUE(list.model()->index(1, 0).data(Qt::AccessibleTextRole).toString().contains(u"zojuist bewaard"_s));
  EXPECT_FALSE(list.model()->index(0, 0).data(Qt::AccessibleTextRole).toString().contains(u"zojuist"_s));
}

TEST_F(Lines, AHiddenEditedLineIsSkipped) {
  list.SetFilterText(u"druif"_s);
  list.ShowEdited({0});
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.ListIndex(), 3);
}
