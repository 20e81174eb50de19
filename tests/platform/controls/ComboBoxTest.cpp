// SPDX-License-Identifier: MIT
#include "platform/controls/ComboBox.h"

#include "platform/runtime/Error.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using controls::ComboBox;

class Choice : public testing::Test {
 protected:
  Choice() : changed(&combo, &QComboBox::currentIndexChanged) {
    combo.AddItem(u"Opener"_s, 7);
    combo.AddItem(u"Midden"_s, 8);
    combo.AddItem(u"Sluiter"_s, 9);
  }

  ComboBox combo;
  QSignalSpy changed;
};

TEST_F(Choice, FilledComboHasNoSelectionAndEmittedNothing) {
  EXPECT_EQ(combo.ListCount(), 3);
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.currentText(), QString());
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Choice, SignalsWhenUserOrProgramChangeTheSelection) {
  combo.SetListIndex(1);
  combo.SetListIndex(1);
  EXPECT_EQ(changed.count(), 1);
  combo.show();
  QTest::keyClick(&combo, Qt::Key_Down);
  EXPECT_EQ(combo.ListIndex(), 2);
  EXPECT_EQ(changed.count(), 2);
  combo.SetListIndex(-1);
  EXPECT_EQ(changed.count(), 3);
}

TEST_F(Choice, AddingALineKeepsTheSelection) {
  combo.SetListIndex(1);
  changed.clear();
  EXPECT_EQ(combo.AddItem(u"Extra"_s, 10), 3);
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Choice, ItemDataOfAnInvalidIndexIsAnError) {
  EXPECT_EQ(combo.ItemData(2), 9);
  EXPECT_THROW(combo.ItemData(-1), runtime::Error);
  EXPECT_THROW(combo.ItemData(3), runtime::Error);
  EXPECT_THROW(combo.SetListIndex(3), runtime::Error);
}

TEST_F(Choice, SelectsTheFirstLineWithTheNumberOrNone) {
  combo.AddItem(u"Dubbel"_s, 8);
  EXPECT_TRUE(combo.SelectWhereItemData(8));
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_FALSE(combo.SelectWhereItemData(99));
  EXPECT_EQ(combo.ListIndex(), -1);
}

TEST_F(Choice, ClearingEmitsNothing) {
  combo.SetListIndex(1);
  changed.clear();
  combo.Clear();
  EXPECT_EQ(combo.ListCount(), 0);
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Choice, RefillingKeepsTheSelectionByNumberWithoutASignal) {
  combo.SelectWhereItemData(9);
  changed.clear();
  combo.Refill({{u"Nieuw"_s, 1}, {u"Sluiter"_s, 9}});
  EXPECT_EQ(combo.ListIndex(), 1);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(Choice, SelectionLostByRefillingIsSignalled) {
  combo.SelectWhereItemData(9);
  changed.clear();
  combo.Refill({{u"Nieuw"_s, 1}});
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(changed.count(), 1);
  combo.Refill({{u"Nog nieuwer"_s, 2}});
  EXPECT_EQ(changed.count(), 1);
}

// A line too long for the combo, and a short one.
class LongSelection : public Choice {
 protected:
  LongSelection() {
    combo.AddItem(longText, 10);
    combo.resize(120, combo.sizeHint().height());
    combo.show();
  }
  QString Tip() {
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), combo.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&combo, &event);
    return QToolTip::text();
  }

  const QString longText = u"Opener avond, versie met koor en pauken voor de feestdagen"_s;
};

TEST_F(LongSelection, ToolTipShowsTheCompleteText) {
  combo.SetListIndex(0);
  EXPECT_EQ(Tip(), QString());
  combo.SetListIndex(3);
  EXPECT_EQ(Tip(), longText);
}

TEST_F(LongSelection, ListIsWideEnough) {
  combo.showPopup();
  EXPECT_GE(combo.view()->viewport()->width(), combo.fontMetrics().horizontalAdvance(longText));
  combo.hidePopup();
}

}  // namespace
