// SPDX-License-Identifier: MIT
#include "platform/desktop/LookParts.h"
#include "platform/desktop/ThemeColours.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWidget>

#include <algorithm>

namespace desktop::look {

QColor Mixed(const QColor& one, const QColor& other, double share) {
  const auto mix = [share](int a, int b) { return qRound(a + (b - a) * share); };
  return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

void Panel(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border,
           double width) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(border.isValid() ? QPen(border, width) : QPen(Qt::NoPen));
  painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
  const double inset = border.isValid() ? width / 2 : 0;
  const QRectF outline = rect.adjusted(inset, inset, -inset, -inset);
  painter.drawRoundedRect(outline, std::max(0.0, radius - inset), std::max(0.0, radius - inset));
  painter.restore();
}

void Chevron(QPainter& painter, const QRectF& rect, const QColor& colour, bool up) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const double tip = up ? rect.top() : rect.bottom();
  const double ends = up ? rect.bottom() : rect.top();
  painter.drawPolyline(
      QPolygonF{QPointF(rect.left(), ends), QPointF(rect.center().x(), tip), QPointF(rect.right(), ends)});
  painter.restore();
}

void ListFrame(QPainter& painter, const QStyleOption& option) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  const bool focused = enabled && option.state.testFlag(QStyle::State_HasFocus);
  const QColor border = enabled ? Mixed(colours.line, colours.lineStrong, 0.6) : colours.line;
  Panel(painter, option.rect, kRadius, option.palette.color(QPalette::Base), focused ? colours.accent : border,
        focused ? 2 : 1);
}

void Card(QPainter& painter, const QRect& rect, const QPalette& palette) {
  const ThemeColours& colours = ThemeColoursFor(palette);
  Panel(painter, rect, kCardRadius, colours.card, colours.line);
}

void GroupBox(QPainter& painter, const QStyleOptionGroupBox& option, const QStyle& style, const QWidget* widget) {
  Card(painter, style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxFrame, widget), option.palette);
  if (option.text.isEmpty()) return;
  const QRect title = style.subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, widget);
  painter.save();
  painter.setFont(DemiBold(painter.font()));
  style.drawItemText(&painter, title, Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, option.palette,
                     option.state.testFlag(QStyle::State_Enabled), option.text, QPalette::WindowText);
  painter.restore();
}

void TabShape(QPainter& painter, const QStyleOptionTab& option) {
  const ThemeColours& colours = ThemeColoursFor(option.palette);
  if (option.state.testFlag(QStyle::State_Selected)) {
    const QRect& rect = option.rect;
    painter.fillRect(QRect(rect.left(), rect.bottom() - 1, rect.width(), 2), colours.accent);
  }
  if (option.state.testFlag(QStyle::State_HasFocus))
    Panel(painter, QRectF(option.rect).adjusted(2, 2, -2, -4), kRadius, QColor(), colours.accent, 1.5);
}

void TabLabel(QPainter& painter, const QStyleOptionTab& option, const QStyle& style) {
  painter.save();
  painter.setFont(DemiBold(painter.font()));
  style.drawItemText(&painter, option.rect.adjusted(0, 0, 0, -3), Qt::AlignCenter | Qt::TextShowMnemonic,
                     option.palette, option.state.testFlag(QStyle::State_Enabled), option.text, QPalette::WindowText);
  painter.restore();
}

void HeaderSection(QPainter& painter, const QStyleOptionHeader& option) {
  painter.fillRect(option.rect, option.palette.color(QPalette::AlternateBase));
  Hairline(painter, option.rect, option.palette, Qt::BottomEdge);
}

void SortMark(QPainter& painter, const QStyleOptionHeader& option) {
  constexpr QSizeF kSize(8, 4);
  QRectF place(QPointF(), kSize);
  place.moveCenter(QRectF(option.rect).center());
  Chevron(painter, place, ThemeColoursFor(option.palette).hint, option.sortIndicator == QStyleOptionHeader::SortDown);
}

void Hairline(QPainter& painter, const QRect& rect, const QPalette& palette, Qt::Edge edge) {
  QRectF line = rect;
  if (edge == Qt::TopEdge) line.setHeight(1);
  if (edge == Qt::BottomEdge) line.setTop(line.bottom() - 1);
  if (edge == Qt::LeftEdge) line.setWidth(1);
  painter.fillRect(line, ThemeColoursFor(palette).line);
}

void MenuBarItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style) {
  painter.fillRect(option.rect, option.palette.color(QPalette::Window));
  if (option.state.testFlag(QStyle::State_Selected)) {
    const QColor fill = Mixed(option.palette.color(QPalette::Button), option.palette.color(QPalette::WindowText), 0.06);
    Panel(painter, QRectF(option.rect).adjusted(0, 2, 0, -2), kRadius, fill, QColor());
  }
  style.drawItemText(&painter, option.rect, Qt::AlignCenter | Qt::TextShowMnemonic, option.palette,
                     option.state.testFlag(QStyle::State_Enabled), option.text, QPalette::WindowText);
}

}  // namespace desktop::look
