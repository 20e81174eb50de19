// SPDX-License-Identifier: MIT
#include "export/reports/ReportPages.h"

#include "export/reports/PageBreaks.h"
#include "platform/runtime/Error.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal kMarginMm = 18;
constexpr int kDotsPerInch = 300;
constexpr qreal kFooterLines = 2;  // space below the text, in line heights
const QColor kLine(0xD8, 0xDD, 0xE3);
const QColor kQuiet(0x56, 0x60, 0x6B);

constexpr qreal kAboveLines = 8;
constexpr qreal kTextSize = 9;  // in points, like all sizes here
constexpr qreal kTitleSize = 16;
constexpr qreal kPadding = 3;
constexpr qreal kGapAfterNumbers = 10;  // the next column begins directly after right-aligned text
constexpr qreal kGroupSize = 10.5;

QTextCharFormat Letters(qreal size, QFont::Weight weight, const QColor& colour) {
  QTextCharFormat format;
  format.setFontPointSize(size);
  format.setFontWeight(weight);
  format.setForeground(colour);
  return format;
}

QTextBlockFormat Space(qreal above, qreal below) {
  QTextBlockFormat format;
  format.setTopMargin(above);
  format.setBottomMargin(below);
  return format;
}

QTextBlockFormat NoHeight() {
  QTextBlockFormat format;
  format.setLineHeight(0, QTextBlockFormat::FixedHeight);
  return format;
}

void AddText(QTextCursor& cursor, const QString& text, const QTextCharFormat& letters, const QTextBlockFormat& space) {
  cursor.insertBlock(space, letters);
  cursor.insertText(text, letters);
}

std::vector<std::size_t> Printed(const Report& report) {
  std::vector<std::size_t> printed;
  for (std::size_t at = 0; at < report.columns.size(); ++at) {
    if (report.columns[at].share > 0) printed.push_back(at);
  }
  return printed;
}

QTextTableFormat TableFormat(const Report& report, const std::vector<std::size_t>& printed) {
  QTextTableFormat format;
  QList<QTextLength> widths;
  for (const std::size_t at : printed)
    widths += QTextLength(QTextLength::PercentageLength, report.columns[at].share);
  format.setColumnWidthConstraints(widths);
  format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
  format.setHeaderRowCount(1);
  format.setTopMargin(kAboveLines);
  format.setBorder(0);
  format.setCellSpacing(0);
  format.setCellPadding(kPadding);
  return format;
}

// One cell with a hairline below it.
void FillCell(QTextTable& table, int row, int column, const QString& text, bool right, const QTextCharFormat& letters) {
  QTextTableCell cell = table.cellAt(row, column);
  QTextTableCellFormat format;
  format.setBottomBorder(0.5);
  format.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
  format.setBottomBorderBrush(kLine);
  format.setPadding(kPadding);
  if (column == 0) format.setLeftPadding(0);  // aligned with the title
  if (right) format.setRightPadding(kGapAfterNumbers);
  cell.setFormat(format);
  QTextCursor cursor = cell.firstCursorPosition();
  QTextBlockFormat block;
  block.setAlignment(right ? Qt::AlignRight : Qt::AlignLeft);
  cursor.setBlockFormat(block);
  cursor.insertText(text, letters);
}

void AddLines(QTextCursor& cursor, const Report& report, const Report::Group& group) {
  const std::vector<std::size_t> printed = Printed(report);
  QTextTable* table = cursor.insertTable(static_cast<int>(group.lines.size()) + 1, static_cast<int>(printed.size()),
                                         TableFormat(report, printed));
  const QTextCharFormat head = Letters(kTextSize, QFont::DemiBold, kQuiet);
  const QTextCharFormat plain = Letters(kTextSize, QFont::Normal, Qt::black);
  for (std::size_t at = 0; at < printed.size(); ++at) {
    const Report::Column& column = report.columns[printed[at]];
    FillCell(*table, 0, static_cast<int>(at), column.title, column.right, head);
    for (std::size_t line = 0; line < group.lines.size(); ++line) {
      FillCell(*table, static_cast<int>(line) + 1, static_cast<int>(at),
               group.lines[line].at(static_cast<qsizetype>(printed[at])), column.right, plain);
    }
  }
  cursor.movePosition(QTextCursor::End);
  cursor.setBlockFormat(NoHeight());  // Qt always adds a block after a table
}

