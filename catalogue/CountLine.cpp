#include "catalogue/CountLine.h"

#include "platform/desktop/Tokens.h"

#include <QPainter>

CountLine::CountLine(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize CountLine::minimumSizeHint() const {
  return {0, fontMetrics().height()};
}

void CountLine::paintEvent(QPaintEvent* event) {
  Q_UNUSED(event);
  QPainter painter(this);
  painter.setPen(desktop::TokensFor(palette()).hint);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, shown);
}
