// SPDX-License-Identifier: MIT
// Another workstation changes a spot or jingle while its editor is open here.
#include "data/Messages.h"
#include "platform/controls/DateCombo.h"
#include "platform/desktop/MessageBox.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/FailingAccesses.h"

#include <QCheckBox>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;

namespace {

class TwoWorkstations : public testing::Test {
 protected:
  TwoWorkstations() {
    desk_.AddSpot(1, u"Apotheek"_s, desk_.Wav(u"a.wav"_s, 5'000));
    desk_.station.OnServer(
        u"UPDATE tblItemSpots SET LengteSec = 5, StartPunt = 0, Mixpunt = 0, StartDatum = 45658, "
        "StartUur = 0, EindDatum = 45688, EindUur = 23, Aktief = 1"_s);
    editor_ = desk_.OpenSpot(u"1"_s);
    SetText(*editor_, u"txtNaam"_s, u"Apotheek Noord"_s);
  }

  void TheOtherChangesTheEndDate() const {
    desk_.station.OnServer(u"UPDATE tblItemSpots SET EindDatum = 45698 WHERE ID = 1"_s);
  }
  QDate EndDate() const { return desk_.Spot(1).Field(u"EindDatum"_s).toDate(); }
  QString Name() const { return desk_.Spot(1).Field(u"Naam"_s).toString(); }

  const EditorDesk desk_;
  std::unique_ptr<frmItemSpotsDetail> editor_;
};

const QDate kOld(2025, 1, 31);
const QDate kTheirs(2025, 2, 10);

}  // namespace

TEST_F(TwoWorkstations, AnUnchangedRecordIsSavedWithoutAQuestion) {
  const desktop::MessageBoxScript boxes;
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(Name(), u"Apotheek Noord"_s);
}

TEST_F(TwoWorkstations, TheQuestionNamesTheFieldWithBothValues) {
  TheOtherChangesTheEndDate();
  const desktop::MessageBoxScript boxes{kAnswerCancel};
  Click(*editor_, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  const QString text = boxes.Last().text;
  EXPECT_TRUE(text.contains(u"Einddatum: was 31-01-2025, is nu 10-02-2025"_s)) << text.toStdString();
  EXPECT_FALSE(text.contains(u"Naam:"_s)) << text.toStdString();
}

TEST_F(TwoWorkstations, TheQuestionUsesTheWordsOfTheScreen) {
  desk_.station.OnServer(
      u"UPDATE tblItemSpots SET LengteSec = 9, StartPunt = 250, Mixpunt = 1200, StartDatum = NULL, StartUur = 7, "
      "Aktief = 0, Path = '' WHERE ID = 1"_s);
  const desktop::MessageBoxScript boxes{kAnswerCancel};
  Click(*editor_, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  const QString text = boxes.Last().text;
  for (const QString& line : {u"\nLengte: was 5, is nu 9\n"_s, u"\nStartpunt: was 0, is nu 250\n"_s,
                              u"\nOuttromix: was 0, is nu 1200\n"_s, u"\nStartdatum: was 01-01-2025, is nu leeg\n"_s,
                              u"\nStartuur: was 0, is nu 7\n"_s, u"\nAktief: was ja, is nu nee\n"_s})
    EXPECT_TRUE(text.contains(line)) << line.toStdString() << text.toStdString();
  EXPECT_TRUE(text.contains(u"a.wav, is nu leeg\n"_s)) << text.toStdString();
}

TEST_F(TwoWorkstations, CancelWritesNothingAndKeepsTheInput) {
  TheOtherChangesTheEndDate();
  const desktop::MessageBoxScript boxes{kAnswerCancel};
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_EQ(Text(*editor_, u"txtNaam"_s), u"Apotheek Noord"_s);
  EXPECT_EQ(EndDate(), kTheirs);
  EXPECT_EQ(Name(), u"Apotheek"_s);
}

TEST_F(TwoWorkstations, TheirsFillsTheFormAgainAndTheNextOkChangesNothingOfTheirs) {
  desk_.station.OnServer(
      u"UPDATE tblItemSpots SET EindDatum = 45698, StartDatum = NULL, EindUur = 12, Aktief = 0 WHERE ID = 1"_s);
  {
    const desktop::MessageBoxScript boxes{kAnswerYes};
    Click(*editor_, u"cmdOk"_s);
    EXPECT_EQ(boxes.Shown().size(), 1u);
  }
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_FALSE(editor_->IsDirty());
  EXPECT_EQ(Text(*editor_, u"txtNaam"_s), u"Apotheek"_s);
  EXPECT_EQ(Child<controls::DateCombo>(*editor_, u"cobStop"_s).Text(), u"10-02-2025"_s);
  EXPECT_EQ(Child<controls::DateCombo>(*editor_, u"cobStart"_s).Text(), u""_s);
  EXPECT_EQ(Text(*editor_, u"txtEindUur"_s), u"12"_s);
  EXPECT_FALSE(Child<QCheckBox>(*editor_, u"chkAktief"_s).isChecked());
  EXPECT_EQ(Name(), u"Apotheek"_s);
  Child<controls::DateCombo>(*editor_, u"cobStart"_s).SetText(u"01-01-2025"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(EndDate(), kTheirs);
}

TEST_F(TwoWorkstations, MineIsWrittenAsItStands) {
  TheOtherChangesTheEndDate();
  const desktop::MessageBoxScript boxes{kAnswerNo};
  Click(*editor_, u"cmdOk"_s);
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(EndDate(), kOld);
  EXPECT_EQ(Name(), u"Apotheek Noord"_s);
}

// Saving by the question on cancelling is the same.
TEST_F(TwoWorkstations, TheirsKeepsTheFormOpenAlsoWhenItWasBeingClosed) {
  TheOtherChangesTheEndDate();
  const desktop::MessageBoxScript boxes{kAnswerYes, kAnswerYes};
  Click(*editor_, u"cmdAnnuleren"_s);
  EXPECT_EQ(boxes.Shown().size(), 2u);
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_FALSE(editor_->IsDirty());
}

TEST_F(TwoWorkstations, AFormThatWasFilledAgainClosesAsAnyOther) {
  TheOtherChangesTheEndDate();
  const desktop::MessageBoxScript boxes{kAnswerYes, kAnswerNo};
  Click(*editor_, u"cmdOk"_s);
  SetText(*editor_, u"txtNaam"_s, u"Anders"_s);
  Click(*editor_, u"cmdAnnuleren"_s);
  EXPECT_EQ(boxes.Shown().size(), 2u);
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(Name(), u"Apotheek"_s);
}

TEST_F(TwoWorkstations, PlayCountsAreNeverAskedAbout) {
  desk_.station.OnServer(u"UPDATE tblItemSpots SET AantalGedraaid = 99, LaatstGedraaid = 45660.5 WHERE ID = 1"_s);
  const desktop::MessageBoxScript boxes;
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(Name(), u"Apotheek Noord"_s);
}

// Whichever access to the database fails while the editor opens.
TEST_F(TwoWorkstations, AFailureAtOpeningNeverLetsOkReplaceTheirChange) {
  int questions = 0;
  int refusals = 0;
  for (int failing = 1; failing <= 12; ++failing) {
    desk_.station.OnServer(u"UPDATE tblItemSpots SET EindDatum = 45688 WHERE ID = 1"_s);
    std::unique_ptr<frmItemSpotsDetail> editor;
    {
      const testing_support::FailingAccesses away(failing, failing);
      const desktop::MessageBoxScript boxes;
      editor = desk_.OpenSpot(u"1"_s);
    }
    TheOtherChangesTheEndDate();
    FillValidSpot(*editor, u"Apotheek Noord"_s);
    const desktop::MessageBoxScript boxes{kAnswerCancel};
    Click(*editor, u"cmdOk"_s);
    ASSERT_EQ(boxes.Shown().size(), 1U) << failing;
    ++(boxes.Last().title == u"Opslaan"_s ? refusals : questions);
    EXPECT_EQ(EndDate(), kTheirs) << failing;
  }
  EXPECT_GT(refusals, 0);  // what is compared could not be read
  EXPECT_GT(questions, 0);
}

TEST(TwoWorkstationsJingle, AChangedNameIsAskedAbout) {
  const EditorDesk desk;
  desk.AddPingle(1, u"Opener"_s, desk.Wav(u"a.wav"_s, 2'000));
  const auto editor = desk.OpenPingle(u"1"_s);
  desk.station.OnServer(u"UPDATE tblItemPingles SET Naam = \"Opener 2\" WHERE ID = 1"_s);
  Child<QCheckBox>(*editor, u"chkAktief"_s).click();
  const desktop::MessageBoxScript boxes{kAnswerYes};
  Click(*editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(u"Naam: was Opener, is nu Opener 2"_s)) << boxes.Last().text.toStdString();
  EXPECT_EQ(Text(*editor, u"txtNaam"_s), u"Opener 2"_s);
  EXPECT_FALSE(editor->IsDirty());
}
