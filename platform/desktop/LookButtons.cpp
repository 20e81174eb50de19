// SPDX-License-Identifier: MIT
#include "platform/desktop/LookParts.h"
#include "platform/desktop/ThemeColours.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWidget>

namespace desktop::look {
namespace {

constexpr int kIconGap = 8;
constexpr int kEdge = 12;  // distance from a button's edge to its icon

bool IsMarked(const QWidget* widget, const char* property) {
  return widget != nullptr && widget->property(property).toBool();
}

bool IsFilled(const QStyleOptionButton& option, const QWidget* widget) {
  if (!Has(option, State::State_Enabled)) return false;
  if (IsMarked(widget, "danger")) return true;
  return option.features.testFlag(QStyleOptionButton::DefaultButton) && !IsMarked(widget, "quiet");
}

QColor FillText(const QStyleOptionButton& option, const QWidget* widget) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  return IsMarked(widget, "danger") ? colours.onDanger : colours.onAccent;
}

// Lighter when hovered, darker when pressed.
QColor Shaded(const QColor& colour, const QStyleOption& option) {
  if (Has(option, State::State_Sunken)) return Mixed(colour, option.palette.color(QPalette::WindowText), 0.14);
  if (Has(option, State::State_MouseOver)) return Mixed(colour, option.palette.color(QPalette::WindowText), 0.06);
  return colour;
}

// An icon with all its pixels in one colour.
void DrawIcon(QPainter& painter, const QRect& rect, const QIcon& icon, QIcon::Mode mode, const QColor& tint) {
  const qreal scale = painter.device()->devicePixelRatio();
  QPixmap pixmap = icon.pixmap(rect.size(), scale, mode);
  if (tint.isValid()) {
    QPainter tinting(&pixmap);
    tinting.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tinting.fillRect(QRectF(QPointF(), pixmap.deviceIndependentSize()), tint);
  }
  painter.drawPixmap(rect, pixmap);
}

struct LabelPlaces {
  QRect icon;
  QRect text;
  int alignment = Qt::AlignCenter;
};

// Icon and text centred together; icon at the left edge or after the text if the widget's properties say so.
LabelPlaces PlacesOf(const QStyleOptionButton& option, const QWidget* widget, int textWidth) {
  LabelPlaces places;
  places.text = option.rect;
  if (option.icon.isNull()) return places;
  const QSize size = option.iconSize;
  const int gap = option.text.isEmpty() ? 0 : kIconGap - 2;
  const int together = size.width() + gap + (option.text.isEmpty() ? 0 : textWidth);
  const bool atEdge = IsMarked(widget, "textBesideIcon");
  const int left = atEdge ? option.rect.left() + kEdge : option.rect.center().x() - together / 2 + 1;
  const int top = option.rect.top() + (option.rect.height() - size.height()) / 2;
  if (IsMarked(widget, "iconAfterText")) {
    places.text.setLeft(left);
    places.icon = QRect(QPoint(left + textWidth + gap, top), size);
  } else {
    places.icon = QRect(QPoint(left, top), size);
    places.text.setLeft(left + size.width() + (atEdge ? kIconGap : gap));
  }
  places.alignment = Qt::AlignLeft | Qt::AlignVCenter;
  return places;
}

}  // namespace

void PushButtonBevel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  const bool enabled = Has(option, State::State_Enabled);
  const bool focused = enabled && Has(option, State::State_HasFocus);
  const QRectF rect = option.rect;
  if (IsFilled(option, widget)) {
    const QColor fill = Shaded(IsMarked(widget, "danger") ? colours.danger : colours.accent, option);
    Panel(painter, rect, kRadius, fill, QColor());
    if (focused) Panel(painter, rect.adjusted(2, 2, -2, -2), kRadius - 1, QColor(), FillText(option, widget));
    return;
  }
  if (option.features.testFlag(QStyleOptionButton::Flat) && !focused && !Has(option, State::State_MouseOver)) return;
  const QColor face = Has(option, State::State_On) ? option.palette.color(QPalette::Button) : colours.face;
  const QColor fill = enabled ? Shaded(face, option) : option.palette.color(QPalette::Window);
  const QColor border = enabled ? colours.lineStrong : colours.line;
  Panel(painter, rect, kRadius, fill, focused ? colours.accent : border, focused ? 2 : 1);
}

