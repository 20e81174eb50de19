// SPDX-License-Identifier: MIT
#include "data/Messages.h"
#include "items/FolderList.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/PointerWatch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using testing_support::Child;
using testing_support::ModalDriver;
using testing_support::PointerWatch;

namespace {

// The buttons of the item editor.
class ItemButtons : public ItemEditor {
 protected:
  ItemButtons() {
    QDir(drive_.path()).mkpath(u"Audio"_s);
    runtime::SetDrives({{u"D"_s, drive_.path()}, {u"Z"_s, u"/"_s}});
  }
  ~ItemButtons() override { runtime::SetDrives({}); }

  // Opens the folder chooser, selects D:\Audio and presses one of its buttons.
  void PickFolder(const QString& button) const {
    ModalDriver driver;
    driver.OnNext(u"frmDirectory"_s, [&](QDialog& dialog) {
      Child<FolderList>(dialog, u"lstDir"_s).SetListIndex(1);
      testing_support::Click(dialog, button);
    });
    Click(u"cmdDirectory"_s);
    EXPECT_TRUE(driver.Done());
  }
  void OpenPatternItem() {
    InsertListItem(1, u"Blok"_s, {});
    station_.OnServer(
        u"UPDATE tblItems SET ItemSpotsOptID = 2, Opt2Directory = \"D:\\Audio\", "
        u"Opt2VastNaamGedeelte = \"blok\", Opt2FileExtensie = \"wav\""_s);
    Open(u"1"_s);
  }
  // Opens the entry dialog with this button and cancels it.
  void CancelEntry(const QString& button) const {
    ModalDriver driver;
    driver.OnNext(u"frmItemsDetailOpt1"_s, [](QDialog& dialog) { testing_support::Click(dialog, u"cmdAnnuleren"_s); });
    Click(button);
    EXPECT_TRUE(driver.Done());
  }

  QTemporaryDir drive_;
};

}  // namespace

TEST_F(ItemButtons, AChosenFolderIsFilledInAndIsAChange) {
  OpenNew();
  Option(u"opt2"_s).click();
  PickFolder(u"cmdOk"_s);
  EXPECT_EQ(Edit(u"txtOpt2Directory"_s).text(), u"D:\\Audio"_s);
  EXPECT_TRUE(editor_->IsDirty());
}

TEST_F(ItemButtons, ACancelledFolderChooserIsNotAChange) {
  OpenPatternItem();
  PickFolder(u"cmdAnnuleren"_s);
  EXPECT_EQ(Edit(u"txtOpt2Directory"_s).text(), u"D:\\Audio"_s);
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(ItemButtons, TheSameFolderChosenAgainIsAChange) {
  OpenPatternItem();
  PickFolder(u"cmdOk"_s);
  EXPECT_EQ(Edit(u"txtOpt2Directory"_s).text(), u"D:\\Audio"_s);
  EXPECT_TRUE(editor_->IsDirty());
}

TEST_F(ItemButtons, TheEntryDialogIsAChangeEvenWhenCancelled) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  CancelEntry(u"cmdOpt1Toevoegen"_s);
  EXPECT_TRUE(editor_->IsDirty());
  Open(u"1"_s);
  List().SetListIndex(0);
  EXPECT_FALSE(editor_->IsDirty());
  CancelEntry(u"cmdOpt1Wijzigen"_s);
  EXPECT_TRUE(editor_->IsDirty());
}

TEST_F(ItemButtons, TheEntryDialogHasTheArrowPointer) {
  InsertListItem(1, u"Blok"_s, {1});
  Open(u"1"_s);
  List().SetListIndex(0);
  const auto look = [](QDialog& dialog) {
    const QCursor* cursor = QGuiApplication::overrideCursor();  // set above the hourglass
    EXPECT_TRUE(cursor != nullptr && cursor->shape() == Qt::ArrowCursor);
    dialog.close();
  };
  ModalDriver driver;
  driver.OnNext(u"frmItemsDetailOpt1"_s, look);
  driver.OnNext(u"frmItemsDetailOpt1"_s, look);
  Click(u"cmdOpt1Wijzigen"_s);
  Click(u"cmdOpt1Toevoegen"_s);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ItemButtons, OpeningAndSavingShowTheHourglass) {
  station_.LoseServer();
  const PointerWatch watch;
  OpenNew();
  EXPECT_EQ(watch.UnderHourglass(), QStringList{u"FillCboPingles"_s});
  station_.FindServer();
  FillListItem();
  Edit(u"txtNaam"_s).setText(u"Blok \"A\""_s);
  Click(u"cmdOk"_s);
  EXPECT_EQ(watch.UnderHourglass(), (QStringList{u"FillCboPingles"_s, u"Insert_tblItems"_s}));
}

TEST_F(ItemButtons, DeleteInTheListRemovesTheSelectedEntry) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  editor_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
  List().setFocus();
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(List().ListCount(), 2);
  List().SetListIndex(0);
  QTest::keyClick(&List(), Qt::Key_Delete);
  ASSERT_EQ(List().ListCount(), 1);
  EXPECT_EQ(List().ItemData(0), 2);
  EXPECT_TRUE(editor_->IsDirty());
}

TEST_F(ItemButtons, DeleteRemovesNothingFromALockedItem) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  station_.OnServer(u"UPDATE tblItems SET Locked = -1"_s);
  Open(u"1"_s);
  editor_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
  List().setFocus();
  List().SetListIndex(0);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_EQ(List().ListCount(), 2);
}

TEST_F(ItemButtons, CancellingAndAnsweringNoClosesWithoutSaving) {
  InsertListItem(1, u"Blok"_s, {1, 2});
  Open(u"1"_s);
  Edit(u"txtNaam"_s).setText(u"Anders"_s);
  List().SetListIndex(0);
  Click(u"cmdOpt1Verwijderen"_s);
  const desktop::MessageBoxScript boxes({kAnswerNo});
  Click(u"cmdAnnuleren"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().text, GetMsgElements(2000).text);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(station_.ServerRows(u"SELECT Naam FROM tblItems"_s).Field(u"Naam"_s).toString(), u"Blok"_s);
  EXPECT_EQ(station_.ServerRows(u"SELECT ItemID FROM tblItemsItemSpots"_s).RecordCount(), 2);
}