void AddGroup(QTextCursor& cursor, const Report& report, const Report::Group& group, int number) {
  if (!group.name.isEmpty()) {
    AddText(cursor, group.name, Letters(kGroupSize, QFont::DemiBold, Qt::black), Space(12, 0));
    cursor.block().setUserState(number);
    const QTextCharFormat quiet = Letters(kTextSize, QFont::Normal, kQuiet);
    if (group.continued)
      cursor.insertText(u" (vervolg)"_s, quiet);
    else
      AddText(cursor, group.note, quiet, Space(0, 2));
  }
  if (!group.lines.empty()) AddLines(cursor, report, group);
}

// Footer of a page: title of the report, page number and number of pages.
void PaintFooter(QPainter& painter, const QRectF& place, const Report& report, std::size_t page, std::size_t pages) {
  painter.setPen(kQuiet);
  painter.drawText(place, Qt::AlignLeft | Qt::AlignBottom, report.title + u" · "_s + report.subtitle);
  painter.drawText(place, Qt::AlignRight | Qt::AlignBottom, u"Pagina %1 van %2"_s.arg(page).arg(pages));
}

}  // namespace

void FillDocument(QTextDocument& document, const Report& report, PageEnds ends) {
  document.clear();
  QTextCursor cursor(&document);
  cursor.beginEditBlock();  // lay out once at the end instead of for every cell
  const QTextCharFormat quiet = Letters(kTextSize, QFont::Normal, kQuiet);
  cursor.setBlockFormat(Space(0, 0));
  if (ends.title) {
    cursor.insertText(report.title, Letters(kTitleSize, QFont::DemiBold, Qt::black));
    AddText(cursor, report.subtitle, quiet, Space(0, 10));
  } else {
    cursor.setBlockFormat(NoHeight());  // a document always begins with a block
  }
  for (std::size_t number = 0; number < report.groups.size(); ++number)
    AddGroup(cursor, report, report.groups[number], static_cast<int>(number) + 1);
  if (ends.closing) AddText(cursor, report.IsEmpty() ? report.emptyText : report.closing, quiet, Space(10, 0));
  cursor.endEditBlock();
}

void PrintReport(const Report& report, QPagedPaintDevice& device) {
  QPainter painter;
  if (!painter.begin(&device)) throw runtime::Error(u"Kan het overzicht '%1' niet afdrukken."_s.arg(report.title));
  QTextDocument document;
  document.setDocumentMargin(0);
  document.documentLayout()->setPaintDevice(&device);  // so that points have their size on paper
  document.setTextWidth(device.width());
  FillDocument(document, report);
  QFont footer = document.defaultFont();
  footer.setPointSizeF(kTextSize - 1);
  painter.setFont(footer);
  const QRectF paper(0, 0, device.width(), device.height());
  const std::vector<Report> pages =
      SplitIntoPages(report, document, paper.height() - kFooterLines * painter.fontMetrics().height());
  for (std::size_t page = 0; page < pages.size(); ++page) {
    if (page > 0) device.newPage();
    FillDocument(document, pages[page], {page == 0, page + 1 == pages.size()});
    document.drawContents(&painter);
    PaintFooter(painter, paper, report, page + 1, pages.size());
  }
}

QByteArray PdfOf(const Report& report) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle(report.title);
    writer.setCreator(u"Spotrooster"_s);
    writer.setResolution(kDotsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm), QPageLayout::Millimeter));
    PrintReport(report, writer);
  }
  return bytes;
}
