// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QPainter>

namespace controls {

// The near-black ground on which instruments stand together, with a rim. Put a layout in it.
class InstrumentGround : public QFrame {
  Q_OBJECT

 public:
  explicit InstrumentGround(QWidget* parent = nullptr);

  // Paints such a ground; `focused` gives it the accent as its rim.
  static void Paint(QPainter& painter, const QRect& rect, const QColor& focusRing = QColor());

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace controls
