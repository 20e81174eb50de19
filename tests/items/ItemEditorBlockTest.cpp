// SPDX-License-Identifier: MIT
// The block in the item editor: file checks, spot states, and the block passed to the listening window.
#include "data/forms/Screens.h"
#include "export/playout/BlockToHear.h"
#include "platform/runtime/Clock.h"
#include "tests/items/ItemEditor.h"
#include "tests/support/Waiting.h"

#include <QFile>

using namespace Qt::StringLiterals;
using testing_support::Child;

namespace {

class ItemEditorBlock : public ItemEditor {
 protected:
  ItemEditorBlock() {
    RegisterScreen(Screen::Beluisteren, [this](QWidget*) {
      heard_ = TakeBlockToHear();
      ++times_;
    });
  }
  ~ItemEditorBlock() override { RegisterScreen(Screen::Beluisteren, {}); }

  QString FileText() const { return Child<QLabel>(*editor_, u"lblOpt2Bestand"_s).text(); }
  bool SaysOfFile(const QString& text) const {
    return WaitUntil([&] { return FileText().startsWith(text); });
  }
  void MakeFile(const QString& name) const {
    QFile file(station_.AudioFolder() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  void FillPattern() const {
    Option(u"opt2"_s).click();
    Edit(u"txtOpt2Directory"_s).setText(station_.AudioFolder());
    Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"weer"_s);
    Combo(u"cboOpt2VariabelNaamGedeelte"_s).SetListIndex(3);
    Edit(u"txtOpt2FileExtensie"_s).setText(u"wav"_s);
  }

  Block heard_;
  int times_ = 0;
  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(12, 0))};
};

}  // namespace

TEST_F(ItemEditorBlock, TheUnsavedBlockIsPlayed) {
  OpenNew();
  FillListItem();
  Edit(u"txtNaam"_s).setText(u"Nog niet bewaard"_s);
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"2"_s);
  Check(u"chkRandomizeMeerdereSpots"_s).setChecked(true);
  Check(u"chkOpenerPingle"_s).setChecked(true);
  Combo(u"cboOpenerPingle"_s).SetListIndex(0);
  Button(u"cmdBeluisteren"_s).click();
  ASSERT_EQ(times_, 1);
  EXPECT_EQ(heard_.naam, u"Nog niet bewaard"_s);
  EXPECT_EQ(heard_.filling, Block::Filling::List);
  EXPECT_EQ(static_cast<int>(heard_.spots.size()), List().ListCount());
  EXPECT_EQ(heard_.spots.at(0).id, List().ItemData(0));
  EXPECT_TRUE(heard_.several && heard_.random);
  EXPECT_EQ(heard_.count, 2);
  ASSERT_TRUE(heard_.opener);
  EXPECT_EQ(heard_.opener->id, Combo(u"cboOpenerPingle"_s).ItemData(0));
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_TRUE(IsOpen());
}

TEST_F(ItemEditorBlock, CtrlBAlsoPlaysAPattern) {
  OpenNew();
  FillPattern();
  Mix().SetValue(1500);
  editor_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(editor_.get()));
  QTest::keyClick(editor_.get(), Qt::Key_B, Qt::ControlModifier);
  ASSERT_EQ(times_, 1);
  EXPECT_EQ(heard_.filling, Block::Filling::Files);
  EXPECT_EQ(heard_.patternMixMs, 1500);
  EXPECT_TRUE(NumberedFileName(heard_.pattern, runtime::Now(), 1).endsWith(u"weer03.wav"_s));
}

TEST_F(ItemEditorBlock, TheFileOfTheMomentIsCheckedNextToTheExample) {
  OpenNew();
  FillPattern();
  EXPECT_TRUE(SaysOfFile(u"Dit bestand bestaat nu niet"_s)) << FileText().toStdString();
  MakeFile(u"sneeuw03.wav"_s);
  const QString example = Edit(u"txtOpt2Voorbeeld"_s).text();
  Edit(u"txtOpt2VastNaamGedeelte"_s).setText(u"sneeuw"_s);
  EXPECT_TRUE(SaysOfFile(u"Dit bestand bestaat nu."_s)) << FileText().toStdString();
  EXPECT_NE(Edit(u"txtOpt2Voorbeeld"_s).text(), example);
  EXPECT_TRUE(Edit(u"txtOpt2Voorbeeld"_s).text().endsWith(u"sneeuw03.wav"_s)) << "its text stays the name alone";
}

TEST_F(ItemEditorBlock, NumberedFilesAreCounted) {
  OpenNew();
  FillPattern();
  MakeFile(u"weer03-1.wav"_s);
  MakeFile(u"weer03-3.wav"_s);
  Option(u"optMeerdereSpots"_s).click();
  Edit(u"txtAantalSpots"_s).setText(u"3"_s);
  EXPECT_TRUE(SaysOfFile(u"2 van 3 bestanden bestaan nu."_s)) << FileText().toStdString();
  Option(u"opt1"_s).click();
  EXPECT_TRUE(SaysOfFile(QString())) << FileText().toStdString();
}

TEST_F(ItemEditorBlock, EachListedSpotHasTheMarkOfItsState) {
  MakeFile(u"hier.wav"_s);
  const QString there = station_.AudioFolder() + u"/hier.wav"_s;
  station_.OnServer(
      u"UPDATE tblItemSpots SET Aktief = 1, Path = \"%1\", StartDatum = NULL, EindDatum = NULL"_s.arg(there));
  station_.OnServer(u"UPDATE tblItemSpots SET EindDatum = \"10-03-2025\" WHERE ID = 2"_s);
  station_.OnServer(u"UPDATE tblItemSpots SET Path = \"%1.weg\" WHERE ID = 3"_s.arg(there));
  InsertListItem(1, u"Blok"_s, {1, 2, 3});
  Open(u"1"_s);
  EXPECT_EQ(List().Details(0).mark, controls::LineMark::Circle);
  EXPECT_EQ(List().Details(1).mark, controls::LineMark::Square);
  EXPECT_EQ(List().Details(1).word, u"verlopen op 10-03-2025"_s);
  EXPECT_TRUE(WaitUntil([&] { return List().Details(2).mark == controls::LineMark::Cross; }));
  EXPECT_EQ(List().Details(2).word, u"geluidsbestand ontbreekt"_s);
  EXPECT_FALSE(editor_->IsDirty());
}
