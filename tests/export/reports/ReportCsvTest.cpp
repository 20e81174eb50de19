#include "export/reports/ReportCsv.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

Report Lines(std::vector<QStringList> lines) {
  Report report;
  report.columns = {{u"Naam"_s, 80}, {u"Path"_s, 0}};
  report.groups.push_back({{}, {}, std::move(lines)});
  return report;
}

}  // namespace

TEST(ReportCsv, IsWhatASpreadsheetThatCountsInDutchExpects) {
  EXPECT_EQ(CsvOf(Lines({{u"Café"_s, u"Z:\\a.mp3"_s}})).toStdString(),
            "\xEF\xBB\xBFNaam;Path\r\nCaf\xC3\xA9;Z:\\a.mp3\r\n");
}

TEST(ReportCsv, QuotesWhatWouldOtherwiseFallApart) {
  EXPECT_EQ(CsvOf(Lines({{u"a;b"_s, u"zeg \"ja\""_s}, {u"twee\r\nregels"_s, u" rand "_s}})).toStdString(),
            "\xEF\xBB\xBFNaam;Path\r\n\"a;b\";\"zeg \"\"ja\"\"\"\r\n\"twee\r\nregels\";\" rand \"\r\n");
}

TEST(ReportCsv, EachLineRepeatsItsGroupAndAnEmptyGroupHasOne) {
  Report report;
  report.groupTitle = u"Item"_s;
  report.columns = {{u"Nr."_s, 10}, {u"Item-spot"_s, 90}};
  report.groups = {{u"Avond"_s, u"leeg"_s, {}}, {u"Ochtend"_s, u"2"_s, {{u"1"_s, u"Kerst"_s}, {u"2"_s, u"Zomer"_s}}}};
  EXPECT_EQ(CsvOf(report).toStdString(),
            "\xEF\xBB\xBFItem;Toelichting;Nr.;Item-spot\r\nAvond;leeg;;\r\nOchtend;2;1;Kerst\r\nOchtend;2;2;Zomer\r\n");
}
