// SPDX-License-Identifier: MIT
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

TEST(ReportCsv, HasTheFormatOfADutchSpreadsheet) {
  EXPECT_EQ(CsvOf(Lines({{u"Café"_s, u"Z:\\a.mp3"_s}})).toStdString(),
            "\xEF\xBB\xBFNaam;Path\r\nCaf\xC3\xA9;Z:\\a.mp3\r\n");
}

TEST(ReportCsv, QuotesCellsWithSeparators) {
  EXPECT_EQ(CsvOf(Lines({{u"a;b"_s, u"zeg \"ja\""_s}, {u"twee\r\nregels"_s, u" rand "_s}})).toStdString(),
            "\xEF\xBB\xBFNaam;Path\r\n\"a;b\";\"zeg \"\"ja\"\"\"\r\n\"twee\r\nregels\";\" rand \"\r\n");
}

TEST(ReportCsv, FormulasAreWrittenAsText) {
  const auto field = [](const QString& text) {
    return QString::fromUtf8(CsvOf(Lines({{text, u"x"_s}}))).section(u"\r\n"_s, 1).section(u";x"_s, 0, 0).toStdString();
  };
  for (const QString& text :
       {u"=1+1"_s, u"@SUM(A1)"_s, u"+cmd"_s, u"-cmd"_s, u"-2+cmd|' /C calc'!A0"_s, u"+3*A1"_s, u"\t=1"_s, u"-Naam"_s})
    EXPECT_EQ(field(text), "'" + text.toStdString());
  EXPECT_EQ(field(u" =1;2"_s), "\"' =1;2\"");
  for (const QString& text :
       {u"-5"_s, u"+32 2 555 12 34"_s, u"-3,5"_s, u"-"_s, u"- -"_s, u"a=1"_s, u"1+1"_s, u""_s, u"'=1"_s})
    EXPECT_EQ(field(text), text.toStdString());
}

TEST(ReportCsv, EachLineRepeatsItsGroupAndAnEmptyGroupHasALine) {
  Report report;
  report.groupTitle = u"Item"_s;
  report.columns = {{u"Nr."_s, 10}, {u"Item-spot"_s, 90}};
  report.groups = {{u"Avond"_s, u"leeg"_s, {}}, {u"Ochtend"_s, u"2"_s, {{u"1"_s, u"Kerst"_s}, {u"2"_s, u"Zomer"_s}}}};
  EXPECT_EQ(CsvOf(report).toStdString(),
            "\xEF\xBB\xBFItem;Toelichting;Nr.;Item-spot\r\nAvond;leeg;;\r\nOchtend;2;1;Kerst\r\nOchtend;2;2;Zomer\r\n");
}
