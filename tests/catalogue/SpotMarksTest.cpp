// SPDX-License-Identifier: MIT
#include "catalogue/SpotStateLoader.h"
#include "catalogue/frmItemSpots.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/ListBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Waiting.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionComboBox>

#include <stdexcept>

using namespace Qt::StringLiterals;
using controls::LineMark;

class SpotMarks : public CatalogueTestInBothModes {
 protected:
  static inline const QDate kToday{2025, 3, 11};

  void AddDated(int id, const QString& naam, const QString& path, QDate first, QDate last, int aktief = 1) {
    AddSpot({id, naam, path, aktief});
    station_.OnCurrent(u"UPDATE %1 SET StartDatum = %2, EindDatum = %3 WHERE ID = %4"_s.arg(
        Table(u"ItemSpots"_s), QString::number(runtime::DayNumber(first)), QString::number(runtime::DayNumber(last)),
        QString::number(id)));
  }

  // One spot in each state, named after it.
  void AddAllStates() {
    const QString there = AudioFile(u"hier.wav"_s);
    AddDated(1, u"loopt"_s, there, kToday.addDays(-9), kToday.addDays(40));
    AddDated(2, u"begint"_s, there, kToday.addDays(20), kToday.addDays(40));
    AddDated(3, u"verloopt"_s, there, kToday.addDays(-9), kToday.addDays(3));
    AddDated(4, u"verlopen"_s, there, kToday.addDays(-9), kToday.addDays(-2));
    AddDated(5, u"ontbreekt"_s, there + u".weg"_s, kToday.addDays(-9), kToday.addDays(40));
    AddDated(6, u"uit"_s, there, kToday.addDays(-9), kToday.addDays(40), 0);
  }

  bool FilesAreSeen(const Form& form) {
    return WaitUntil([&] { return DetailsOf(form, u"ontbreekt"_s).mark == LineMark::Cross; });
  }

  static const controls::LineDetails& DetailsOf(const Form& form, const QString& line) {
    for (int index = 0; index < List(form).ListCount(); ++index) {
      if (List(form).Text(index) == line) return List(form).Details(index);
    }
    throw std::runtime_error("no such line");
  }

  static QString Count(const Form& form) { return Child<QLabel>(form, u"lblAantal"_s).text(); }

  static bool IsCounted(const Form& form) {
    return WaitUntil([&] { return !Count(form).endsWith(u"wordt nagekeken"_s); });
  }

  runtime::ClockScope clock_{QDateTime(kToday, QTime(14, 32))};
};

INSTANTIATE_TEST_SUITE_P(Modes, SpotMarks, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(SpotMarks, EachStateHasItsMarkAndWordsAndTheNameIsUnchanged) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  Click(form, u"chkNietAktieve"_s);
  ASSERT_TRUE(FilesAreSeen(form));
  EXPECT_EQ(DetailsOf(form, u"loopt"_s).mark, LineMark::Circle);
  EXPECT_EQ(DetailsOf(form, u"loopt"_s).word, u"loopt t/m 20-04-2025"_s);
  EXPECT_EQ(DetailsOf(form, u"loopt"_s).trailing, u"0:32"_s);
  EXPECT_EQ(DetailsOf(form, u"begint"_s).mark, LineMark::Clock);
  EXPECT_EQ(DetailsOf(form, u"begint"_s).word, u"begint 31-03-2025"_s);
  EXPECT_EQ(DetailsOf(form, u"verloopt"_s).mark, LineMark::Triangle);
  EXPECT_EQ(DetailsOf(form, u"verlopen"_s).mark, LineMark::Square);
  EXPECT_EQ(DetailsOf(form, u"ontbreekt"_s).word, u"geluidsbestand ontbreekt"_s);
  EXPECT_EQ(DetailsOf(form, u"uit"_s).mark, LineMark::Dash);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(SpotMarks, CountLineShowsTheStates) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_EQ(Count(form), u"5 item-spots, wordt nagekeken"_s);
  Click(form, u"chkNietAktieve"_s);
  ASSERT_TRUE(FilesAreSeen(form));
  ASSERT_TRUE(IsCounted(form));
  EXPECT_EQ(Count(form),
            u"6 item-spots: 2 lopen (1 verloopt binnen 7 dagen), 1 begint later, 2 voorbij of niet aktief, "
            u"1 zonder bestand, samen 3:12"_s);
}

