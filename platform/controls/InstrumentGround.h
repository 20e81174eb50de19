// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QPainter>

namespace controls {

// A near-black background with a border, for a group of sound controls in a layout.
class InstrumentGround : public QFrame {
  Q_OBJECT

 public:
  explicit InstrumentGround(QWidget* parent = nullptr);

  // Paints such a background. A valid `focusRing` is the colour of the border.
  static void Paint(QPainter& painter, const QRect& rect, const QColor& focusRing = QColor());

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace controls
