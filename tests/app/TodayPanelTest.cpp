// SPDX-License-Identifier: MIT
#include "app/TodayPanel.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/Station.h"
#include "tests/support/Ui.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Child;
using testing_support::Station;

namespace {

constexpr int kPatience = 30000;  // ms; maximum for counting in the background

// Adds a spot that started a month ago and ends in that many days, with or without its file.
void AddSpot(const Station& station, int id, int daysLeft, bool withFile) {
  const QString path = runtime::PathText(station.AudioFolder()) + u"\\%1.wav"_s.arg(id);
  if (withFile) runtime::WriteFile(path, "x");
  const qint32 today = runtime::DayNumber(QDate::currentDate());
  station.OnCurrent(
      u"INSERT INTO tblItemSpots (ID, Naam, Path, StartDatum, StartUur, EindDatum, EindUur, Aktief) VALUES "
      "(%1, \"spot\", \"%2\", %3, 0, %4, 23, 1)"_s.arg(id)
          .arg(path)
          .arg(today - 30)
          .arg(today + daysLeft));
}

QString Number(const TodayPanel& panel, const QString& row) {
  return Child<QLabel>(panel, u"lblAantal"_s + row).text();
}

bool IsCounted(const TodayPanel& panel) {
  const QStringList unknown{u"–"_s, u"?"_s};
  return QTest::qWaitFor([&] { return !unknown.contains(Number(panel, u"ZonderBestand"_s)); }, kPatience);
}

}  // namespace

TEST(TodayPanel, CountsRunningEndingAndMissingSpots) {
  const Station station;
  AddSpot(station, 1, 60, true);
  AddSpot(station, 2, 60, true);
  AddSpot(station, 3, 2, true);
  AddSpot(station, 4, 60, false);
  TodayPanel panel;
  panel.Count();
  ASSERT_TRUE(IsCounted(panel));
  EXPECT_EQ(Number(panel, u"Lopen"_s), u"3"_s);
  EXPECT_EQ(Number(panel, u"Verlopen"_s), u"1"_s);
  EXPECT_EQ(Number(panel, u"ZonderBestand"_s), u"1"_s);
  EXPECT_EQ(Child<QLabel>(panel, u"lblLopen"_s).text(), u"item-spots lopen vandaag"_s);
  EXPECT_EQ(Child<QLabel>(panel, u"lblVerlopen"_s).text(), u"item-spot verloopt binnen 7 dagen"_s);
}

TEST(TodayPanel, AnUnreadableDatabaseGivesTheReasonAndNoBox) {
  const Station station;
  const QString path = global.serverDatabasePath;
  const MessageBoxScript boxes;
  TodayPanel panel;
  const auto expectReason = [&](const QString& brief) {
    panel.Count();
    for (const QString& row : {u"Lopen"_s, u"Verlopen"_s, u"ZonderBestand"_s, u"Blokken"_s}) {
      const auto& words = Child<QLabel>(panel, u"lbl"_s + row);
      ASSERT_TRUE(QTest::qWaitFor([&] { return words.text().endsWith(u": "_s + brief); }, kPatience))
          << words.text().toStdString();
      EXPECT_EQ(Number(panel, row), u"?"_s);
      EXPECT_TRUE(words.toolTip().contains(u"OvalistoServer.mdb"_s)) << words.toolTip().toStdString();
    }
  };
  runtime::WriteFile(path, QByteArray(5000, 'x'));
  expectReason(u"de gedeelde database is niet te lezen"_s);
  QFile::remove(runtime::HostPath(path));
  expectReason(u"de gedeelde database ontbreekt"_s);
  global.serverDatabasePath = u"Q:\\OvalistoServer.mdb"_s;
  expectReason(u"de gedeelde database is niet bereikbaar"_s);
  EXPECT_TRUE(boxes.Shown().empty());
}

TEST(TodayPanel, AReadableDatabaseReplacesTheReasonByCounts) {
  const Station station;
  AddSpot(station, 1, 60, true);
  const QString path = runtime::HostPath(global.serverDatabasePath);
  ASSERT_TRUE(QFile::rename(path, path + u".weg"_s));
  TodayPanel panel;
  panel.Count();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Number(panel, u"Lopen"_s) == u"?"_s; }, kPatience));
  ASSERT_TRUE(QFile::rename(path + u".weg"_s, path));
  panel.Count();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Number(panel, u"Lopen"_s) == u"1"_s; }, kPatience));
  ASSERT_TRUE(IsCounted(panel));
  EXPECT_EQ(Child<QLabel>(panel, u"lblLopen"_s).text(), u"item-spot loopt vandaag"_s);
  EXPECT_EQ(Child<QLabel>(panel, u"lblLopen"_s).toolTip(), u""_s);
}

TEST(TodayPanel, CountingAgainReplacesTheCounts) {
  const Station station;
  AddSpot(station, 1, 60, true);
  TodayPanel panel;
  panel.Count();
  ASSERT_TRUE(IsCounted(panel));
  AddSpot(station, 2, 60, true);
  panel.Count();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Number(panel, u"Lopen"_s) == u"2"_s; }, kPatience));
}

TEST(TodayPanel, ItsButtonsRequestTheSpotsOfTheirRow) {
  TodayPanel panel;
  QList<SpotView> asked;
  int exports = 0;
  QObject::connect(&panel, &TodayPanel::spotsAsked, [&](SpotView view) { asked += view; });
  QObject::connect(&panel, &TodayPanel::exportAsked, [&] { ++exports; });
  for (const QString& button : {u"cmdLopen"_s, u"cmdVerlopen"_s, u"cmdZonderBestand"_s, u"cmdExport"_s}) {
    Child<QPushButton>(panel, button).click();
  }
  const QList<SpotView> expected{SpotView::LopenVandaag, SpotView::VerlopenBinnenkort, SpotView::ZonderBestand};
  EXPECT_EQ(asked, expected);
  EXPECT_EQ(exports, 1);
}

TEST(TodayPanel, CountsActiveItemsThatAreSilentOrShort) {
  const Station station;
  AddSpot(station, 1, 60, true);
  AddSpot(station, 2, -3, true);
  const auto addItem = [&](int id, const QString& several, int aktief) {
    station.OnCurrent(
        u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, Aktief) "
        "VALUES (%1, \"blok\", 1, %2, 2, 2, %3)"_s.arg(id)
            .arg(several)
            .arg(aktief));
  };
  const auto link = [&](int item, int order, int spot) {
    station.OnCurrent(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%1, %2, %3)"_s.arg(item)
            .arg(order)
            .arg(spot));
  };
  addItem(1, u"0"_s, 1);  // complete
  link(1, 1, 1);
  addItem(2, u"0"_s, 1);  // silent
  link(2, 1, 2);
  addItem(3, u"-1"_s, 1);  // short
  link(3, 1, 1);
  link(3, 2, 2);
  addItem(4, u"0"_s, 0);  // not active
  TodayPanel panel;
  EXPECT_EQ(Number(panel, u"Blokken"_s), u"–"_s);
  panel.Count();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Number(panel, u"Blokken"_s) != u"–"_s; }, kPatience));
  EXPECT_EQ(Number(panel, u"Blokken"_s), u"2"_s);
}
