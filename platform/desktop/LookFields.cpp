// SPDX-License-Identifier: MIT
#include "platform/desktop/Lock.h"
#include "platform/desktop/LookParts.h"
#include "platform/desktop/ThemeColours.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QStyle>
#include <QTime>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace desktop::look {
namespace {

using namespace Qt::StringLiterals;

}  // namespace

bool LooksLocked(const QStyleOption& option, const QWidget* widget) {
  return !Has(option, State::State_Enabled) || (widget != nullptr && IsLocked(widget));
}

void FieldPanel(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  const bool focused = Has(option, State::State_Enabled) && Has(option, State::State_HasFocus);
  const QColor border = LooksLocked(option, widget) ? colours.line : colours.lineStrong;
  Panel(painter, option.rect, kRadius, option.palette.color(QPalette::Base), focused ? colours.accent : border,
        focused ? 2 : 1);
}

void ComboPanel(QPainter& painter, const QStyleOptionComboBox& option, const QWidget* widget) {
  FieldPanel(painter, option, widget);
  QColor arrow = ThemeColoursFor(option.palette).hint;
  if (LooksLocked(option, widget)) arrow = Mixed(option.palette.color(QPalette::Base), arrow, 0.2);
  QRectF place(0, 0, 10, 5);
  place.moveCenter(QPointF(option.rect.right() - 15, option.rect.center().y() + 0.5));
  Chevron(painter, place, arrow);
}

QStyleOptionComboBox Elided(QStyleOptionComboBox option, int width) {
  constexpr int kMargins = 2;  // left and right of the text, sum
  constexpr int kAfterIcon = 4;
  const int icon = option.currentIcon.isNull() ? 0 : option.iconSize.width() + kAfterIcon;
  option.currentText = option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, width - icon - kMargins);
  return option;
}

// Scroll bars have no arrows: the groove fills the bar.
QRect ScrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part, int shortest) {
  const bool lying = option.orientation == Qt::Horizontal;
  const QRect& rect = option.rect;
  const int room = lying ? rect.width() : rect.height();
  const qint64 range = qint64(option.maximum) - option.minimum;
  int length = room;
  if (range > 0) length = static_cast<int>(qint64(option.pageStep) * room / (range + option.pageStep));
  length = std::clamp(length, std::min(shortest, room), room);
  const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                    room - length, option.upsideDown);
  const auto piece = [&](int from, int to) {
    return lying ? QRect(rect.left() + from, rect.top(), to - from, rect.height())
                 : QRect(rect.left(), rect.top() + from, rect.width(), to - from);
  };
  switch (part) {
    case QStyle::SC_ScrollBarGroove:
      return rect;
    case QStyle::SC_ScrollBarSlider:
      return piece(start, start + length);
    case QStyle::SC_ScrollBarSubPage:
      return piece(0, start);
    case QStyle::SC_ScrollBarAddPage:
      return piece(start + length, room);
    default:
      return {};
  }
}

QColor ScrollGround(const QStyleOption& option, const QWidget* area) {
  const auto* scroller = qobject_cast<const QAbstractScrollArea*>(area);
  const bool inList = scroller != nullptr && scroller->frameShape() != QFrame::NoFrame;
  return option.palette.color(inList ? QPalette::Base : QPalette::Window);
}

void ScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QWidget* widget, const QStyle& style) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  const QWidget* area =
      widget != nullptr && widget->parentWidget() != nullptr ? widget->parentWidget()->parentWidget() : nullptr;
  painter.fillRect(option.rect, ScrollGround(option, area));
  if (option.maximum <= option.minimum) return;

  QRectF slider = style.subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, widget);
  slider = slider.adjusted(3, 3, -3, -3);
  const bool active = Has(option, State::State_MouseOver) || Has(option, State::State_Sunken);
  const QColor colour = active ? colours.lineStrong : Mixed(colours.line, colours.lineStrong, 0.35);
  Panel(painter, slider, std::min(slider.width(), slider.height()) / 2, colour, QColor());
}

namespace {

constexpr double kBarHeight = 8;

// A bar without text is thin, whatever the widget's height.
QRectF GrooveOf(const QStyleOptionProgressBar& option) {
  QRectF groove = option.rect;
  if (option.textVisible || groove.height() <= kBarHeight) return groove;
  groove.setHeight(kBarHeight);
  groove.moveTop(option.rect.top() + (option.rect.height() - kBarHeight) / 2);
  return groove;
}

}  // namespace

void ProgressGroove(QPainter& painter, const QStyleOptionProgressBar& option) {
  const QRectF groove = GrooveOf(option);
  Panel(painter, groove, groove.height() / 2, ThemeColoursFor(option.palette).line, QColor());
}

namespace {

constexpr int kRunMs = 1600;     // one pass from left to right
constexpr int kFrameMs = 40;     // between two frames of the animation
constexpr double kRunner = 0.4;  // width of the moving part, as a share

// A bar of unknown length schedules its next frame each time it is painted.
void KeepRunning(const QWidget* widget) {
  if (widget == nullptr) return;
  auto* bar = const_cast<QWidget*>(widget);
  auto* timer = bar->findChild<QTimer*>(u"runningBar"_s, Qt::FindDirectChildrenOnly);
  if (timer == nullptr) {
    timer = new QTimer(bar);
    timer->setObjectName(u"runningBar"_s);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, bar, qOverload<>(&QWidget::update));
  }
  if (!timer->isActive()) timer->start(kFrameMs);
}

}  // namespace

void ProgressContents(QPainter& painter, const QStyleOptionProgressBar& option, const QWidget* widget) {
  const QRectF groove = GrooveOf(option);
  QRectF bar = groove;
  if (option.minimum == option.maximum) {
    const double share = (QTime::currentTime().msecsSinceStartOfDay() % kRunMs) / double(kRunMs);
    bar.setLeft(groove.left() + (share * (1 + kRunner) - kRunner) * groove.width());
    bar.setWidth(kRunner * groove.width());
    bar = bar.intersected(groove);
    KeepRunning(widget);
  } else {
    const double range = double(option.maximum) - option.minimum;
    bar.setWidth(groove.width() * std::clamp((option.progress - option.minimum) / range, 0.0, 1.0));
  }
  if (!bar.isEmpty()) Panel(painter, bar, groove.height() / 2, ThemeColoursFor(option.palette).accent, QColor());
}

}  // namespace desktop::look
