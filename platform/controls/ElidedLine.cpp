// SPDX-License-Identifier: MIT
#include "platform/controls/ElidedLine.h"

#include <QPainter>

namespace controls {

ElidedLine::ElidedLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLine::SetElideMode(Qt::TextElideMode mode) {
  elideMode_ = mode;
  update();
}

QSize ElidedLine::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

QColor ElidedLine::Colour() const {
  return palette().color(foregroundRole());
}

void ElidedLine::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  painter.setPen(Colour());
  if (wordWrap()) {
    painter.drawText(rect(), static_cast<int>(alignment()) | Qt::TextWordWrap, text());
    return;
  }
  painter.drawText(rect(), static_cast<int>(alignment()), fontMetrics().elidedText(text(), elideMode_, width()));
}

}  // namespace controls
