// SPDX-License-Identifier: MIT
#include "platform/controls/InstrumentGround.h"

#include "platform/desktop/ThemeColours.h"

namespace controls {

InstrumentGround::InstrumentGround(QWidget* parent) : QFrame(parent) {
  setFrameShape(NoFrame);
}

void InstrumentGround::Paint(QPainter& painter, const QRect& rect, const QColor& focusRing) {
  const double width = focusRing.isValid() ? 2 : 1;
  const double inset = width / 2;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(QColor(desktop::instrument::kGround));
  painter.setPen(QPen(focusRing.isValid() ? focusRing : QColor(desktop::instrument::kRim), width));
  painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), 4 - inset, 4 - inset);
  painter.restore();
}

void InstrumentGround::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  Paint(painter, rect());
}

}  // namespace controls
