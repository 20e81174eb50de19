// SPDX-License-Identifier: MIT
// The marks of blocks in the item list, and opening the listening window from there.
#include "catalogue/frmItems.h"
#include "data/forms/Screens.h"
#include "export/playout/BlockToHear.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/Clock.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Waiting.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <stdexcept>

using namespace Qt::StringLiterals;
using controls::LineMark;

class ItemMarks : public CatalogueTestInBothModes {
 protected:
  ItemMarks() {
    AddSpot({1, u"Goed"_s, AudioFile(u"hier.wav"_s), 1});
    AddSpot({2, u"Uit"_s, AudioFile(u"hier.wav"_s), 0});
    AddSpot({3, u"Weg"_s, AudioFile(u"hier.wav"_s) + u".weg"_s, 1});
    AddBlock(1, u"heel"_s, {1});
    AddBlock(2, u"stil"_s, {3});
    AddBlock(3, u"met opmerking"_s, {1, 2});
    AddBlock(4, u"te kort"_s, {1, 2});
    station_.OnCurrent(u"UPDATE %1 SET OptMeerdereSpots = -1, AantalSpots = 2, MaxAantalSpots = 2 WHERE ID = 4"_s.arg(
        Table(u"Items"_s)));
  }

  void AddBlock(int id, const QString& naam, const QList<int>& spots) {
    AddItem(id, naam);
    int order = 0;
    for (const int spot : spots) {
      station_.OnCurrent(u"INSERT INTO %1 (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, %3, %4)"_s.arg(
          Table(u"ItemsItemSpots"_s), QString::number(id), QString::number(++order), QString::number(spot)));
    }
  }

  static const controls::LineDetails& DetailsOf(const Form& form, const QString& line) {
    for (int index = 0; index < List(form).ListCount(); ++index) {
      if (List(form).Text(index) == line) return List(form).Details(index);
    }
    throw std::runtime_error("no such line");
  }
  static bool AreMarked(const Form& form) {
    return WaitUntil([&] { return Child<QLabel>(form, u"lblAantal"_s).text().contains(u"nu stil of te kort"_s); });
  }

  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(14, 32))};
};

INSTANTIATE_TEST_SUITE_P(Modes, ItemMarks, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(ItemMarks, EachBlockHasItsMarkLengthAndReason) {
  frmItems form(nullptr);
  Open(form);
  ASSERT_TRUE(AreMarked(form));
  EXPECT_EQ(DetailsOf(form, u"heel"_s).mark, LineMark::Circle);
  EXPECT_EQ(DetailsOf(form, u"heel"_s).word, u"1 spot"_s);
  EXPECT_EQ(DetailsOf(form, u"heel"_s).trailing, u"0:32"_s);
  EXPECT_EQ(DetailsOf(form, u"stil"_s).mark, LineMark::Cross);
  EXPECT_EQ(DetailsOf(form, u"stil"_s).word, u"stil: geluidsbestand ontbreekt"_s);
  EXPECT_EQ(DetailsOf(form, u"stil"_s).trailing, QString());
  EXPECT_EQ(DetailsOf(form, u"met opmerking"_s).mark, LineMark::Triangle);
  EXPECT_EQ(DetailsOf(form, u"met opmerking"_s).word, u"item-spot: niet aktief"_s);
  EXPECT_EQ(DetailsOf(form, u"te kort"_s).word, u"1 van 2 spots"_s);
  EXPECT_EQ(DetailsOf(form, u"te kort"_s).toolTip, u"1 van 2 spots (Uit: niet aktief)"_s);
  EXPECT_EQ(Child<QLabel>(form, u"lblAantal"_s).text(), u"4 items, 2 nu stil of te kort"_s);
}

TEST_P(ItemMarks, TheSelectedBlockIsPassedToTheListeningWindow) {
  QString heard;
  RegisterScreen(Screen::Beluisteren, [&](QWidget*) { heard = TakeBlockToHear().naam; });
  frmItems form(nullptr);
  Open(form);
  form.show();
  EXPECT_FALSE(Child<QPushButton>(form, u"cmdBeluisteren"_s).isEnabled()) << "nothing is selected";
  ASSERT_TRUE(List(form).SelectWhereItemData(4));
  EXPECT_TRUE(Child<QPushButton>(form, u"cmdBeluisteren"_s).isEnabled());
  Click(form, u"cmdBeluisteren"_s);
  EXPECT_EQ(heard, u"te kort"_s);
  ASSERT_TRUE(List(form).SelectWhereItemData(1));
  form.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  QTest::keyClick(&form, Qt::Key_B, Qt::ControlModifier);
  EXPECT_EQ(heard, u"heel"_s);
  RegisterScreen(Screen::Beluisteren, {});
}
