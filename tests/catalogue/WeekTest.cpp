// SPDX-License-Identifier: MIT
// The week view and the list of missing files: what runs on which day, and the way to the record.
#include "catalogue/frmOntbreekt.h"
#include "catalogue/frmWeek.h"
#include "data/Globals.h"
#include "data/forms/Screens.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/Clock.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Waiting.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using controls::ListBox;

class WeekView : public CatalogueTestInBothModes {
 protected:
  WeekView() {
    AddSpot({1, u"Altijd"_s, AudioFile(u"a.wav"_s), 1});
    AddSpot({2, u"Donderdag"_s, AudioFile(u"a.wav"_s), 1});
    AddSpot({3, u"Uit"_s, AudioFile(u"a.wav"_s), 0});
    SetDays(2, QDate(2025, 3, 20), QDate(2025, 3, 21));
    AddItem(4, u"Blok van donderdag"_s);
    Link(4, 1, 2);
  }

  // A date is stored as the number of days since 30-12-1899.
  void SetDays(int id, QDate from, QDate to) {
    const auto number = [](QDate day) { return QString::number(QDate(1899, 12, 30).daysTo(day)); };
    station_.OnCurrent(u"UPDATE %1 SET StartDatum = %2, EindDatum = %3 WHERE ID = %4"_s.arg(
        Table(u"ItemSpots"_s), number(from), number(to), QString::number(id)));
  }

  void Load(frmWeek& form) {
    form.Form_Load();
    form.show();
    form.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return form.IsPlanned(); }));
  }

  static ListBox& Days(const Form& form) { return Child<ListBox>(form, u"lstDagen"_s); }
  static ListBox& Day(const Form& form) { return Child<ListBox>(form, u"lstDag"_s); }
  static QStringList Texts(const ListBox& list) {
    QStringList texts;
    for (int line = 0; line < list.ListCount(); ++line)
      texts += list.Text(line) + u"|"_s + list.Details(line).word;
    return texts;
  }

  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(14, 32))};  // a Tuesday
};

