// SPDX-License-Identifier: MIT
// How an overview is split into pages.
#include "export/reports/PageBreaks.h"

#include "export/reports/ReportPages.h"

#include <QTextDocument>

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal kWidth = 500;
constexpr qreal kHeight = 400;

const QString kLong = u" met een naam die zeker niet op één regel past en daarom op de volgende verder gaat"_s;

// Groups of lines one to three rows high, each line with a different text.
Report ReportOf(const QStringList& names, int lines) {
  Report report;
  report.title = u"Overzicht"_s;
  report.subtitle = u"Radio Testland"_s;
  report.columns = {{u"Naam"_s, 40}, {u"Status"_s, 60}};
  report.closing = u"samen"_s;
  for (const QString& name : names) {
    Report::Group group{name, name.isEmpty() ? QString() : u"toelichting"_s, {}};
    for (int line = 0; line < lines; ++line) {
      const QString text = u"%1 regel %2"_s.arg(name).arg(line);
      group.lines.push_back({text + kLong.repeated(line % 3), u"loopt"_s});
    }
    report.groups.push_back(group);
  }
  return report;
}

std::vector<Report> PagesOf(const Report& report) {
  QTextDocument whole;
  whole.setDocumentMargin(0);
  whole.setTextWidth(kWidth);
  FillDocument(whole, report);
  return SplitIntoPages(report, whole, kHeight);
}

QStringList LinesOf(const std::vector<Report>& pages) {
  QStringList lines;
  for (const Report& page : pages) {
    for (const Report::Group& group : page.groups) {
      for (const QStringList& line : group.lines)
        lines += line.first();
    }
  }
  return lines;
}

// The height of a page that is laid out alone, as for printing.
qreal HeightOf(const std::vector<Report>& pages, std::size_t page) {
  QTextDocument document;
  document.setDocumentMargin(0);
  document.setTextWidth(kWidth);
  FillDocument(document, pages[page], {page == 0, page + 1 == pages.size()});
  return document.size().height();
}

}  // namespace

TEST(PageBreaks, NoLineIsSplitAndTheOrderIsKept) {
  const Report report = ReportOf({QString()}, 90);
  const std::vector<Report> pages = PagesOf(report);
  EXPECT_GT(pages.size(), 5U);
  EXPECT_EQ(LinesOf(pages), LinesOf({report}));
  for (std::size_t page = 0; page < pages.size(); ++page)
    EXPECT_LE(HeightOf(pages, page), kHeight) << page;
}

TEST(PageBreaks, APageIsFilledBeforeTheNextBegins) {
  const std::vector<Report> pages = PagesOf(ReportOf({QString()}, 90));
  constexpr qreal kHighestLine = 120;
  for (std::size_t page = 0; page + 1 < pages.size(); ++page)
    EXPECT_GT(HeightOf(pages, page), kHeight - kHighestLine) << page;
}

TEST(PageBreaks, AGroupsNameIsOnThePageOfItsFirstLine) {
  QStringList names;
  for (int number = 0; number < 30; ++number)
    names += u"Blok %1"_s.arg(number);
  const Report report = ReportOf(names, 4);
  const std::vector<Report> pages = PagesOf(report);
  EXPECT_GT(pages.size(), 5U);
  EXPECT_EQ(LinesOf(pages), LinesOf({report}));
  QStringList named;
  for (const Report& page : pages) {
    for (const Report::Group& group : page.groups) {
      if (group.continued) continue;
      named += group.name;
      ASSERT_FALSE(group.lines.empty()) << group.name.toStdString();
      EXPECT_TRUE(group.lines.front().front().startsWith(group.name + u" regel 0"_s));
    }
  }
  EXPECT_EQ(named, names);
}

TEST(PageBreaks, AContinuedGroupRepeatsItsNameOnEachPage) {
  const Report report = ReportOf({u"Blok"_s, u"Blok"_s + kLong}, 60);
  const std::vector<Report> pages = PagesOf(report);
  EXPECT_GT(pages.size(), 5U);
  EXPECT_EQ(LinesOf(pages), LinesOf({report}));
  int continued = 0;
  for (std::size_t page = 0; page < pages.size(); ++page) {
    const Report::Group& first = pages[page].groups.front();
    EXPECT_TRUE(first.lines.front().front().startsWith(first.name + u" regel"_s)) << page;
    EXPECT_EQ(first.continued, !first.lines.front().front().startsWith(first.name + u" regel 0"_s)) << page;
    EXPECT_LE(HeightOf(pages, page), kHeight) << page;
    continued += first.continued ? 1 : 0;
  }
  EXPECT_GT(continued, 3);
}

TEST(PageBreaks, GroupsWithoutLinesKeepTheirPlace) {
  Report report = ReportOf({u"Een"_s, u"Twee"_s, u"Drie"_s}, 1);
  report.groups[1].lines.clear();
  const std::vector<Report> pages = PagesOf(report);
  ASSERT_EQ(pages.size(), 1U);
  ASSERT_EQ(pages[0].groups.size(), 3U);
  EXPECT_EQ(pages[0].groups[1].name, u"Twee"_s);
  EXPECT_TRUE(pages[0].groups[1].lines.empty());
}

TEST(PageBreaks, AnEmptyReportIsOnePage) {
  EXPECT_EQ(PagesOf(ReportOf({}, 0)).size(), 1U);
}