TEST_P(SpotMarks, CountLineHasTheTotalLengthOfVisibleLines) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  const auto setLength = [&](int id, int seconds) {
    station_.OnCurrent(u"UPDATE %1 SET LengteSec = %2 WHERE ID = %3"_s.arg(Table(u"ItemSpots"_s)).arg(seconds).arg(id));
  };
  setLength(1, 3600);
  setLength(2, 65);
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_TRUE(WaitUntil([&] { return Count(form).endsWith(u", samen 1:02:41"_s); })) << Count(form).toStdString();
  Child<QLineEdit>(form, u"txtZoek"_s).setText(u"begint"_s);
  EXPECT_EQ(Count(form), u"1 van 5 item-spots, samen 1:05"_s);
}

TEST_P(SpotMarks, MarksFollowARefill) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  station_.OnCurrent(u"UPDATE %1 SET EindDatum = %2 WHERE ID = 1"_s.arg(
      Table(u"ItemSpots"_s), QString::number(runtime::DayNumber(kToday.addDays(1)))));
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_TRUE(WaitUntil([&] { return DetailsOf(form, u"loopt"_s).mark == LineMark::Triangle; }));
}

TEST_P(SpotMarks, MissingFileRemainsMarkedDuringARefill) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(FilesAreSeen(form));
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_TRUE(WaitUntil([&] { return DetailsOf(form, u"ontbreekt"_s).mark != LineMark::None; }));
  EXPECT_EQ(DetailsOf(form, u"ontbreekt"_s).mark, LineMark::Cross);
}

TEST_P(SpotMarks, RestoredFileIsRecognisedAfterARefill) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(FilesAreSeen(form));
  AudioFile(u"hier.wav.weg"_s);
  QTest::keyClick(&form, Qt::Key_F5);
  EXPECT_TRUE(WaitUntil([&] { return DetailsOf(form, u"ontbreekt"_s).mark == LineMark::Circle; }));
}

TEST_P(SpotMarks, UnreachableFolderGivesNoMarkAndNoBox) {
  AddSpot({1, u"ver weg"_s, u"Q:\\spots\\a.wav"_s, 1});
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(WaitUntil([&] { return DetailsOf(form, u"ver weg"_s).toolTip.contains(u"niet bereikbaar"_s); }));
  EXPECT_EQ(DetailsOf(form, u"ver weg"_s).mark, LineMark::Circle);
  EXPECT_TRUE(boxes_.Shown().empty());
}

