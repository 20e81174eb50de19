// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;

class ItemPingleList : public CatalogueTestInBothModes {};

INSTANTIATE_TEST_SUITE_P(Modes, ItemPingleList, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(ItemPingleList, ShowsEveryRecordSortedByName) {
  AddPingle(1, u"Slot"_s);
  AddPingle(2, u"intro"_s);
  station_.OnCurrent(u"UPDATE %1 SET Aktief = 0 WHERE ID = 1"_s.arg(Table(u"ItemPingles"_s)));
  frmItemPingles form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), (QStringList{u"intro"_s, u"Slot"_s}));
}

TEST_P(ItemPingleList, TheSelectedJingleShowsWhereItIsUsed) {
  AddPingle(5, u"Intro"_s);
  AddPingle(6, u"Los"_s);
  AddItem(1, u"Blok"_s);
  station_.OnCurrent(u"UPDATE %1 SET Opener = 5, Sluiter = 5 WHERE ID = 1"_s.arg(Table(u"Items"_s)));
  frmItemPingles form(nullptr);
  Open(form);
  const auto& usage = Child<QLabel>(form, u"lblGebruik"_s);
  EXPECT_EQ(usage.text(), u""_s);
  Select(form, u"Intro"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return usage.text() == u"Gebruikt in Blok"_s; })) << usage.text().toStdString();
  Select(form, u"Los"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return usage.text() == u"In geen enkel item gebruikt"_s; }))
      << usage.text().toStdString();
  List(form).SetListIndex(-1);
  EXPECT_EQ(usage.text(), u""_s);
}

TEST_P(ItemPingleList, OpenAndNewOpenTheJingleEditor) {
  AddPingle(5, u"Intro"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  Click(form, u"cmdOpen"_s);
  Click(form, u"cmdNieuw"_s);
  EXPECT_EQ(visits_, (QStringList{u"ItemPinglesDetail 5"_s, u"ItemPinglesDetail NIEUW"_s}));
}

TEST_P(ItemPingleList, RemoveAsksWithTheQuotedTrimmedName) {
  station_.OnLocal(u"UPDATE appMessages SET MsgTekst = \"[%1]\" WHERE MsgNr = 3009"_s);
  AddPingle(1, u"  Intro "_s);
  frmItemPingles form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  boxes_.Answer(desktop::kAnswerNo);
  Click(form, u"cmdVerwijder"_s);
  ASSERT_EQ(boxes_.Shown().size(), 1u);
  EXPECT_EQ(boxes_.Last().title, u"Items"_s);
  EXPECT_EQ(boxes_.Last().text, u"[\"Intro\" verwijderen uit de lijst ...\r\n]"_s);
  EXPECT_EQ(boxes_.Last().style, 292);
}

TEST_P(ItemPingleList, YesDeletesTheRecordAndLogsNothingInEitherMode) {
  AddPingle(1, u"Intro"_s);
  AddPingle(2, u"Slot"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  boxes_.Answer(desktop::kAnswerYes);
  Click(form, u"cmdVerwijder"_s);
  EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>{2});
  EXPECT_EQ(Lines(form), QStringList{u"Slot"_s});
  EXPECT_FALSE(Enabled(form, u"cmdVerwijder"_s));
  EXPECT_EQ(station_.Log(), QStringList());
}

TEST_P(ItemPingleList, AnyOtherAnswerDeletesNothingButRefills) {
  AddPingle(1, u"Intro"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  AddPingle(2, u"Slot"_s);
  boxes_.Answer(desktop::kAnswerNo);
  Click(form, u"cmdVerwijder"_s);
  EXPECT_EQ(IDs(u"ItemPingles"_s), (QList<int>{1, 2}));
  EXPECT_EQ(Lines(form), (QStringList{u"Intro"_s, u"Slot"_s}));
  EXPECT_EQ(List(form).ListIndex(), -1);
}

TEST_P(ItemPingleList, CancelledFallbackOfAMissingQuestionDeletesNothing) {
  AddPingle(1, u"Intro"_s);
  station_.OnLocal(u"DELETE FROM appMessages WHERE MsgNr = 3009"_s);
  frmItemPingles form(nullptr);
  Open(form);
  Select(form, u"Intro"_s);
  boxes_.Answer(desktop::kAnswerCancel);
  Click(form, u"cmdVerwijder"_s);
  EXPECT_EQ(boxes_.Last().style, 35);
  EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>{1});
}
