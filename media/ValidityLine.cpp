// SPDX-License-Identifier: MIT
#include "media/ValidityLine.h"

#include "platform/controls/Marks.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>

namespace {

constexpr int kGap = 8;

}  // namespace

ValidityLine::ValidityLine(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void ValidityLine::Show(const controls::LineDetails& remark) {
  remark_ = remark;
  setAccessibleName(remark_.word);
  setToolTip(remark_.toolTip);
  update();
}

QSize ValidityLine::sizeHint() const {
  return {controls::kMarkSize + kGap + fontMetrics().averageCharWidth() * 24, 2 * fontMetrics().height()};
}

void ValidityLine::paintEvent(QPaintEvent*) {
  if (remark_.word.isEmpty()) return;
  QPainter painter(this);
  const QColor tone = controls::ToneColour(remark_.tone, palette());
  const QRect mark(0, (height() - controls::kMarkSize) / 2, controls::kMarkSize, controls::kMarkSize);
  controls::PaintMark(painter, mark, remark_.mark, tone);
  painter.setPen(remark_.wordInTone ? tone : desktop::ThemeColoursFor(palette()).hint);
  const QRect place = rect().adjusted(controls::kMarkSize + kGap, 0, 0, 0);
  painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap, remark_.word);
}
