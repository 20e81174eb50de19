// SPDX-License-Identifier: MIT
#include "platform/controls/StateMark.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/controls/Marks.h"

#include <QPainter>

namespace controls {

StateMark::StateMark(QWidget* parent) : QWidget(parent) {
  RegisterAccessibleControls();
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StateMark::Show(LineMark mark, LineTone tone) {
  mark_ = mark;
  tone_ = tone;
  update();
}

QSize StateMark::sizeHint() const {
  return {kMarkSize, kMarkSize};
}

void StateMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintMark(painter, rect(), mark_, ToneColour(tone_, palette()));
}

}  // namespace controls
