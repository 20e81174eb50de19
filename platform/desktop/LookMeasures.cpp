// SPDX-License-Identifier: MIT
#include "platform/desktop/LookParts.h"
#include "platform/desktop/LookStyle.h"

#include <QAbstractScrollArea>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

// Sizes and positions, in steps of 4 logical pixels.
namespace desktop {
namespace look {

int ControlHeight(const QFontMetrics& metrics) {
  return std::max(28, metrics.height() + 12);
}

int GroupTitleHeight(const QFontMetrics& metrics) {
  return metrics.height() + 6;
}

QFont DemiBold(QFont font) {
  font.setWeight(QFont::DemiBold);
  return font;
}

}  // namespace look

namespace {

constexpr int kWindowMargin = 16;
constexpr int kCardMargin = 12;
constexpr int kGap = 8;
constexpr int kNarrowestButton = 88;
constexpr int kShortestSlider = 28;

bool IsCard(const QWidget& widget) {
  return widget.property("card").toBool();
}

// Margins of a layout, by its parent widget. A tab page has a top margin only.
int LayoutMargin(QStyle::PixelMetric edge, const QWidget* widget) {
  if (widget == nullptr) return kWindowMargin;
  if (qobject_cast<const QGroupBox*>(widget) != nullptr || IsCard(*widget)) return kCardMargin;
  if (widget->isWindow()) return kWindowMargin;
  const bool page = qobject_cast<const QStackedWidget*>(widget->parentWidget()) != nullptr;
  return page && edge == QStyle::PM_LayoutTopMargin ? kCardMargin : 0;
}

QSize PushButtonSize(const QStyleOption& option, QSize size) {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  if (button != nullptr && !button->text.isEmpty()) {
    const QFontMetrics bold(look::DemiBold(QFont(QGuiApplication::font())));
    const QSize plain = option.fontMetrics.size(Qt::TextShowMnemonic, button->text);
    size.rwidth() += std::max(0, bold.size(Qt::TextShowMnemonic, button->text).width() - plain.width());
  }
  const bool iconOnly = button != nullptr && button->text.isEmpty();
  const int width = size.width() + 2 * (iconOnly ? 12 : 14);
  return {std::max(width, iconOnly ? 40 : kNarrowestButton), look::ControlHeight(option.fontMetrics)};
}

QSize GroupBoxSize(const QStyleOption& option, QSize size, const QWidget* widget) {
  const auto* box = qobject_cast<const QGroupBox*>(widget);
  if (box == nullptr || box->title().isEmpty()) return size;
  const QFontMetrics bold(look::DemiBold(box->font()));
  const int title = bold.size(Qt::TextShowMnemonic, box->title()).width();
  return {std::max(size.width(), title), size.height() + look::GroupTitleHeight(option.fontMetrics)};
}

QSize ToolButtonSize(const QStyleOption& option, QSize size) {
  const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(&option);
  if (button == nullptr || button->toolButtonStyle != Qt::ToolButtonTextUnderIcon) return size;
  return {std::max(96, size.width() + 16), std::max(62, size.height() + 12)};
}

}  // namespace

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutBottomMargin:
      return LayoutMargin(metric, widget);
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return kGap;
    case PM_DefaultFrameWidth:
      return qobject_cast<const QAbstractScrollArea*>(widget) != nullptr ? 2 : 1;
    case PM_ButtonDefaultIndicator:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabOverlap:
    case PM_MenuBarPanelWidth:
    case PM_ScrollView_ScrollBarSpacing:
      return 0;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
    case PM_LineEditIconSize:
      return 16;
    case PM_FocusFrameHMargin:  // next to the texts of a drop-down list
      return 7;
    case PM_HeaderMargin:  // captions above the texts of their column
      return 8;
    case PM_ScrollBarExtent:
      return 14;
    case PM_ScrollBarSliderMin:
      return kShortestSlider;
    case PM_TabBarTabHSpace:
    case PM_ToolBarIconSize:
      return 28;
    case PM_ToolBarItemMargin:
    case PM_ToolBarFrameWidth:
      return 4;
    case PM_ToolBarItemSpacing:
      return 0;
    case PM_MenuBarItemSpacing:
    case PM_MenuBarHMargin:
      return 4;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

// Called by Qt for a layout within a grid whose two spacings differ.
int LookStyle::layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType, Qt::Orientation, const QStyleOption*,
                             const QWidget*) const {
  return kGap;
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
  if (option == nullptr) return QProxyStyle::sizeFromContents(type, option, contents, widget);
  const int height = look::ControlHeight(option->fontMetrics);
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  switch (type) {
    case CT_PushButton:
      return PushButtonSize(*option, contents);
    case CT_LineEdit:
      return {contents.width() + 16, height};
    case CT_ComboBox:
      return {contents.width() + 44, height};
    case CT_CheckBox:
    case CT_RadioButton:
      return {size.width() + 4, std::max(size.height(), option->fontMetrics.height() + 6)};
    case CT_TabBarTab:
      return {size.width(), std::max(32, option->fontMetrics.height() + 15)};
    case CT_GroupBox:
      return GroupBoxSize(*option, contents, widget);
    case CT_ToolButton:
      return ToolButtonSize(*option, size);
    case CT_MenuItem: {
      const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
      if (item != nullptr && item->menuItemType != QStyleOptionMenuItem::Separator) size.setHeight(height);
      return size;
    }
    case CT_MenuBarItem:
      return {contents.width() + 20, height};
    case CT_ItemViewItem:
      return {size.width(), std::max(size.height(), height - 2)};
    default:
      return size;
  }
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  if (element == SE_LineEditContents) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool framed = frame != nullptr && frame->lineWidth > 0;
    return framed ? option->rect.adjusted(6, 2, -6, -2) : option->rect;
  }
  if (element == SE_ProgressBarGroove || element == SE_ProgressBarContents) {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
    if (bar != nullptr && !bar->textVisible) return option->rect;
  }
  if (element == SE_PushButtonFocusRect) return option->rect;
  return QProxyStyle::subElementRect(element, option, widget);
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                                const QWidget* widget) const {
  if (control == CC_GroupBox) {
    const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
    const int title = box == nullptr || box->text.isEmpty() ? 0 : look::GroupTitleHeight(option->fontMetrics);
    if (subControl == SC_GroupBoxLabel) return {option->rect.left(), option->rect.top(), option->rect.width(), title};
    if (subControl == SC_GroupBoxContents || subControl == SC_GroupBoxFrame)
      return option->rect.adjusted(0, title, 0, 0);
  }
  if (control == CC_ComboBox) {
    const QRect& rect = option->rect;
    if (subControl == SC_ComboBoxEditField) return rect.adjusted(8, 1, -28, -1);
    if (subControl == SC_ComboBoxArrow) return {rect.right() - 27, rect.top(), 28, rect.height()};
  }
  if (control == CC_ScrollBar) {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (bar != nullptr) return look::ScrollBarPart(*bar, subControl, kShortestSlider);
  }
  return QProxyStyle::subControlRect(control, option, subControl, widget);
}

}  // namespace desktop
