// SPDX-License-Identifier: MIT
// Columns, sorting and searching by path, through the windows of the lists.
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/ListHeader.h"
#include "platform/desktop/ViewMemory.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Waiting.h"

#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using controls::LineColumn;

class Columns : public CatalogueTestInBothModes {
 protected:
  void AddTimed(int id, const QString& naam, int seconds, QDate last, int aktief = 1) {
    AddSpot({id, naam, AudioFile(u"%1.wav"_s.arg(naam)), aktief});
    station_.OnCurrent(u"UPDATE %1 SET LengteSec = %2, EindDatum = %3 WHERE ID = %4"_s.arg(
        Table(u"ItemSpots"_s), QString::number(seconds), QString::number(runtime::DayNumber(last)),
        QString::number(id)));
  }
  void AddThree() {
    AddTimed(1, u"Appel"_s, 30, {2025, 5, 1});
    AddTimed(2, u"Banaan"_s, 10, {2025, 3, 13});
    AddTimed(3, u"Citroen"_s, 20, {2025, 12, 31});
  }

  static controls::ListHeader& Header(const Form& form) { return *List(form).findChild<controls::ListHeader*>(); }
  static void Press(const Form& form, LineColumn column) {
    QTest::mouseClick(&Header(form), Qt::LeftButton, {}, Header(form).PlaceOf(column).center());
  }
  static QStringList Captions(const Form& form) {
    QStringList captions;
    for (const LineColumn column : controls::kLineColumns)
      captions += Header(form).TextOf(column);
    captions.removeAll(QString());
    return captions;
  }
  // As shown, unlike Lines.
  static QStringList Rows(const Form& form) {
    QStringList rows;
    for (int row = 0; row < List(form).ShownCount(); ++row)
      rows += List(form).Text(List(form).ShownLine(row));
    return rows;
  }
  static bool IsRead(const Form& form) {
    return WaitUntil([&] { return !Child<QLabel>(form, u"lblAantal"_s).text().endsWith(u"wordt nagekeken"_s); });
  }

  QTemporaryDir user_;
  desktop::ViewMemory memory_{user_.filePath(u"lijsten.ini"_s)};
  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(14, 32))};
};

INSTANTIATE_TEST_SUITE_P(Modes, Columns, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(Columns, EachListHasItsOwn) {
  const frmItemSpots spots(nullptr);
  const frmItems items(nullptr);
  const frmItemPingles pingles(nullptr);
  EXPECT_EQ(Captions(spots), (QStringList{u"Naam ↑"_s, u"Status"_s, u"Einddatum"_s, u"Lengte"_s}));
  EXPECT_EQ(Captions(items), (QStringList{u"Naam ↑"_s, u"Status"_s, u"Lengte"_s}));
  EXPECT_EQ(Captions(pingles), (QStringList{u"Naam ↑"_s, u"Lengte"_s}));
}

TEST_P(Columns, AClickSortsTheViewAndASecondOneReverses) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsRead(form));
  EXPECT_EQ(Rows(form), (QStringList{u"Appel"_s, u"Banaan"_s, u"Citroen"_s}));
  Press(form, LineColumn::Trailing);
  EXPECT_EQ(Rows(form), (QStringList{u"Banaan"_s, u"Citroen"_s, u"Appel"_s}));
  EXPECT_EQ(Header(form).TextOf(LineColumn::Trailing), u"Lengte ↑"_s);
  Press(form, LineColumn::Trailing);
  EXPECT_EQ(Rows(form), (QStringList{u"Appel"_s, u"Citroen"_s, u"Banaan"_s}));
  Press(form, LineColumn::Date);
  EXPECT_EQ(Rows(form), (QStringList{u"Banaan"_s, u"Appel"_s, u"Citroen"_s}));
  Press(form, LineColumn::Word);  // "verloopt" first
  EXPECT_EQ(Rows(form), (QStringList{u"Banaan"_s, u"Appel"_s, u"Citroen"_s}));
  Press(form, LineColumn::Text);
  Press(form, LineColumn::Text);
  EXPECT_EQ(Rows(form), (QStringList{u"Citroen"_s, u"Banaan"_s, u"Appel"_s}));
}

// Indexes, numbers and ListIndex are those of the query, whatever the view shows.
TEST_P(Columns, SortingIsOnlyAView) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsRead(form));
  Select(form, u"Appel"_s);
  QTest::keyClick(&List(form), Qt::Key_4, Qt::ControlModifier);
  EXPECT_EQ(Rows(form).last(), u"Appel"_s);
  EXPECT_EQ(List(form).ListIndex(), 0);
  EXPECT_EQ(List(form).ItemData(0), 1);
  EXPECT_EQ(Lines(form), (QStringList{u"Appel"_s, u"Banaan"_s, u"Citroen"_s}));
  QTest::keyClick(&List(form), Qt::Key_Up);
  EXPECT_EQ(List(form).ItemData(List(form).ListIndex()), 3);
  Click(form, u"cmdOpen"_s);
  EXPECT_EQ(visits_, QStringList{u"ItemSpotsDetail 3"_s});
  ASSERT_TRUE(IsRead(form));
  EXPECT_EQ(Rows(form).last(), u"Appel"_s);
}

