// SPDX-License-Identifier: MIT
#include "export/reports/PageBreaks.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace {

// A part that is never split: a line, including the headings above it for the first line of a group.
struct Piece {
  std::size_t group = 0;
  std::size_t line = 0;  // a group without lines has one piece too
  qreal top = 0;
  qreal repeated = 0;  // height of the group's name and column titles, repeated when this piece begins a page
};

qreal TopOf(const QTextDocument& document, const QTextBlock& block) {
  return document.documentLayout()->blockBoundingRect(block).top();
}

// Top of each group: its name, or its first line when it has no name.
class Groups {
 public:
  Groups(const Report& report, const QTextDocument& whole) : whole_(whole), tops_(report.groups.size(), -1) {
    for (QTextBlock block = whole.begin(); block.isValid(); block = block.next()) {
      if (block.userState() > 0) tops_[static_cast<std::size_t>(block.userState()) - 1] = TopOf(whole, block);
    }
    for (QTextFrame* frame : whole.rootFrame()->childFrames()) {
      if (const auto* table = qobject_cast<QTextTable*>(frame)) tables_.push_back(table);
    }
  }

  // Appends the pieces of a group. Call once for each group, in order.
  void Add(std::vector<Piece>& pieces, const Report::Group& group, std::size_t number) {
    if (group.lines.empty()) return pieces.push_back({number, 0, tops_[number]});
    const QTextTable& table = *tables_[nextTable_++];
    const qreal top = tops_[number] < 0 ? BottomAbove(table) : tops_[number];
    // A repeated name has no note, which leaves room for "(vervolg)".
    const qreal heading = TopOfLine(table, 0) - top;
    pieces.push_back({number, 0, top});
    for (std::size_t line = 1; line < group.lines.size(); ++line)
      pieces.push_back({number, line, TopOfLine(table, line), heading});
  }

 private:
  qreal TopOfLine(const QTextTable& table, std::size_t line) const {
    return TopOf(whole_, table.cellAt(static_cast<int>(line) + 1, 0).firstCursorPosition().block());
  }

  // The bottom of the text above a table; the margin between them moves to the next page with the table.
  qreal BottomAbove(const QTextTable& table) const {
    const QTextBlock before = whole_.findBlock(table.firstPosition() - 1);
    return whole_.documentLayout()->blockBoundingRect(before).bottom();
  }

  const QTextDocument& whole_;
  std::vector<qreal> tops_;
  std::vector<const QTextTable*> tables_;
  std::size_t nextTable_ = 0;
};

std::vector<Piece> PiecesOf(const Report& report, const QTextDocument& whole) {
  std::vector<Piece> pieces;
  Groups groups(report, whole);
  for (std::size_t number = 0; number < report.groups.size(); ++number)
    groups.Add(pieces, report.groups[number], number);
  return pieces;
}

Report EmptyPage(const Report& report) {
  Report page = report;
  page.groups.clear();
  return page;
}

void AddPiece(Report& page, const Report& report, const Piece& piece, bool beginsPage) {
  const Report::Group& group = report.groups[piece.group];
  if (piece.line == 0)
    page.groups.push_back({group.name, group.note, {}});
  else if (beginsPage)
    page.groups.push_back({group.name, {}, {}, true});
  if (!group.lines.empty()) page.groups.back().lines.push_back(group.lines[piece.line]);
}

}  // namespace

std::vector<Report> SplitIntoPages(const Report& report, const QTextDocument& whole, qreal height) {
  const std::vector<Piece> pieces = PiecesOf(report, whole);
  const qreal end = whole.size().height();
  const Report empty = EmptyPage(report);
  std::vector<Report> pages{empty};
  qreal begin = 0;
  for (std::size_t at = 0; at < pieces.size(); ++at) {
    const Piece& piece = pieces[at];
    const qreal bottom = at + 1 < pieces.size() ? pieces[at + 1].top : end;
    const bool beginsPage = !pages.back().IsEmpty() && bottom - begin > height;
    if (beginsPage) {
      pages.push_back(empty);
      begin = piece.top - piece.repeated;
    }
    AddPiece(pages.back(), report, piece, beginsPage);
  }
  return pages;
}
