// SPDX-License-Identifier: MIT
#include "platform/controls/ListBox.h"

#include "platform/runtime/Error.h"
#include "tests/platform/controls/Lines.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

using namespace Qt::StringLiterals;
using controls::ListBox;

TEST_F(Lines, FillingSelectsAndEmitsNothing) {
  EXPECT_EQ(list.ListCount(), 4);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, FocusSelectsNothing) {
  QApplication::setActiveWindow(&list);
  list.setFocus(Qt::TabFocusReason);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, SelectionByTheProgramIsSignalledOncePerLine) {
  list.SetListIndex(2);
  list.SetListIndex(2);
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Lines, SelectionByMouseOrKeyIsSignalled) {
  Click(1);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(clicked.count(), 1);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.ListIndex(), 2);
  EXPECT_EQ(clicked.count(), 2);
  Click(2);
  EXPECT_EQ(clicked.count(), 2);
}

TEST_F(Lines, ClickWithCtrlKeepsTheSelection) {
  Click(1);
  Click(1, Qt::ControlModifier);
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(Lines, ClickBelowTheLastLineKeepsTheSelection) {
  Click(1);
  const QPoint below(50, 190);
  ASSERT_FALSE(list.indexAt(below).isValid());
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    for (const Qt::KeyboardModifier key : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
      QTest::mouseClick(list.viewport(), button, key, below);
      EXPECT_EQ(list.ListIndex(), 1) << button << " with " << key;
    }
    QTest::mouseDClick(list.viewport(), button, Qt::NoModifier, below);
    EXPECT_EQ(list.ListIndex(), 1) << button;
  }
  EXPECT_EQ(clicked.count(), 1);
  EXPECT_EQ(lost.count(), 0);
}

TEST_F(Lines, PressingOnALineAndReleasingBelowTheLastOneSelectsThatLine) {
  Click(1);
  const QPoint below(50, 190);
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
    for (const bool moves : {false, true}) {
      const int line = moves ? 2 : 0;
      QTest::mousePress(list.viewport(), button, Qt::NoModifier, Middle(line));
      if (moves) MoveHolding(button, below);
      QTest::mouseRelease(list.viewport(), button, Qt::NoModifier, below);
      EXPECT_EQ(list.ListIndex(), line) << button;
    }
  }
  EXPECT_EQ(lost.count(), 0);
}

TEST_F(Lines, FirstArrowKeySelectsTheFirstLine) {
  QApplication::setActiveWindow(&list);
  list.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Lines, ArrowKeyAfterRefillingContinuesAtTheSelection) {
  list.SetListIndex(2);
  const auto again = [this](std::vector<ListBox::Line> lines) {
    list.Clear();
    list.AddItems(std::move(lines));
    EXPECT_EQ(list.ListIndex(), -1);
    QTest::keyClick(&list, Qt::Key_Down);
    return list.Text(list.ListIndex());
  };
  EXPECT_EQ(again({{u"Abrikoos"_s, 5}, {u"Appel"_s, 10}, {u"Banaan"_s, 20}, {u"Citroen"_s, 30}}), u"Citroen"_s);
  QTest::keyClick(&list, Qt::Key_Up);
  EXPECT_EQ(list.Text(list.ListIndex()), u"Banaan"_s);
  // The line does not exist any more: the line now at its position, or the last one.
  EXPECT_EQ(again({{u"Abrikoos"_s, 5}, {u"Appel"_s, 10}, {u"Citroen"_s, 30}, {u"Dadel"_s, 40}}), u"Citroen"_s);
  EXPECT_EQ(again({{u"Abrikoos"_s, 5}}), u"Abrikoos"_s);
}

TEST_F(Lines, ArrowKeyAfterRemovalContinuesAtItsPosition) {
  list.SetListIndex(1);
  list.RemoveItem(1);
  QTest::keyClick(&list, Qt::Key_Down);
  EXPECT_EQ(list.Text(list.ListIndex()), u"Citroen"_s);
  list.SetListIndex(2);
  list.RemoveItem(2);
  QTest::keyClick(&list, Qt::Key_Up);
  EXPECT_EQ(list.ListIndex(), 1);
}