TEST_P(Columns, TheChoiceIsRemembered) {
  AddThree();
  {
    frmItemSpots form(nullptr);
    Open(form);
    Press(form, LineColumn::Date);
    Press(form, LineColumn::Date);
  }
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsRead(form));
  EXPECT_EQ(Header(form).TextOf(LineColumn::Date), u"Einddatum ↓"_s);
  EXPECT_EQ(Rows(form), (QStringList{u"Citroen"_s, u"Appel"_s, u"Banaan"_s}));
}

TEST_P(Columns, SearchAndSortWorkTogether) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsRead(form));
  Press(form, LineColumn::Trailing);
  auto& search = Child<QLineEdit>(form, u"txtZoek"_s);
  QTest::keyClicks(&search, u"a"_s);
  EXPECT_EQ(Rows(form), (QStringList{u"Banaan"_s, u"Citroen"_s, u"Appel"_s}));  // "Citroen" by its path
  QTest::keyClicks(&search, u"ppel"_s);  // shorter texts may be in the name of the temporary folder
  EXPECT_EQ(Rows(form), QStringList{u"Appel"_s});
  search.clear();
  EXPECT_EQ(Rows(form), (QStringList{u"Banaan"_s, u"Citroen"_s, u"Appel"_s}));
  QTest::keyClick(&search, Qt::Key_Down);
  EXPECT_EQ(List(form).Text(List(form).ListIndex()), u"Banaan"_s);
}

TEST_P(Columns, ASearchFindsPathsToo) {
  AddSpot({1, u"Kerst"_s, u"D:\\audio\\2025\\slagroom.mp3"_s, 1});
  AddSpot({2, u"Pasen"_s, u"D:\\audio\\2024\\ei.mp3"_s, 1});
  AddPingle(1, u"Opener"_s);
  station_.OnCurrent(u"UPDATE %1 SET Path = \"D:\\j\\fanfare.wav\""_s.arg(Table(u"ItemPingles"_s)));
  frmItemSpots spots(nullptr);
  Open(spots);
  ASSERT_TRUE(IsRead(spots));
  Child<QLineEdit>(spots, u"txtZoek"_s).setText(u"SLAGROOM"_s);
  EXPECT_EQ(Lines(spots), QStringList{u"Kerst"_s});
  Child<QLineEdit>(spots, u"txtZoek"_s).setText(u"2024\\ei"_s);
  EXPECT_EQ(Lines(spots), QStringList{u"Pasen"_s});
  frmItemPingles pingles(nullptr);
  Open(pingles);
  ASSERT_TRUE(WaitUntil([&] { return !List(pingles).Details(0).toolTip.isEmpty(); }));
  Child<QLineEdit>(pingles, u"txtZoek"_s).setText(u"fanfare"_s);
  EXPECT_EQ(Lines(pingles), QStringList{u"Opener"_s});
}

TEST_P(Columns, JinglesAreSortedByLength) {
  AddPingle(1, u"A"_s);
  AddPingle(2, u"B"_s);
  AddPingle(3, u"C"_s);  // without a length: last in both orders
  station_.OnCurrent(u"UPDATE %1 SET LengteSec = 9 WHERE ID = 1"_s.arg(Table(u"ItemPingles"_s)));
  station_.OnCurrent(u"UPDATE %1 SET LengteSec = 4 WHERE ID = 2"_s.arg(Table(u"ItemPingles"_s)));
  frmItemPingles form(nullptr);
  Open(form);
  ASSERT_TRUE(WaitUntil([&] { return List(form).Details(0).trailing == u"0:09"_s; }));
  Press(form, LineColumn::Trailing);
  EXPECT_EQ(Rows(form), (QStringList{u"B"_s, u"A"_s, u"C"_s}));
  Press(form, LineColumn::Trailing);
  EXPECT_EQ(Rows(form), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
}

TEST_P(Columns, ItemsAreSortedByStatus) {
  AddItem(1, u"Avond"_s, 0);
  AddItem(2, u"Ochtend"_s);  // without spots: silent
  frmItems form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  ASSERT_TRUE(IsRead(form));
  Press(form, LineColumn::Word);
  EXPECT_EQ(Rows(form), (QStringList{u"Ochtend"_s, u"Avond"_s}));
}

TEST_P(Columns, TheCountIsNeverCut) {
  AddThree();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(IsRead(form));
  auto& count = Child<QLabel>(form, u"lblAantal"_s);
  count.setText(
      u"51.200 item-spots: 41.000 lopen (1.200 verlopen binnen 7 dagen), 6.100 beginnen later, 4.000 voorbij of niet "
      "aktief, 100 zonder bestand, samen 420:21:06"_s);
  form.resize(460, 437);
  QCoreApplication::processEvents();
  EXPECT_EQ(form.width(), 460) << "the text may not widen the window";
  const QRect needed =
      count.fontMetrics().boundingRect(QRect(0, 0, count.width(), 1000), Qt::TextWordWrap, count.text());
  EXPECT_GE(count.height(), needed.height());
}
