// SPDX-License-Identifier: MIT
#include "tests/tools/StationProgram.h"

#include <QDate>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

QString Day(int daysFromToday, const QString& format) {
  return QDate::currentDate().addDays(daysFromToday).toString(format);
}

// The line of such a spot.
std::string SpotLine(int id, const QString& name, int endsIn) {
  return u"%1,%2,2000-01-01,%3,verloopt %4,D:\\audio\\%2.wav\r\n"_s
      .arg(QString::number(id), name, Day(endsIn, u"yyyy-MM-dd"_s), Day(endsIn, u"dd-MM-yyyy"_s))
      .toStdString();
}

// A spot that started long ago and ends that many days from today.
void AddSpot(const StationProgram& program, int id, const QString& name, int endsIn, bool active = true) {
  const QString day = Day(endsIn, u"dd-MM-yyyy"_s);
  program.Rows().OnCurrent(
      u"INSERT INTO %1 (ID, Naam, Path, StartDatum, EindDatum, Aktief) "
      u"VALUES (%2, \"%3\", \"D:\\audio\\%3.wav\", \"01-01-2000\", \"%4\", %5)"_s.arg(
          program.Table(), QString::number(id), name, day, active ? u"1"_s : u"0"_s));
}

}  // namespace

TEST(SpotsCommand, EndingShowsActiveSpotsThatEndWithinTheDaysSoonestFirst) {
  const StationProgram program;
  AddSpot(program, 1, u"Later"_s, 30);
  AddSpot(program, 2, u"Binnenkort"_s, 5);
  AddSpot(program, 3, u"Voorbij"_s, -3);
  AddSpot(program, 4, u"Stil"_s, 5, false);
  AddSpot(program, 5, u"Eerst"_s, 2);
  const ToolRun run = program.Run(u"spots"_s, {u"--ending"_s, u"8"_s});
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(run.out, "ID,Naam,StartDatum,EindDatum,Status,Path\r\n" + SpotLine(5, u"Eerst"_s, 2) +
                         SpotLine(2, u"Binnenkort"_s, 5));
}

TEST(SpotsCommand, WithoutEndingEverySpotIsShownWithItsState) {
  const StationProgram program;
  AddSpot(program, 1, u"Later"_s, 30);
  AddSpot(program, 3, u"Voorbij"_s, -3);
  AddSpot(program, 4, u"Stil"_s, 5, false);
  const std::string out = program.Run(u"spots"_s).out;
  EXPECT_NE(out.find("loopt t/m"), std::string::npos) << out;
  EXPECT_NE(out.find("verlopen op"), std::string::npos) << out;
  EXPECT_NE(out.find("niet aktief"), std::string::npos) << out;
}

TEST(SpotsCommand, OfflineTheCopyIsRead) {
  const StationProgram program(Station::Mode::Offline);
  AddSpot(program, 1, u"Kopie"_s, 1);
  EXPECT_NE(program.Run(u"spots"_s, {u"--ending"_s, u"2"_s}).out.find("Kopie"), std::string::npos);
}

TEST(SpotsCommand, ReadingLeavesTheCatalogueAndTheLogAsTheyWere) {
  const StationProgram program(Station::Mode::Offline);
  AddSpot(program, 1, u"Kopie"_s, 1);
  program.Run(u"spots"_s);
  EXPECT_TRUE(program.Rows().Log().isEmpty());
}

TEST(SpotsCommand, InvalidDaysAreRefusedByName) {
  const StationProgram program;
  for (const QString& days : {u"morgen"_s, u"-1"_s, u"99999"_s, u"3000000000"_s}) {
    const ToolRun run = program.Run(u"spots"_s, {u"--ending"_s, days});
    EXPECT_EQ(run.exitCode, kWrongUse) << days.toStdString();
    EXPECT_NE(run.err.find(days.toStdString()), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
  }
  EXPECT_EQ(program.Run(u"spots"_s, {u"--ending"_s}).exitCode, kWrongUse);
}

TEST(SpotsCommand, AFolderWithoutAStationIsReportedByName) {
  const ToolRun run = RunTool({u"spots"_s, u"/nergens/zender"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("'/nergens/zender' is geen programmamap"), std::string::npos) << run.err;
}

TEST(SpotsCommand, AMissingStationIsReportedByName) {
  const StationProgram program;
  const ToolRun run = program.Run(u"spots"_s, {u"--station"_s, u"7"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("OvalistoLocal7.mdb"), std::string::npos) << run.err;
}
