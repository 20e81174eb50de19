// SPDX-License-Identifier: MIT
// The items that use a record, and the loudness of its file.
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "media/LoudnessReader.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/media/support/EditorDesk.h"

#include <QFile>
#include <QLabel>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>
#include <utility>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Child;
using testing_support::Station;

namespace {

constexpr int kLongEnough = 60'000;  // ms; only a failing test waits this long

QLabel& Remark(const QWidget& editor) {
  return Child<QLabel>(editor, u"lblToelichting"_s);
}

QString LoudnessOf(const QWidget& editor) {
  return Child<QLabel>(editor, u"lblLuidheid"_s).text();
}

void AddItem(const EditorDesk& desk, int id, const QString& naam, const QString& jingles = u"NULL, NULL, NULL"_s) {
  desk.station.OnCurrent(
      u"INSERT INTO %1 (ID, Naam, ItemSpotsOptID, Opener, Midden, Sluiter) VALUES (%2, \"%3\", 1, %4)"_s.arg(
          CurrentCatalogue().items, QString::number(id), naam, jingles));
}

void Link(const EditorDesk& desk, int item, int order, int spot) {
  desk.station.OnCurrent(u"INSERT INTO %1 (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, %3, %4)"_s.arg(
      CurrentCatalogue().itemsItemSpots, QString::number(item), QString::number(order), QString::number(spot)));
}

class Usage : public ::testing::TestWithParam<Station::Mode> {
 protected:
  EditorDesk desk_{GetParam()};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Modes, Usage, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         [](const auto& mode) { return mode.param == Station::Mode::Online ? "Online" : "Offline"; });

TEST_P(Usage, ASpotNamesEachItemOnceInOrder) {
  desk_.AddSpot(3, u"Kerst"_s, desk_.Wav(u"k.wav"_s, 2'000));
  AddItem(desk_, 1, u"Ochtend"_s);
  AddItem(desk_, 2, u"Avond"_s);
  AddItem(desk_, 4, u"Nacht"_s);
  Link(desk_, 1, 1, 3);
  Link(desk_, 1, 2, 3);
  Link(desk_, 2, 1, 3);
  Link(desk_, 4, 1, 5);
  const auto editor = desk_.OpenSpot(u"3"_s);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return Remark(*editor).text() == u"Gebruikt in 2 items: Avond, Ochtend"_s; }, kLongEnough))
      << Remark(*editor).text().toStdString();
  EXPECT_EQ(Remark(*editor).toolTip(), u"Avond\nOchtend"_s);
  EXPECT_FALSE(editor->IsDirty());
}

TEST_P(Usage, AJingleIsFoundAsOpenerMiddleAndCloser) {
  desk_.AddPingle(3, u"Slot"_s, desk_.Wav(u"s.wav"_s, 2'000));
  AddItem(desk_, 1, u"A"_s, u"3, NULL, NULL"_s);
  AddItem(desk_, 2, u"B"_s, u"NULL, 3, NULL"_s);
  AddItem(desk_, 4, u"C"_s, u"1, NULL, 3"_s);
  AddItem(desk_, 5, u"D"_s, u"1, 2, 4"_s);
  const auto editor = desk_.OpenPingle(u"3"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Remark(*editor).text() == u"Gebruikt in 3 items: A, B, C"_s; }, kLongEnough))
      << Remark(*editor).text().toStdString();
}

TEST_P(Usage, ARecordWithoutItemsHasAText) {
  desk_.AddSpot(3, u"Kerst"_s, desk_.Wav(u"k.wav"_s, 2'000));
  const auto editor = desk_.OpenSpot(u"3"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Remark(*editor).text() == u"In geen enkel item gebruikt"_s; }, kLongEnough))
      << Remark(*editor).text().toStdString();
}

TEST_P(Usage, AnUnreadableCatalogueShowsNoBox) {
  desk_.AddSpot(3, u"Kerst"_s, desk_.Wav(u"k.wav"_s, 2'000));
  global.gstrSelectedID = u"3"_s;
  frmItemSpotsDetail editor;
  editor.Form_Load();
  QString& path = global.online ? global.serverDatabasePath : global.localDatabasePath;
  const QString there = std::exchange(path, u"Z:\\nergens\\x.mdb"_s);
  QCoreApplication::processEvents();
  path = there;
  EXPECT_EQ(Remark(editor).text(), QString());  // an unexpected box would fail the test
}

TEST(Loudness, IsShownAfterTheMeasurement) {
  const EditorDesk desk;
  desk.AddSpot(3, u"Toon"_s, runtime::PathText(MakeMp3(desk.AudioFile(u"toon.mp3"_s), 3)));
  const auto editor = desk.OpenSpot(u"3"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return LoudnessOf(*editor).contains(u" LUFS, true peak −"_s); }, kLongEnough));
  EXPECT_FALSE(editor->IsDirty());
}

TEST(Loudness, IsClearedWhenTheNextFileFails) {
  const EditorDesk desk;
  const auto editor = desk.OpenPingle(u"NIEUW"_s);
  Choose(*editor, MakeMp3(desk.AudioFile(u"toon.mp3"_s), 3));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !LoudnessOf(*editor).isEmpty(); }, kLongEnough));
  WriteBytes(desk.AudioFile(u"stuk.wav"_s), "geen geluid");
  const desktop::MessageBoxScript boxes;
  Choose(*editor, desk.AudioFile(u"stuk.wav"_s));
  EXPECT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(LoudnessOf(*editor), QString());
}

TEST(Loudness, OnlyTheLastFileIsShown) {
  const EditorDesk desk;
  LoudnessReader reader;
  QSignalSpy measured(&reader, &LoudnessReader::measured);
  QSignalSpy failed(&reader, &LoudnessReader::failed);
  reader.Read(MakeMp3(desk.AudioFile(u"a.mp3"_s), 3));
  reader.Read(desk.AudioFile(u"is er niet.mp3"_s));
  ASSERT_TRUE(failed.wait(kLongEnough));
  EXPECT_EQ(measured.count(), 0);
}

TEST(Loudness, IsWrittenInDutch) {
  EXPECT_EQ(LoudnessText({-16.24, -0.96}), u"−16,2 LUFS, true peak −1,0 dBTP"_s);
  constexpr double kNone = -std::numeric_limits<double>::infinity();
  EXPECT_EQ(LoudnessText({kNone, kNone}), u"te stil of te kort om de luidheid te meten"_s);
}
