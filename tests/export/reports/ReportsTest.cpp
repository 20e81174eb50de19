// SPDX-License-Identifier: MIT
#include "export/reports/Reports.h"

#include "export/playout/AirLedger.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "tests/export/reports/Catalogue.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

constexpr int k11March = 45727;  // 2025, as a day number

class Reports : public ::testing::TestWithParam<Station::Mode> {
 protected:
  PaperCatalogue catalogue_{GetParam()};
  runtime::ClockScope clock_{QDateTime(QDate(2025, 3, 11), QTime(12, 0))};
};

std::string Text(const QStringList& line) {
  return line.join(u" | "_s).toStdString();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Modes, Reports, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         [](const auto& mode) { return mode.param == Station::Mode::Online ? "Online" : "Offline"; });

TEST_P(Reports, TheCatalogueHasEverySpotByNameWithTotals) {
  catalogue_.AddSpot(1, u"Zomer"_s, 32, k11March + 100);
  catalogue_.AddSpot(2, u"kerst"_s, 95, k11March + 100, 0);
  const Report report = CatalogueReport();
  ASSERT_EQ(report.groups.size(), 1U);
  ASSERT_EQ(report.groups[0].lines.size(), 2U);
  EXPECT_EQ(Text(report.groups[0].lines[0]),
            "kerst | 1:35 | 01-01-2025 | 19-06-2025 | 6–22 | niet aktief | 7 | Z:\\audio\\2.mp3");
  EXPECT_EQ(Text(report.groups[0].lines[1]),
            "Zomer | 0:32 | 01-01-2025 | 19-06-2025 | 6–22 | loopt t/m 19-06-2025 | 7 | Z:\\audio\\1.mp3");
  EXPECT_EQ(report.closing.toStdString(), "2 item-spots, samen 2:07");
  EXPECT_EQ(report.subtitle.toStdString(), GetParam() == Station::Mode::Online
                                               ? "Radio Testland · online · dinsdag 11 maart 2025"
                                               : "Radio Testland · offline · dinsdag 11 maart 2025");
}

TEST_P(Reports, StatesIncludeThePresenceOfFiles) {
  catalogue_.AddSpot(1, u"Zomer"_s, 32, k11March + 100);
  catalogue_.AddSpot(2, u"Kerst"_s, 95, k11March + 100);
  catalogue_.AddItem(7, u"Ochtend"_s);
  catalogue_.Link(7, 1, 1);
  catalogue_.Link(7, 2, 2);
  const FilePresences seen{{u"Z:\\audio\\1.mp3"_s, runtime::Presence::NotThere},
                           {u"Z:\\audio\\2.mp3"_s, runtime::Presence::NotReachable}};
  EXPECT_EQ(Text(BlocksReport(seen).groups.at(0).lines.at(0)), "1 | Zomer | 0:32 | geluidsbestand ontbreekt");
  EXPECT_EQ(Text(BlocksReport(seen).groups.at(0).lines.at(1)), "2 | Kerst | 1:35 | loopt t/m 19-06-2025");
  EXPECT_EQ(CatalogueReport(seen).groups.at(0).lines.at(1).at(5), u"geluidsbestand ontbreekt"_s);
  EXPECT_EQ(CatalogueReport().files, (QStringList{u"Z:\\audio\\2.mp3"_s, u"Z:\\audio\\1.mp3"_s}));
}

TEST_P(Reports, AnEmptyCatalogueHasAText) {
  EXPECT_TRUE(CatalogueReport().IsEmpty());
  EXPECT_EQ(CatalogueReport().emptyText, u"Er zijn nog geen item-spots."_s);
  EXPECT_TRUE(BlocksReport().IsEmpty());
  EXPECT_TRUE(EndingReport().IsEmpty());
}

TEST_P(Reports, BlocksHaveTheirSpotsInPlayOrder) {
  catalogue_.AddSpot(1, u"Zomer"_s, 32, k11March + 100);
  catalogue_.AddSpot(2, u"Kerst"_s, 95, k11March - 1);
  catalogue_.AddPingle(5, u"Jingle"_s);
  catalogue_.AddItem(7, u"Ochtend"_s, 5);
  catalogue_.AddItem(8, u"Avond"_s);
  catalogue_.Link(7, 2, 1);
  catalogue_.Link(7, 1, 2);
  const Report report = BlocksReport();
  ASSERT_EQ(report.groups.size(), 2U);
  EXPECT_EQ(report.groups[0].name, u"Avond"_s);
  EXPECT_TRUE(report.groups[0].lines.empty());
  EXPECT_EQ(report.groups[1].name, u"Ochtend"_s);
  EXPECT_EQ(report.groups[1].note.toStdString(), "2 item-spots, samen 2:07; opener Jingle");
  ASSERT_EQ(report.groups[1].lines.size(), 2U);
  EXPECT_EQ(Text(report.groups[1].lines[0]), "1 | Kerst | 1:35 | verlopen op 10-03-2025");
  EXPECT_EQ(Text(report.groups[1].lines[1]), "2 | Zomer | 0:32 | loopt t/m 19-06-2025");
}

