// SPDX-License-Identifier: MIT
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/forms/RecordEdits.h"
#include "platform/controls/ListBox.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Keyboard.h"

#include <QFile>
#include <QLabel>

using namespace Qt::StringLiterals;

class Duplicates : public CatalogueTestInBothModes {
 protected:
  QStringList AudioList() const {
    QFile file(station_.ExportFolder() + u"/Audio.tae"_s);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromLatin1(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
  }

  QStringList Row(const QString& things, int id, const QStringList& fields) const {
    const dao::Recordset row = station_.CurrentRows(u"SELECT * FROM %1 WHERE ID = %2"_s.arg(Table(things)).arg(id));
    QStringList values;
    for (const QString& field : fields)
      values += row.Eof() ? u"-"_s : row.Field(field).toString();
    return values;
  }

  static QString Melding(const Form& form) { return Child<QLabel>(form, u"lblMelding"_s).text(); }
};

INSTANTIATE_TEST_SUITE_P(Modes, Duplicates, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(Duplicates, ASpotIsCopiedUnderAFreeName) {
  AddSpot({4, u"Kerst"_s, u"D:\\audio\\kerst.mp3"_s, 1});
  station_.OnCurrent(u"UPDATE %1 SET AantalGedraaid = 12, Mixpunt = 2500 WHERE ID = 4"_s.arg(Table(u"ItemSpots"_s)));
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  QTest::keyClick(&List(form), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(Lines(form), (QStringList{u"Kerst"_s, u"Kerst (2)"_s}));
  const QStringList fields{u"Path"_s,    u"LengteSec"_s, u"StartPunt"_s, u"Mixpunt"_s,       u"StartUur"_s,
                           u"EindUur"_s, u"EindDatum"_s, u"Aktief"_s,    u"AantalGedraaid"_s};
  QStringList expected = Row(u"ItemSpots"_s, 4, fields);
  expected[2] = u"0"_s;
  expected.back() = u"0"_s;
  EXPECT_EQ(Row(u"ItemSpots"_s, 5, fields), expected);
  EXPECT_EQ(AudioList(), QStringList{u"D:\\audio\\kerst.mp3"_s});
  EXPECT_EQ(Melding(form), u"‘Kerst (2)’ is toegevoegd"_s);
  EXPECT_EQ(List(form).ListIndex(), -1);
  QTest::keyClick(&List(form), Qt::Key_Down);
  EXPECT_EQ(List(form).ItemData(List(form).ListIndex()), 5);
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(Duplicates, TheNumberIsTheFirstFreeOne) {
  AddSpot({1, u"Kerst"_s, u"D:\\a.mp3"_s, 1});
  AddSpot({2, u"KERST (2)"_s, u"D:\\a.mp3"_s, 0});
  const Catalogue catalogue = CurrentCatalogue();
  const auto free = [&](const QString& naam, int longest = 70) {
    return FreeName(naam, longest, catalogue.databasePath, catalogue.itemSpots);
  };
  EXPECT_EQ(free(u"Kerst"_s), u"Kerst (3)"_s);
  EXPECT_EQ(free(u"Kerst (2)"_s), u"Kerst (3)"_s);
  EXPECT_EQ(free(u"Pasen (9)"_s), u"Pasen (10)"_s);
  EXPECT_EQ(free(u"(2)"_s), u"(2) (2)"_s);
  EXPECT_EQ(free(QString(70, u'x')), QString(66, u'x') + u" (2)"_s);
  EXPECT_EQ(free(QString(65, u'x') + u" yyyy"_s), QString(65, u'x') + u" (2)"_s);
  EXPECT_EQ(free(QString(65, u'x') + u"🎄y"_s), QString(65, u'x') + u" (2)"_s);
  EXPECT_EQ(free({}), QString());
}

// Five spots: one key to select the item, one to copy it.
TEST_P(Duplicates, AnItemOfFiveSpotsIsCopiedWithTwoKeys) {
  for (int id = 1; id <= 5; ++id)
    AddSpot({id, u"Spot %1"_s.arg(id), u"D:\\s%1.mp3"_s.arg(id), 1});
  AddPingle(8, u"Opener"_s);
  AddItem(3, u"Blok"_s);
  station_.OnCurrent(
      u"UPDATE %1 SET Locked = -1, OptMeerdereSpots = -1, AantalSpots = 2, MaxAantalSpots = 9, Opener = 8, "
      u"Sluiter = 77 WHERE ID = 3"_s.arg(Table(u"Items"_s)));
  for (int order = 1; order <= 5; ++order)
    Link(3, order, 6 - order);
  Link(3, 6, 99);  // a spot that was removed
  Link(4, 1, 1);   // left by an item that had the copy's number
  frmItems form(nullptr);
  Open(form);
  List(form).setFocus();
  testing_support::Keyboard keys;
  keys.Press(List(form), Qt::Key_Down);
  keys.Press(List(form), Qt::Key_D, Qt::ControlModifier);
  EXPECT_LE(keys.Count(), 5);
  EXPECT_EQ(Lines(form), (QStringList{u"Blok"_s, u"Blok (2)"_s}));
  EXPECT_EQ(Row(u"Items"_s, 4,
                {u"Locked"_s, u"OptMeerdereSpots"_s, u"AantalSpots"_s, u"MaxAantalSpots"_s, u"Opener"_s, u"Sluiter"_s}),
            (QStringList{u"0"_s, u"-1"_s, u"2"_s, u"5"_s, u"8"_s, QString()}));
  EXPECT_EQ(Numbers(station_.CurrentRows(u"SELECT ItemSpotID FROM %1 WHERE ItemID = 4 ORDER BY ItemSpotOrder"_s.arg(
                        Table(u"ItemsItemSpots"_s))),
                    u"ItemSpotID"_s),
            (QList<int>{5, 4, 3, 2, 1}));
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(Duplicates, AJingleIsCopiedToo) {
  AddPingle(1, u"Opener"_s);
  station_.OnCurrent(u"UPDATE %1 SET Path = \"D:\\o.wav\", LengteSec = 4 WHERE ID = 1"_s.arg(Table(u"ItemPingles"_s)));
  frmItemPingles form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  Click(form, u"cmdDupliceren"_s);
  EXPECT_EQ(Row(u"ItemPingles"_s, 2, {u"Naam"_s, u"Path"_s, u"LengteSec"_s, u"Aktief"_s}),
            (QStringList{u"Opener (2)"_s, u"D:\\o.wav"_s, u"4"_s, u"1"_s}));
  EXPECT_EQ(AudioList(), QStringList{u"D:\\o.wav"_s});
}

TEST_P(Duplicates, SeveralAreCopiedOneByOne) {
  AddSpot({1, u"A"_s, u"D:\\a.mp3"_s, 1});
  AddSpot({2, u"B"_s, u"D:\\b.mp3"_s, 1});
  frmItemSpots form(nullptr);
  Open(form);
  QTest::keyClick(&List(form), Qt::Key_A, Qt::ControlModifier);
  Click(form, u"cmdDupliceren"_s);
  EXPECT_EQ(Lines(form), (QStringList{u"A"_s, u"A (2)"_s, u"B"_s, u"B (2)"_s}));
  EXPECT_EQ(Melding(form), u"2 item-spots toegevoegd"_s);
  EXPECT_EQ(AudioList(), (QStringList{u"D:\\a.mp3"_s, u"D:\\b.mp3"_s}));
}

// The editor would refuse these too.
TEST_P(Duplicates, WhatTheEditorRefusesIsNotCopied) {
  AddSpot({1, u"Zonder pad"_s, {}, 1});
  AddItem(1, u"Leeg blok"_s);
  frmItemSpots spots(nullptr);
  Open(spots);
  List(spots).SetListIndex(0);
  Click(spots, u"cmdDupliceren"_s);
  EXPECT_TRUE(boxes_.Last().text.contains(u"Path"_s)) << boxes_.Last().text.toStdString();
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{1});
  frmItems items(nullptr);
  Open(items);
  List(items).SetListIndex(0);
  Click(items, u"cmdDupliceren"_s);
  EXPECT_EQ(boxes_.Shown().size(), 2u);
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
  EXPECT_EQ(AudioList(), QStringList());
}

TEST_P(Duplicates, ARecordThatIsGoneIsNamed) {
  AddSpot({1, u"Weg"_s, u"D:\\a.mp3"_s, 1});
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  station_.OnCurrent(u"DELETE FROM "_s + Table(u"ItemSpots"_s));
  Click(form, u"cmdDupliceren"_s);
  ASSERT_EQ(boxes_.Shown().size(), 1u);
  EXPECT_EQ(boxes_.Last().text, u"Intussen verwijderd:\r\nWeg"_s);
}

// The record exists already: the error says what is missing, and the list shows the copy.
TEST_P(Duplicates, WithoutAnExportFolderTheErrorSaysSo) {
  AddSpot({1, u"A"_s, u"D:\\a.mp3"_s, 1});
  frmItemSpots form(nullptr);
  Open(form);
  List(form).SetListIndex(0);
  global.exportPath = u"D:\\bestaat niet"_s;
  Click(form, u"cmdDupliceren"_s);
  EXPECT_TRUE(OnlyError(u"ListPath"_s).contains(u"Audio.tae"_s));
  EXPECT_EQ(Lines(form), (QStringList{u"A"_s, u"A (2)"_s}));
}