TEST_F(Lines, FirstArrowKeyScrollsToItsLine) {
  for (int line = 0; line < 100; ++line)
    list.AddItem(QString::number(line), 100 + line);
  // Like the view does when it gets the focus.
  list.selectionModel()->setCurrentIndex(list.model()->index(0, 0), QItemSelectionModel::NoUpdate);
  list.scrollToBottom();
  ASSERT_GT(list.verticalScrollBar()->value(), 0);
  QTest::keyClick(&list, Qt::Key_Down);
  ASSERT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(list.verticalScrollBar()->value(), 0);
}

TEST_F(Lines, TypingFindsALine) {
  QTest::keyClicks(&list, u"ci"_s);
  EXPECT_EQ(list.ListIndex(), 2);
}

TEST_F(Lines, NoSelectionIsSetWithMinusOne) {
  list.SetListIndex(2);
  clicked.clear();
  list.SetListIndex(-1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_EQ(lost.count(), 1);
}

TEST_F(Lines, ClearingAndRefillingEmitNothing) {
  list.SetListIndex(2);
  clicked.clear();
  list.Clear();
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.ListCount(), 0);
  list.AddItem(u"Appel"_s, 10);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(clicked.count(), 0);
  EXPECT_EQ(lost.count(), 0);
  list.SetListIndex(0);
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(Lines, IndexOutOfRangeIsAnError) {
  EXPECT_EQ(list.ItemData(3), 40);
  EXPECT_EQ(list.Text(3), u"Druif"_s);
  for (const int index : {-1, 4}) {
    EXPECT_THROW(list.ItemData(index), runtime::Error);
    EXPECT_THROW(list.Text(index), runtime::Error);
    EXPECT_THROW(list.RemoveItem(index), runtime::Error);
    EXPECT_THROW(list.SetText(index, u"x"_s), runtime::Error);
  }
  EXPECT_THROW(list.SetListIndex(4), runtime::Error);
  EXPECT_THROW(list.ItemData(list.ListIndex()), runtime::Error);
}

TEST_F(Lines, WithoutASelectionTheErrorSaysThatNoneIsSelected) {
  for (const auto& read : std::vector<std::function<void()>>{[this] { list.ItemData(list.ListIndex()); },
                                                             [this] { list.Text(list.ListIndex()); },
                                                             [this] { list.RemoveItem(list.ListIndex()); }}) {
    try {
      read();
      ADD_FAILURE() << "no error";
    } catch (const runtime::Error& error) {
      EXPECT_EQ(error.Description(), u"Er is geen regel gekozen."_s);
    }
  }
}

TEST_F(Lines, RemovingTheSelectedLineClearsTheSelection) {
  list.SetListIndex(1);
  clicked.clear();
  list.RemoveItem(1);
  EXPECT_EQ(list.ListIndex(), -1);
  EXPECT_EQ(list.Text(1), u"Citroen"_s);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, RemovingAnotherLineKeepsTheSelectedOne) {
  list.SetListIndex(2);
  clicked.clear();
  list.RemoveItem(0);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.ItemData(list.ListIndex()), 30);
  list.RemoveItem(2);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, SelectsByItemData) {
  list.AddItem(u"Nog een appel"_s, 10);
  EXPECT_TRUE(list.SelectWhereItemData(10));
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_FALSE(list.SelectWhereItemData(99));
  EXPECT_EQ(list.ListIndex(), -1);
}

TEST_F(Lines, SetTextKeepsTheNumber) {
  list.SetText(1, u"Bosbes"_s);
  EXPECT_EQ(list.Text(1), u"Bosbes"_s);
  EXPECT_EQ(list.ItemData(1), 20);
}

TEST_F(Lines, DoubleClickIsSignalledOnLinesOnly) {
  const QSignalSpy doubled(&list, qOverload<>(&ListBox::doubleClicked));
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, Middle(1));
  EXPECT_EQ(doubled.count(), 1);
  EXPECT_EQ(list.ListIndex(), 1);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 190));
  EXPECT_EQ(doubled.count(), 1);
}