TEST_P(Reports, ABlockOfFilesNamesTheFolder) {
  catalogue_.station.OnCurrent(
      u"INSERT INTO %1 (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, Aktief) VALUES (3, \"Map\", 2, "
      u"\"Z:\\blokken\", \"blok\", 0)"_s.arg(CurrentCatalogue().items));
  ASSERT_EQ(BlocksReport().groups.size(), 1U);
  EXPECT_EQ(BlocksReport().groups[0].note.toStdString(), "niet aktief; bestanden ‘blok…’ in Z:\\blokken");
}

TEST_P(Reports, EndingSpotsAreActiveAndEndWithinThirtyDays) {
  catalogue_.AddSpot(1, u"gisteren"_s, 10, k11March - 1);
  catalogue_.AddSpot(2, u"vandaag"_s, 10, k11March);
  catalogue_.AddSpot(3, u"laatste"_s, 10, k11March + 30);
  catalogue_.AddSpot(4, u"later"_s, 10, k11March + 31);
  catalogue_.AddSpot(5, u"uit"_s, 10, k11March + 2, 0);
  catalogue_.AddSpot(6, u"morgen"_s, 10, k11March + 1);
  catalogue_.AddItem(7, u"Ochtend"_s);
  catalogue_.Link(7, 1, 6);
  const Report report = EndingReport();
  ASSERT_EQ(report.groups.size(), 1U);
  ASSERT_EQ(report.groups[0].lines.size(), 3U);
  EXPECT_EQ(Text(report.groups[0].lines[0]), "11-03-2025 | 0 | vandaag | ");
  EXPECT_EQ(Text(report.groups[0].lines[1]), "12-03-2025 | 1 | morgen | Ochtend");
  EXPECT_EQ(Text(report.groups[0].lines[2]), "10-04-2025 | 30 | laatste | ");
}

TEST(ReportsOfNothing, AnUnreachableCatalogueIsAnErrorThatNamesTheFile) {
  const Station station;
  global.serverDatabasePath = u"Z:\\nergens\\Server.mdb"_s;
  try {
    CatalogueReport();
    FAIL() << "no error";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"Server.mdb"_s)) << error.Description().toStdString();
  }
}

TEST_P(Reports, AiringsAreListedBySpotForThePeriod) {
  catalogue_.AddSpot(1, u"Zomer"_s, 32, k11March);
  catalogue_.AddSpot(2, u"kerst"_s, 95, k11March);
  catalogue_.AddItem(7, u"Ochtend"_s);
  const QString path = CurrentCatalogue().databasePath;
  SwitchCounting(path, true);
  const auto at = [](int day, int hour) { return QDateTime(QDate(2025, 3, day), QTime(hour, 20, 3)); };
  CountAirings(path, {{1, at(10, 7), 7}, {1, at(11, 23), 0}, {2, at(9, 8), 7}, {2, at(10, 8), 88}, {99, at(10, 9), 0}});
  const Report report = AiringsReport({}, QDate(2025, 3, 10), QDate(2025, 3, 11));
  EXPECT_EQ(report.title, u"Uitzendverslag 10-03-2025 tot en met 11-03-2025"_s);
  ASSERT_EQ(report.groups.size(), 3U);
  EXPECT_EQ(report.groups[0].name, u"Item-spot 99 (verwijderd)"_s);
  EXPECT_EQ(report.groups[1].name, u"kerst"_s);
  EXPECT_EQ(Text(report.groups[1].lines.at(0)), "10-03-2025 | 08:20:03 | Item 88 (verwijderd)");
  EXPECT_EQ(report.groups[2].note, u"2 keer"_s);
  EXPECT_EQ(Text(report.groups[2].lines.at(0)), "10-03-2025 | 07:20:03 | Ochtend");
  EXPECT_EQ(Text(report.groups[2].lines.at(1)), "11-03-2025 | 23:20:03 | ");
  EXPECT_EQ(report.closing, u"4 uitzendingen"_s);
  EXPECT_EQ(AiringsReport(2, QDate(2025, 3, 1), QDate(2025, 3, 31)).closing, u"2 uitzendingen"_s);
  EXPECT_TRUE(AiringsReport({}, QDate(2025, 3, 12), QDate(2025, 3, 31)).IsEmpty());
}

TEST_P(Reports, WithoutALedgerTheReportSaysThatNothingIsCounted) {
  const Report report = AiringsReport({}, QDate(2025, 3, 1), QDate(2025, 3, 31));
  EXPECT_TRUE(report.IsEmpty());
  EXPECT_TRUE(report.emptyText.contains(u"geen uitzendingen geteld"_s));
}
