// SPDX-License-Identifier: MIT
#include "data/Messages.h"

#include "data/Globals.h"
#include "data/MessageTexts.h"
#include "platform/dao/Database.h"
#include "platform/desktop/MessageBox.h"
#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

void SetMessage(const Station& station, int number, const QString& text, const QString& style) {
  station.OnLocal(u"INSERT INTO appMessages (MsgNr, MsgTekst, MsgStyle) VALUES (%1, \"%2\", \"%3\")"_s.arg(
      QString::number(number), text, style));
}

}  // namespace

TEST(Messages, AllThirteenAreShownInTheRealBoxWithTheirValues) {
  const Station station;
  ASSERT_EQ(MessageTexts().size(), 13);
  for (const int number : {1500, 1501, 1506, 1600, 2000, 3009, 3028, 3038, 5001, 5004, 5005, 5106, 5107}) {
    const desktop::MessageBoxScript boxes;
    const int answer = ShowAppMessage(number, u"Waarde1"_s, u"Waarde2"_s, u""_s);
    ASSERT_EQ(boxes.Shown().size(), 1U) << number;
    EXPECT_EQ(boxes.Last().title, u"Items"_s);
    EXPECT_FALSE(boxes.Last().text.contains(u'%')) << boxes.Last().text.toStdString();
    EXPECT_EQ(boxes.Last().answer, answer);
    EXPECT_EQ(global.lastAnswer.toInt(), answer);
    const int style = number == 2000 ? 36 : number == 3009 ? 292 : number == 5004 ? 64 : 48;
    EXPECT_EQ(boxes.Last().style, style) << number;
  }
}

TEST(Messages, ValuesReplaceTheirPlaceholders) {
  const Station station;
  EXPECT_TRUE(GetMsgElements(1506, u"Naam"_s, u"70"_s).text.contains(u"'Naam'"_s));
  EXPECT_TRUE(GetMsgElements(1506, u"Naam"_s, u"70"_s).text.contains(u" 70 "_s));
  EXPECT_TRUE(GetMsgElements(3009, u"\"Opener\" verwijderen uit de lijst ...\r\n"_s)
                  .text.startsWith(u"\"Opener\" verwijderen uit de lijst ...\r\n"_s));
}

TEST(Messages, UnknownNumberGivesTheFallbackTextWithThreeButtons) {
  const Station station;
  desktop::MessageBoxScript boxes({kAnswerCancel});
  EXPECT_EQ(ShowAppMessage(9999), kAnswerCancel);
  EXPECT_EQ(boxes.Last().text,
            u"De applicatie kan de foutmelding 9999 niet laten zien. Kontakteer de software-beheerder."_s);
  EXPECT_EQ(boxes.Last().style, 35);
  EXPECT_EQ(boxes.Last().buttons, (QStringList{u"Ja"_s, u"Nee"_s, u"Annuleren"_s}));
}

TEST(Messages, TextAndLetterAreTrimmedAndNullIsEmpty) {
  const Station station;
  const QString path = global.programFolder + u"\\berichten.mdb"_s;
  dao::CreateDatabase(path);
  dao::TableDef table{u"appMessages"_s, {{}, {}, {}}, {}};
  table.fields[0].name = u"MsgNr"_s;
  for (const auto& [at, name] : {std::pair(1, u"MsgTekst"_s), std::pair(2, u"MsgStyle"_s)}) {
    table.fields[at].name = name;
    table.fields[at].type = dao::FieldType::Text;
    table.fields[at].size = 50;
  }
  dao::OpenDatabase(path).CreateTable(table);
  global.localDatabasePath = path;
  SetMessage(station, 1, u"  een tekst  "_s, u" W  "_s);
  station.OnLocal(u"INSERT INTO appMessages (MsgNr) VALUES (2)"_s);
  EXPECT_EQ(GetMsgElements(1).text, u"een tekst"_s);
  EXPECT_EQ(GetMsgElements(1).style, 16);
  EXPECT_EQ(GetMsgElements(2).text, u""_s);
  EXPECT_EQ(GetMsgElements(2).style, 0);
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(ShowAppMessage(2), kAnswerOk);
  EXPECT_EQ(boxes.Shown().size(), 1U);
}

