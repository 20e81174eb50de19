// SPDX-License-Identifier: MIT
#include "app/StatusPanel.h"

#include "platform/desktop/ThemeColours.h"

#include <QPainter>

namespace {
constexpr int kMargin = 12;
constexpr int kIconSide = 16;
constexpr int kGap = 6;
constexpr int kHeight = 28;
constexpr int kNarrowest = 2 * kMargin + kIconSide + kGap + 64;  // wide enough for "Offline"
}  // namespace

StatusPanel::StatusPanel(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void StatusPanel::Show(const QString& icon, const QString& text, desktop::IconTint tint, const QString& details) {
  icon_ = icon;
  text_ = text;
  tint_ = tint;
  setAccessibleName(text);
  setAccessibleDescription(details);
  setToolTip(details.isEmpty() ? text : text + u'\n' + details);
  updateGeometry();
  update();
}

QFont StatusPanel::TextFont() const {
  QFont font = this->font();
  if (tint_ == desktop::IconTint::Warning) font.setWeight(QFont::DemiBold);
  return font;
}

QColor StatusPanel::Colour() const {
  if (tint_ == desktop::IconTint::Warning) return desktop::ThemeColoursFor(palette()).ends;
  return palette().color(QPalette::WindowText);
}

QSize StatusPanel::sizeHint() const {
  const QFontMetrics metrics(TextFont());
  return {2 * kMargin + kIconSide + kGap + metrics.horizontalAdvance(text_) + 2, qMax(kHeight, metrics.height() + 8)};
}

QSize StatusPanel::minimumSizeHint() const {
  return {qMin(kNarrowest, sizeHint().width()), sizeHint().height()};
}

void StatusPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect inside = rect().adjusted(kMargin, 0, -kMargin, 0);
  const QRect icon(inside.left(), (height() - kIconSide) / 2, kIconSide, kIconSide);
  desktop::PaintIcon(painter, icon, icon_, Colour());
  painter.setFont(TextFont());
  painter.setPen(Colour());
  const QRect text = inside.adjusted(kIconSide + kGap, 0, 0, 0);
  const QString shown = painter.fontMetrics().elidedText(text_, Qt::ElideRight, text.width());
  painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter, shown);
  painter.fillRect(QRect(width() - 1, 4, 1, height() - 8), desktop::ThemeColoursFor(palette()).line);
}