void PushButtonLabel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget, const QStyle& style) {
  painter.save();
  const bool filled = IsFilled(option, widget);
  if (filled) painter.setFont(DemiBold(painter.font()));
  const int textWidth = painter.fontMetrics().size(Qt::TextShowMnemonic, option.text).width();
  const LabelPlaces places = PlacesOf(option, widget, textWidth);
  const bool enabled = Has(option, State::State_Enabled);
  const QColor fillText = filled ? FillText(option, widget) : QColor();
  if (!option.icon.isNull())
    DrawIcon(painter, places.icon, option.icon, enabled ? QIcon::Normal : QIcon::Disabled, fillText);

  int flags = places.alignment | Qt::TextShowMnemonic;
  if (style.styleHint(QStyle::SH_UnderlineShortcut, &option, widget) == 0) flags |= Qt::TextHideMnemonic;
  if (filled) painter.setPen(fillText);
  style.drawItemText(&painter, places.text, flags, option.palette, enabled, option.text,
                     filled ? QPalette::NoRole : QPalette::ButtonText);
  painter.restore();
}

void ToolButtonPanel(QPainter& painter, const QStyleOption& option) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  const QRectF rect = QRectF(option.rect).adjusted(2, 2, -2, -2);
  const bool live = Has(option, State::State_Enabled);
  const bool raised =
      Has(option, State::State_MouseOver) || Has(option, State::State_Sunken) || Has(option, State::State_On);
  if (live && raised) Panel(painter, rect, kRadius, Shaded(option.palette.color(QPalette::Button), option), QColor());
  if (live && Has(option, State::State_HasFocus)) Panel(painter, rect, kRadius, QColor(), colours.accent, 2);
}

namespace {

struct MarkColours {
  QColor fill, border, sign;
};

MarkColours ColoursOfMark(const QStyleOption& option, bool chosen) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  if (!Has(option, State::State_Enabled)) {
    const QColor grey = option.palette.color(QPalette::Disabled, QPalette::Text);
    return {option.palette.color(QPalette::Button), Mixed(colours.line, colours.lineStrong, 0.3), grey};
  }
  if (chosen) return {Shaded(colours.accent, option), colours.accent, colours.onAccent};
  return {Shaded(option.palette.color(QPalette::Base), option), colours.lineStrong, colours.onAccent};
}

}  // namespace

void CheckMark(QPainter& painter, const QStyleOption& option) {
  const bool on = Has(option, State::State_On);
  const bool partly = Has(option, State::State_NoChange);
  const MarkColours colours = ColoursOfMark(option, on || partly);
  const QRectF box = QRectF(option.rect);
  Panel(painter, box, kRadius, colours.fill, colours.border);
  if (!on && !partly) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colours.sign, box.width() / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const auto at = [&box](double x, double y) { return box.topLeft() + QPointF(x * box.width(), y * box.height()); };
  if (on)
    painter.drawPolyline(QPolygonF{at(0.25, 0.53), at(0.43, 0.70), at(0.76, 0.34)});
  else
    painter.drawLine(at(0.28, 0.5), at(0.72, 0.5));
  painter.restore();
}

void RadioMark(QPainter& painter, const QStyleOption& option) {
  const bool on = Has(option, State::State_On);
  const MarkColours colours = ColoursOfMark(option, on);
  const QRectF box = QRectF(option.rect);
  Panel(painter, box, box.width() / 2, colours.fill, colours.border);
  if (!on) return;
  const double inset = box.width() * 0.31;
  Panel(painter, box.adjusted(inset, inset, -inset, -inset), box.width() / 2, colours.sign, QColor());
}

void LabelFocus(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
  QRect rect = option.rect.adjusted(-1, -1, 2, 1);
  if (widget != nullptr) rect &= widget->rect();  // the rest would be clipped
  Panel(painter, rect, kRadius, QColor(), ThemeColoursFor(option.palette).accent, 2);
}

}  // namespace desktop::look