INSTANTIATE_TEST_SUITE_P(Modes, WeekView, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(WeekView, TellsWhatRunsNextThursdayWithOneMoreClick) {
  frmWeek form(nullptr);
  Load(form);
  ASSERT_EQ(Days(form).ListCount(), 14);
  EXPECT_EQ(Days(form).Text(1), u"dinsdag 11 maart (vandaag)"_s);
  EXPECT_EQ(Days(form).ListIndex(), 1);
  EXPECT_EQ(Texts(Day(form)), (QStringList{u"Blok van donderdag|item stil"_s, u"Altijd|"_s}));
  Days(form).SetListIndex(10);
  EXPECT_EQ(Days(form).Text(10), u"donderdag 20 maart"_s);
  EXPECT_EQ(Days(form).Details(10).word, u"2 lopen, 1 begint"_s);
  EXPECT_EQ(Days(form).Details(11).word, u"2 lopen, 1 eindigt"_s);
  EXPECT_EQ(Days(form).Details(12).word, u"1 loopt, 1 item stil"_s);
  EXPECT_EQ(Texts(Day(form)), (QStringList{u"Donderdag|begint"_s, u"Altijd|"_s}));
}

TEST_P(WeekView, AnItemSpotWithoutItsFileDoesNotRun) {
  AddSpot({5, u"Weg"_s, AudioFile(u"a.wav"_s) + u".weg"_s, 1});
  AddSpot({6, u"Leeg"_s, QString(), 1});
  AddSpot({7, u"Weg en uit"_s, AudioFile(u"a.wav"_s) + u".weg"_s, 0});
  SetDays(6, QDate(2025, 3, 12), QDate(2025, 3, 12));
  frmWeek form(nullptr);
  Load(form);
  EXPECT_EQ(Days(form).Details(1).word, u"1 loopt, 1 zonder bestand, 1 item stil"_s);
  EXPECT_EQ(Days(form).Details(2).word, u"1 loopt, 2 zonder bestand, 1 item stil"_s);
  EXPECT_EQ(Texts(Day(form)),
            (QStringList{u"Blok van donderdag|item stil"_s, u"Weg|geluidsbestand ontbreekt"_s, u"Altijd|"_s}));
}

// In parts, so that the window accepts keys meanwhile.
TEST_P(WeekView, ADayWithVeryManyLinesIsShownCompletely) {
  const QString file = AudioFile(u"a.wav"_s);
  constexpr int kMany = 1200;
  for (int id = 10; id < 10 + kMany; ++id)
    AddSpot({id, u"Spot %1"_s.arg(id), file, 1});
  frmWeek form(nullptr);
  Load(form);
  EXPECT_LT(Day(form).ListCount(), kMany);
  ASSERT_TRUE(WaitUntil([&] { return Day(form).ListCount() == kMany + 2; }));
  EXPECT_EQ(Day(form).Text(0), u"Blok van donderdag"_s);
  EXPECT_EQ(Day(form).Text(kMany + 1), u"Spot 999"_s);  // by name
  Days(form).SetListIndex(10);
  Days(form).SetListIndex(12);  // the first filling has not ended
  ASSERT_TRUE(WaitUntil([&] { return Day(form).ListCount() == kMany + 2; }));
}

TEST_P(WeekView, GoesToOtherWeeksAndBack) {
  frmWeek form(nullptr);
  Load(form);
  Child<QPushButton>(form, u"cmdVolgende"_s).click();
  ASSERT_TRUE(WaitUntil([&] { return form.IsPlanned() && Days(form).Text(0) == u"maandag 17 maart"_s; }));
  EXPECT_EQ(Days(form).ListCount(), 14);
  Child<QPushButton>(form, u"cmdVandaag"_s).click();
  ASSERT_TRUE(WaitUntil([&] { return form.IsPlanned() && Days(form).Text(0) == u"maandag 10 maart"_s; }));
  EXPECT_EQ(Days(form).ListIndex(), 1);
}

TEST_P(WeekView, EnterOpensTheRecordOfALine) {
  QStringList opened;
  RegisterScreen(Screen::ItemsDetail, [&](QWidget*) { opened += u"item "_s + global.gstrSelectedID; });
  RegisterScreen(Screen::ItemSpotsDetail, [&](QWidget*) { opened += u"spot "_s + global.gstrSelectedID; });
  frmWeek form(nullptr);
  Load(form);
  Day(form).setFocus();
  Day(form).SetListIndex(0);
  QTest::keyClick(&Day(form), Qt::Key_Return);
  ASSERT_TRUE(WaitUntil([&] { return form.IsPlanned(); }));
  Day(form).SetListIndex(1);
  QTest::keyClick(&Day(form), Qt::Key_Return);
  EXPECT_EQ(opened, (QStringList{u"item 4"_s, u"spot 1"_s}));
  ASSERT_TRUE(WaitUntil([&] { return form.IsPlanned(); }));
}

TEST_P(WeekView, ACatalogueThatCannotBeReadGivesItsReason) {
  const Globals kept = global;
  global.localDatabasePath = global.serverDatabasePath = u"Q:\\weg.mdb"_s;
  frmWeek form(nullptr);
  Load(form);
  global = kept;
  EXPECT_TRUE(Days(form).EmptyText().contains(u"Q:"_s)) << Days(form).EmptyText().toStdString();
  EXPECT_EQ(Day(form).ListCount(), 0);
}

class MissingFiles : public WeekView {};

INSTANTIATE_TEST_SUITE_P(Modes, MissingFiles, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(MissingFiles, AreListedForSpotsJinglesAndFilesFoundByTheirName) {
  AddSpot({5, u"Weg"_s, AudioFile(u"a.wav"_s) + u".weg"_s, 1});
  station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, Path, Aktief) VALUES (6, \"Jingle\", \"%2\", 1)"_s.arg(
      Table(u"ItemPingles"_s), AudioFile(u"a.wav"_s) + u".jingle"_s));
  AddSpot({9, u"Ver weg"_s, u"Q:\\ver weg.wav"_s, 1});
  AddItem(7, u"Nieuws"_s);
  station_.OnCurrent(
      u"UPDATE %1 SET ItemSpotsOptID = 2, Opt2Directory = \"%2\", Opt2VastNaamGedeelte = \"nieuws\", "
      u"Opt2VariabelNaamGedeelte = 1, Opt2FormatGedeelte = \"d\", Opt2FileExtensie = \"wav\" WHERE ID = 7"_s.arg(
          Table(u"Items"_s), AudioFile(u"a.wav"_s).section(u'\\', 0, -2)));
  QStringList opened;
  RegisterScreen(Screen::ItemPinglesDetail, [&](QWidget*) { opened += u"jingle "_s + global.gstrSelectedID; });
  frmOntbreekt form(nullptr);
  form.Form_Load();
  form.show();
  ASSERT_TRUE(WaitUntil([&] { return form.IsFinished(); }));
  auto& list = Child<ListBox>(form, u"lstOntbreekt"_s);
  EXPECT_EQ(Texts(list), (QStringList{u"Jingle|jingle"_s, u"Nieuws|item"_s, u"Weg|item-spot"_s}));
  EXPECT_EQ(Child<QLabel>(form, u"lblAantal"_s).text(),
            u"3 geluidsbestanden ontbreken; niet nagekeken, want de schijf of map is niet bereikbaar: 1"_s);
  list.SetListIndex(0);
  QTest::keyClick(&list, Qt::Key_Return);
  EXPECT_EQ(opened, QStringList{u"jingle 6"_s});
  ASSERT_TRUE(WaitUntil([&] { return form.IsFinished(); }));
}

TEST_P(MissingFiles, WithoutAnyTheListSaysSo) {
  frmOntbreekt form(nullptr);
  form.Form_Load();
  ASSERT_TRUE(WaitUntil([&] { return form.IsFinished(); }));
  EXPECT_EQ(Child<ListBox>(form, u"lstOntbreekt"_s).ListCount(), 0);
  EXPECT_EQ(Child<ListBox>(form, u"lstOntbreekt"_s).EmptyText(), u"Er ontbreekt geen enkel geluidsbestand."_s);
}
