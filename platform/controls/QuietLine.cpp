#include "platform/controls/QuietLine.h"

#include "platform/desktop/Tokens.h"

#include <QPainter>

namespace controls {

QuietLine::QuietLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize QuietLine::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

void QuietLine::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  painter.setPen(desktop::TokensFor(palette()).hint);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  painter.drawText(rect(), static_cast<int>(alignment()), shown);
}

}  // namespace controls
