// SPDX-License-Identifier: MIT
// Reordering the spots of an item with the mouse.
#include "platform/desktop/MessageBox.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/Drop.h"

using namespace Qt::StringLiterals;
using testing_support::Drag;

namespace {

// On this platform plugin a drag needs events only. Set before main.
const bool kCarriesDrags = qputenv("SPOTROOSTER_TEST_PLATFORM", "minimal:enable_fonts");

class ItemDrag : public ItemEditor {
 protected:
  void OpenActive() {
    InsertListItem(1, u"Blok"_s, {1, 2, 3});
    Open(u"1"_s);
    editor_->resize(980, 640);
    editor_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
  }
  QRect PlaceOf(int line) const { return List().visualRect(List().model()->index(line, 0)); }
  // Drags a line by its middle to the lower or upper half of another line. Both must be within the platform's screen of
  // 240 by 320.
  void DragBelow(int line, int other) const {
    Drag(*List().viewport(), PlaceOf(line).center(), PlaceOf(other).center() + QPoint(0, PlaceOf(other).height() / 3));
  }
  void DragAbove(int line, int other) const {
    Drag(*List().viewport(), PlaceOf(line).center(), PlaceOf(other).center() - QPoint(0, PlaceOf(other).height() / 3));
  }
  QList<int> Spots() const {
    QList<int> spots;
    for (int line = 0; line < List().ListCount(); ++line)
      spots += static_cast<int>(List().ItemData(line));
    return spots;
  }
};

}  // namespace

TEST_F(ItemDrag, ASpotDraggedDownIsMoved) {
  OpenActive();
  DragBelow(0, 1);
  EXPECT_EQ(Spots(), (QList<int>{2, 1, 3}));
  EXPECT_EQ(List().ListIndex(), 1);
  EXPECT_TRUE(Button(u"cmdOpt1Verwijderen"_s).isEnabled());
}

TEST_F(ItemDrag, ASpotDraggedUpIsMovedAndSaved) {
  OpenActive();
  DragAbove(2, 0);
  EXPECT_EQ(Spots(), (QList<int>{3, 1, 2}));
  Click(u"cmdOk"_s);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(SavedSpots(), (QList<int>{3, 1, 2}));
}

TEST_F(ItemDrag, ADropBelowTheLastLineMovesToTheEnd) {
  OpenActive();
  Drag(*List().viewport(), PlaceOf(0).center(), PlaceOf(2).bottomLeft() + QPoint(20, 24));
  EXPECT_EQ(Spots(), (QList<int>{2, 3, 1}));
}

TEST_F(ItemDrag, ADragIsAChange) {
  OpenActive();
  DragBelow(0, 2);
  desktop::MessageBoxScript boxes;
  boxes.Answer(7);
  Click(u"cmdAnnuleren"_s);
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(SavedSpots(), (QList<int>{1, 2, 3}));
}

TEST_F(ItemDrag, ADropOnTheSamePlaceIsNotAChange) {
  OpenActive();
  DragBelow(1, 1);
  EXPECT_EQ(Spots(), (QList<int>{1, 2, 3}));
  const desktop::MessageBoxScript boxes;
  Click(u"cmdAnnuleren"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST_F(ItemDrag, ALockedItemCannotBeReordered) {
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  station_.OnCurrent(u"UPDATE tblItems SET Locked = -1 WHERE ID = 1"_s);
  Open(u"1"_s);
  DragBelow(0, 2);
  EXPECT_EQ(Spots(), (QList<int>{1, 2, 3}));
}
