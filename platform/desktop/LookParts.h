// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QStyle>
#include <QStyleOption>

class QPainter;
class QRect;
class QWidget;

// Helper functions of LookStyle, one source file per group. Private to LookStyle.
namespace desktop::look {

inline constexpr int kRadius = 4;
inline constexpr int kCardRadius = 6;

using State = QStyle::StateFlag;

inline bool Has(const QStyleOption& option, State state) {
  return option.state.testFlag(state);
}

QColor Mixed(const QColor& one, const QColor& other, double share);
// Whether the field has the locked background.
bool LooksLocked(const QStyleOption& option, const QWidget* widget);
// Paints a rounded panel with its border inside `rect`. An invalid colour omits fill or border.
void Panel(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border,
           double width = 1);
void Chevron(QPainter& painter, const QRectF& rect, const QColor& colour, bool up = false);

// Sizes.
int ControlHeight(const QFontMetrics& metrics);
int GroupTitleHeight(const QFontMetrics& metrics);
QFont DemiBold(QFont font);

// Buttons and marks.
void PushButtonBevel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget);
void PushButtonLabel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget, const QStyle& style);
void ToolButtonPanel(QPainter& painter, const QStyleOption& option);
void CheckMark(QPainter& painter, const QStyleOption& option);
void RadioMark(QPainter& painter, const QStyleOption& option);
void LabelFocus(QPainter& painter, const QStyleOption& option, const QWidget* widget);

// Fields.
void FieldPanel(QPainter& painter, const QStyleOption& option, const QWidget* widget);
void ComboPanel(QPainter& painter, const QStyleOptionComboBox& option, const QWidget* widget);
// The option with its text elided to `width`; Qt would clip it within a letter.
QStyleOptionComboBox Elided(QStyleOptionComboBox option, int width);
// Background of the scroll bars of `area` (may be null): the list's or the page's.
QColor ScrollGround(const QStyleOption& option, const QWidget* area);
void ScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QWidget* widget, const QStyle& style);
QRect ScrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part, int shortest);
void ProgressGroove(QPainter& painter, const QStyleOptionProgressBar& option);
void ProgressContents(QPainter& painter, const QStyleOptionProgressBar& option, const QWidget* widget);

// The name of the program's icon for one of Qt's standard icons; empty if there is none.
QString OwnIcon(QStyle::StandardPixmap icon);

// Frames and bars.
void ListFrame(QPainter& painter, const QStyleOption& option);
void Card(QPainter& painter, const QRect& rect, const QPalette& palette);
void GroupBox(QPainter& painter, const QStyleOptionGroupBox& option, const QStyle& style, const QWidget* widget);
void TabShape(QPainter& painter, const QStyleOptionTab& option);
void TabLabel(QPainter& painter, const QStyleOptionTab& option, const QStyle& style);
void HeaderSection(QPainter& painter, const QStyleOptionHeader& option);
void SortMark(QPainter& painter, const QStyleOptionHeader& option);
void Hairline(QPainter& painter, const QRect& rect, const QPalette& palette, Qt::Edge edge);
void MenuBarItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style);

}  // namespace desktop::look
