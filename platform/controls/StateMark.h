// SPDX-License-Identifier: MIT
#pragma once

#include "platform/controls/ListLine.h"

#include <QWidget>

namespace controls {

// A single mark, next to a text that says the same.
class StateMark : public QWidget {
  Q_OBJECT

 public:
  explicit StateMark(QWidget* parent = nullptr);

  void Show(LineMark mark, LineTone tone);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  LineMark mark_ = LineMark::None;
  LineTone tone_ = LineTone::Quiet;
};

}  // namespace controls