// In a station's own database the fields for the marks may have another type: then there are no marks and no box.
TEST_P(SpotMarks, UnreadableStatesLeaveTheListWithoutMarks) {
  AddSpot({1, u"spot"_s, {}, 1});
  SpotStateLoader survey;
  const QString local = global.localDatabasePath;
  const QString server = global.serverDatabasePath;
  global.localDatabasePath = global.serverDatabasePath = u"Q:\\weg.mdb"_s;
  int ended = 0;
  QObject::connect(&survey, &SpotStateLoader::finished, [&ended] { ++ended; });
  survey.Start();
  global.localDatabasePath = local;
  global.serverDatabasePath = server;
  ASSERT_TRUE(WaitUntil([&] { return survey.IsFinished(); }));
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(survey.IsRead());
  EXPECT_EQ(survey.Find(1), nullptr);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(SpotMarks, SurveyCountsEveryState) {
  AddAllStates();
  SpotStateLoader survey;
  survey.Start();
  EXPECT_FALSE(survey.IsRead());
  ASSERT_TRUE(WaitUntil([&] { return survey.IsFinished(); }));
  EXPECT_EQ(CountIn(SpotView::Alle, survey.Counts()), 6);
  EXPECT_EQ(CountIn(SpotView::ZonderBestand, survey.Counts()), 1);
  EXPECT_EQ(CountIn(SpotView::LopenVandaag, survey.Counts()), 2);
}

TEST_P(SpotMarks, ListCanBeFilteredByStateWithoutReadingAgain) {
  AddAllStates();
  frmItemSpots form(nullptr);
  form.ShowOnly(SpotView::ZonderBestand);
  Open(form);
  ASSERT_TRUE(WaitUntil([&] { return !Lines(form).isEmpty(); }));
  EXPECT_EQ(Lines(form), QStringList{u"ontbreekt"_s});
  ASSERT_TRUE(IsCounted(form));
  EXPECT_EQ(Count(form), u"1 van 5 item-spots, samen 0:32"_s);
  auto& choice = Child<controls::ComboBox>(form, u"cboToestand"_s);
  EXPECT_TRUE(choice.isVisible());
  choice.SelectWhereItemData(static_cast<qint64>(SpotView::Alle));
  EXPECT_EQ(Lines(form).size(), 5);
}

TEST_P(SpotMarks, StateChoiceListsEveryState) {
  frmItemSpots form(nullptr);
  form.ShowOnly(SpotView::VerlopenBinnenkort);
  Open(form);
  auto& choice = Child<controls::ComboBox>(form, u"cboToestand"_s);
  QStyleOptionComboBox option;
  option.initFrom(&choice);
  option.editable = choice.isEditable();
  const QRect text =
      choice.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &choice);
  for (int state = 0; state < choice.ListCount(); ++state)
    EXPECT_GE(text.width(), choice.fontMetrics().horizontalAdvance(choice.Text(state))) << state;
}

TEST_P(SpotMarks, StateChoiceHidesTheSelectedLineAndTheButtonsFollow) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  Select(form, u"loopt"_s);
  form.ShowOnly(SpotView::VerlopenBinnenkort);
  EXPECT_TRUE(WaitUntil([&] { return Lines(form) == QStringList{u"verloopt"_s}; }));
  EXPECT_FALSE(Enabled(form, u"cmdOpen"_s));
  EXPECT_FALSE(Enabled(form, u"cmdDesaktiveer"_s));
}

TEST_P(SpotMarks, StateWithoutSpotsShowsAText) {
  AddDated(1, u"loopt"_s, AudioFile(u"hier.wav"_s), kToday.addDays(-9), kToday.addDays(40));
  frmItemSpots form(nullptr);
  form.ShowOnly(SpotView::ZonderBestand);
  Open(form);
  ASSERT_TRUE(WaitUntil([&] { return List(form).EmptyText().startsWith(u"Geen item-spots met de status"_s); }));
  EXPECT_EQ(List(form).EmptyText(),
            u"Geen item-spots met de status ‘Zonder geluidsbestand’.\nKies ‘Alle statussen’ om alles te zien."_s);
}

TEST_P(SpotMarks, TheStateChoiceIsAlwaysThere) {
  AddAllStates();
  frmItemSpots form(nullptr);
  Open(form);
  auto& choice = Child<controls::ComboBox>(form, u"cboToestand"_s);
  EXPECT_TRUE(choice.isVisible());
  EXPECT_EQ(choice.currentText(), u"Alle statussen"_s);
  EXPECT_EQ(Lines(form).size(), 5);
  choice.SelectWhereItemData(static_cast<qint64>(SpotView::BeginnenLater));
  EXPECT_TRUE(WaitUntil([&] { return Lines(form) == QStringList{u"begint"_s}; }));
}
