// SPDX-License-Identifier: MIT
#include "platform/controls/LedClockGround.h"

#include "platform/controls/AccessibleControls.h"
#include "platform/controls/LedDigits.h"
#include "platform/controls/LedPanel.h"

#include <QEvent>

#include <algorithm>

namespace controls {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

LedClockGround::LedClockGround(QWidget* parent) : InstrumentGround(parent), separators_(u":."_s) {
  RegisterAccessibleControls();
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LedClockGround::SetSeparators(const QString& separators) {
  separators_ = separators;
  update();
}

QList<LedPanel*> LedClockGround::Panels() const {
  return findChildren<LedPanel*>(QString(), Qt::FindDirectChildrenOnly);
}

QString LedClockGround::Shown() const {
  const QList<LedPanel*> panels = Panels();
  QString shown;
  for (qsizetype i = 0; i < panels.size(); ++i) {
    if (i > 0 && i <= separators_.size()) shown += separators_[i - 1];
    shown += panels[i]->Shown();
  }
  return shown;
}

int LedClockGround::DigitHeight() const {
  const QList<LedPanel*> panels = Panels();
  return panels.isEmpty() ? 32 : panels.constFirst()->DigitHeight();
}

int LedClockGround::Gap() const {
  return (DigitHeight() * 3 + 5) / 10;
}

QSize LedClockGround::sizeHint() const {
  const QList<LedPanel*> panels = Panels();
  const int padding = std::clamp(DigitHeight() * 3 / 10, 8, 10);
  int width = 2 * (padding + 2);
  for (const LedPanel* panel : panels)
    width += panel->sizeHint().width();
  width += Gap() * std::max(0, static_cast<int>(panels.size()) - 1);
  return {width, DigitHeight() + 2 * padding};
}

void LedClockGround::Arrange() {
  int x = (width() - sizeHint().width()) / 2 + std::clamp(DigitHeight() * 3 / 10, 8, 10) + 2;
  for (LedPanel* panel : Panels()) {
    const QSize size = panel->sizeHint();
    panel->setGeometry(QRect(QPoint(x, (height() - size.height()) / 2), size));
    x += size.width() + Gap();
  }
}

void LedClockGround::resizeEvent(QResizeEvent* event) {
  InstrumentGround::resizeEvent(event);
  Arrange();
}

// The panels do not paint a background of their own, and all are laid out again when one changes its size.
bool LedClockGround::event(QEvent* event) {
  const bool handled = InstrumentGround::event(event);
  if (event->type() == QEvent::ChildPolished) {
    for (LedPanel* panel : Panels())
      if (panel->HasGround()) panel->SetGround(false);
    updateGeometry();
    Arrange();
  } else if (event->type() == QEvent::LayoutRequest) {
    updateGeometry();
    Arrange();
  }
  return handled;
}

void LedClockGround::paintEvent(QPaintEvent* event) {
  InstrumentGround::paintEvent(event);
  QPainter painter(this);
  const QList<LedPanel*> panels = Panels();
  for (qsizetype i = 0; i + 1 < panels.size() && i < separators_.size(); ++i) {
    const QRect before = panels[i]->geometry();
    const QPointF top(before.left() + before.width() + Gap() / 2.0, before.top());
    PaintLedSign(painter, top, DigitHeight(), separators_[i]);
  }
}

}  // namespace controls
