// SPDX-License-Identifier: MIT
#include "platform/controls/LineDelegate.h"

#include "platform/controls/LineModel.h"
#include "platform/controls/Marks.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>

#include <algorithm>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

constexpr int kEdge = 12;
constexpr int kMarkGap = 10;
constexpr int kColumnGap = 24;
constexpr int kNarrowestText = 140;  // the other columns shrink before the text does
constexpr int kNarrowestTrailing = 60;

void DrawElided(QPainter& painter, const QRect& rect, const QString& text, const QColor& colour, Qt::Alignment side) {
  if (text.isEmpty() || rect.width() <= 0) return;
  painter.setPen(colour);
  const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, rect.width());
  painter.drawText(rect, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, shown);
}

// A bar in the accent colour at the edge and a light tint: the line is marked, but not selected.
void PaintEdited(QPainter& painter, const QStyleOptionViewItem& option) {
  constexpr int kBar = 4;
  QColor accent = desktop::ThemeColoursFor(option.palette).accent;
  painter.fillRect(QRect(option.rect.topLeft(), QSize(kBar, option.rect.height())), accent);
  accent.setAlphaF(0.14F);
  painter.fillRect(option.rect, accent);
}

}  // namespace

LineDelegate::LineDelegate(const LineModel& lines, QObject* parent) : QStyledItemDelegate(parent), lines_(lines) {}

QSize LineDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
  const int text = option.fontMetrics.averageCharWidth() * 20;
  return {text, std::max(rowHeight_, option.fontMetrics.height() + rowHeight_ - 18)};
}

LineDelegate::Colours LineDelegate::ColoursOf(const QStyleOptionViewItem& option, const LineDetails& details) const {
  if (option.state.testFlag(QStyle::State_Selected)) {
    const QColor selected = option.palette.color(QPalette::HighlightedText);
    return {selected, selected, selected, selected};
  }
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  if (!enabled) {
    const QColor grey = option.palette.color(QPalette::Disabled, QPalette::Text);
    return {grey, grey, grey, grey};
  }
  const QColor quiet = desktop::ThemeColoursFor(option.palette).hint;
  const QColor tone = ToneColour(details.tone, option.palette);
  return {details.quietText ? quiet : option.palette.color(QPalette::Text), quiet, tone,
          details.wordInTone ? tone : quiet};
}

// Of the longest content, or of the caption with its arrow; 0 when there is neither.
int LineDelegate::WidthOf(LineColumn column, const QString& longest, const QFontMetrics& metrics) const {
  const QString& caption = captions_[static_cast<std::size_t>(column)];
  std::optional<Measured>& last = measured_[static_cast<std::size_t>(column)];
  if (last && last->longest == longest && last->caption == caption && last->metrics == metrics) return last->width;
  const auto widthOf = [&](const QString& text) { return text.isEmpty() ? 0 : metrics.horizontalAdvance(text) + 4; };
  const int width = std::max(widthOf(longest), widthOf(caption.isEmpty() ? caption : QString(caption + u" ↓"_s)));
  last = Measured{longest, caption, metrics, width};
  return width;
}

LineColumns LineDelegate::ColumnsOf(const QRect& line, const QFontMetrics& metrics) const {
  QRect rest = line.adjusted(kEdge, 0, -kEdge, 0);
  LineColumns columns;
  const auto takeLeft = [&rest](int width, int gap) {
    const QRect taken(rest.left(), rest.top(), width, rest.height());
    rest.setLeft(rest.left() + width + gap);
    return taken;
  };
  const auto takeRight = [&rest](int width, int gap) {
    const QRect taken(rest.right() - width + 1, rest.top(), width, rest.height());
    rest.setRight(rest.right() - width - gap);
    return taken;
  };
  if (numbered_)
    columns.number = takeLeft(metrics.horizontalAdvance(QString::number(lines_.Count()) + u"0"_s), kMarkGap);
  if (lines_.HasMarks()) columns.mark = takeLeft(kMarkSize, kMarkGap);
  const int word = WidthOf(LineColumn::Word, lines_.LongestWord(), metrics);
  const int trailing = std::min(WidthOf(LineColumn::Trailing, lines_.LongestTrailing(), metrics),
                                std::max(rest.width() - kNarrowestText, kNarrowestTrailing));
  if (trailing > 0) columns.trailing = takeRight(trailing, word == 0 ? kMarkGap : kColumnGap);
  const int date = WidthOf(LineColumn::Date, lines_.LongestDate(), metrics);
  // Less important than the word, which may say the same.
  if (date > 0 && rest.width() - date - kColumnGap - word >= kNarrowestText) columns.date = takeRight(date, kColumnGap);
  // A word cut short takes room from the name and says little: the mark and the tool tip say it.
  const int left = std::clamp(rest.width() - kNarrowestText, 0, word + 12);
  if (word > 0 && left >= word * 3 / 4) columns.word = takeRight(left, kMarkGap);
  columns.text = rest;
  return columns;
}

void LineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = lines_.IndexOf(index.row());
  const LineModel::Line& content = lines_.At(line);
  const Colours colours = ColoursOf(option, content.details);
  LineColumns columns = ColumnsOf(option.rect, option.fontMetrics);
  // Beside an empty word there is room for a longer name.
  if (content.details.word.isEmpty() && columns.word.isValid()) columns.text.setRight(columns.word.right());
  painter->save();
  painter->setFont(option.font);
  if (option.state.testFlag(QStyle::State_Selected))
    painter->fillRect(option.rect, option.palette.color(QPalette::Highlight));
  else if (option.features.testFlag(QStyleOptionViewItem::Alternate) && option.state.testFlag(QStyle::State_Enabled))
    painter->fillRect(option.rect, option.palette.color(QPalette::AlternateBase));
  if (lines_.IsEdited(line)) PaintEdited(*painter, option);
  if (numbered_) DrawElided(*painter, columns.number, QString::number(line + 1), colours.quiet, Qt::AlignRight);
  PaintMark(*painter,
            QRectF(columns.mark.left(), columns.mark.center().y() + 0.5 - kMarkSize / 2.0, kMarkSize, kMarkSize),
            content.details.mark, colours.mark);
  DrawElided(*painter, columns.text, content.text, colours.text, Qt::AlignLeft);
  DrawElided(*painter, columns.word, content.details.word, colours.word, Qt::AlignLeft);
  DrawElided(*painter, columns.date, content.details.date, colours.quiet, Qt::AlignLeft);
  DrawElided(*painter, columns.trailing, content.details.trailing, colours.quiet, Qt::AlignRight);
  painter->restore();
}

}  // namespace controls