TEST(Messages, LineFeedGivesTwoLines) {
  const Station station;
  SetMessage(station, 1, u"een%LFtwee"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1).text, u"een\r\ntwee"_s);
}

TEST(Messages, RepeatedPlaceholderIsReplacedInBothPlaces) {
  const Station station;
  SetMessage(station, 1, u"%1 en %1, %2, %3"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1, u"a"_s, u"b"_s, u"c"_s).text, u"a en a, b, c"_s);
}

TEST(Messages, ValueMayContainLaterPlaceholdersAndLineFeeds) {
  const Station station;
  SetMessage(station, 1, u"%1"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1, u"%2%LF%3"_s, u"twee"_s, u"a%LFb"_s).text, u"twee\r\na\r\nb"_s);
}

TEST(Messages, SearchForAPlaceholderStartsAgainAfterEachReplacement) {
  const Station station;
  SetMessage(station, 1, u"<%%11>"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1).text, u"<>"_s);
  EXPECT_EQ(GetMsgElements(1, u"x"_s).text, u"<%x1>"_s);
  SetMessage(station, 2, u"%1%%1%1"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(2, u"1"_s).text, u"111"_s);
  SetMessage(station, 3, u"%%%333,%%LFLF"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(3).text, u",%\r\nLF"_s);
}

TEST(Messages, EndlessReplacementIsMadeInOnePass) {
  const Station station;
  SetMessage(station, 1, u"<%%1>"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1, u"11%%"_s).text, u"<%11%%>"_s);
  SetMessage(station, 2, u"%%22 %3"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(2, {}, u"%2"_s, u"drie"_s).text, u"%%22 drie"_s);
}

TEST(Messages, ValueWithItsOwnPlaceholderIsReplacedOnce) {
  const Station station;
  SetMessage(station, 1, u"<%1>"_s, u"M"_s);
  EXPECT_EQ(GetMsgElements(1, u"x%1y"_s).text, u"<x%1y>"_s);
  EXPECT_EQ(GetMsgElements(1, u"x%2y"_s, u"z"_s).text, u"<xzy>"_s);
}

TEST(Messages, LettersMapToTheirStyles) {
  const Station station;
  int number = 0;
  for (const auto& [letter, style] : QList<std::pair<QString, int>>{{u"Q"_s, 36},
                                                                    {u"C"_s, 35},
                                                                    {u"N"_s, 292},
                                                                    {u"M"_s, 64},
                                                                    {u"E"_s, 48},
                                                                    {u"W"_s, 16},
                                                                    {u"X"_s, 0},
                                                                    {u""_s, 0},
                                                                    {u"q"_s, 0},
                                                                    {u" "_s, 0}}) {
    SetMessage(station, ++number, u"tekst"_s, letter);
    EXPECT_EQ(GetMsgElements(number).style, style) << letter.toStdString();
  }
}

TEST(Messages, LowerCaseLetterGivesAPlainOkBox) {
  const Station station;
  SetMessage(station, 1, u"tekst"_s, u"q"_s);
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(ShowAppMessage(1), kAnswerOk);
  EXPECT_EQ(boxes.Last().style, 0);
  EXPECT_EQ(boxes.Last().buttons, QStringList{u"OK"_s});
}

TEST(Messages, UnreadableMessagesAreReportedOnceAndReturnNoAnswer) {
  const Station station;
  QFile::remove(station.Folder() + u"/data/OvalistoLocal.mdb");
  global.lastAnswer = kAnswerYes;
  const desktop::MessageBoxScript boxes;
  EXPECT_EQ(ShowAppMessage(2000), kAnswerNone);
  EXPECT_EQ(global.lastAnswer.toInt(), kAnswerNone);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, u"GetMsgElements"_s);
  EXPECT_EQ(boxes.Last().style, 16);
}