TEST_F(Lines, AltUpAndDownMoveTheSelectedLine) {
  const QSignalSpy moved(&list, &ListBox::lineMoved);
  list.SetListIndex(1);
  QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(list.Text(1), u"Banaan"_s);
  EXPECT_EQ(moved.count(), 0);
  list.SetMovable(true);
  list.SetListIndex(1);
  clicked.clear();
  QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
  EXPECT_EQ(list.Text(1), u"Citroen"_s);
  EXPECT_EQ(list.Text(2), u"Banaan"_s);
  EXPECT_EQ(list.ItemData(2), 20);
  EXPECT_EQ(list.ListIndex(), 2);
  QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
  QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
  QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(list.Text(0), u"Banaan"_s);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(moved.count(), 3);
  EXPECT_EQ(clicked.count(), 0);
}

TEST_F(Lines, MovingALineKeepsTheSelection) {
  list.SetListIndex(1);
  list.MoveLine(3, 0);
  EXPECT_EQ(list.Text(0), u"Druif"_s);
  EXPECT_EQ(list.ListIndex(), 2);
  list.MoveLine(0, 3);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_EQ(list.Text(list.ListIndex()), u"Banaan"_s);
}

TEST_F(Lines, ShowsDetailsToAssistiveToolsAndAsToolTip) {
  list.SetDetails(1, {controls::LineMark::Cross, controls::LineTone::Wrong, true, false, u"geluidsbestand ontbreekt"_s,
                      u"0:18"_s, u"D: is niet bereikbaar"_s});
  const QModelIndex line = list.model()->index(1, 0);
  EXPECT_EQ(line.data(Qt::AccessibleTextRole).toString(), u"Banaan, geluidsbestand ontbreekt, 0:18"_s);
  EXPECT_EQ(line.data(Qt::ToolTipRole).toString(), u"D: is niet bereikbaar"_s);
  EXPECT_EQ(list.Text(1), u"Banaan"_s);
}

TEST_F(Lines, ALongNameUsesThePlaceOfAnEmptyWord) {
  list.resize(420, 200);
  list.SetText(0, QString(80, u'W'));
  const QRect line = list.visualRect(list.model()->index(0, 0));
  const auto right = [&] { return list.viewport()->grab(QRect(line.center().x() + 60, line.top(), 80, 20)).toImage(); };
  controls::LineDetails details;
  list.SetDetails(0, details);
  const QImage alone = right();
  details.word = u"geluidsbestand ontbreekt"_s;
  list.SetDetails(1, details);
  EXPECT_EQ(right(), alone);
  list.SetText(0, u"W"_s);
  EXPECT_NE(right(), alone);
}

TEST_F(Lines, EmptyListShowsItsEmptyText) {
  list.Clear();
  const QImage before = list.grab().toImage();
  list.SetEmptyText(u"Geen item-spots gevonden."_s);
  EXPECT_NE(list.grab().toImage(), before);
  list.AddItem(u"Appel"_s);
  const QImage filled = list.grab().toImage();
  list.SetEmptyText({});
  EXPECT_EQ(list.grab().toImage(), filled);
}

TEST(ListBox, SupportsAHundredThousandLines) {
  ListBox list;
  list.resize(300, 200);
  list.show();
  std::vector<ListBox::Line> lines;
  lines.reserve(100000);
  for (int i = 0; i < 100000; ++i)
    lines.push_back({u"Regel %1"_s.arg(i), i});
  list.AddItems(std::move(lines));
  list.SetListIndex(99999);
  QCoreApplication::processEvents();
  EXPECT_EQ(list.ItemData(list.ListIndex()), 99999);
  list.SetFilterText(u"9999"_s);
  EXPECT_EQ(list.ShownCount(), 19);
  EXPECT_EQ(list.ListIndex(), 99999);
}

}  // namespace
