// SPDX-License-Identifier: MIT
#include "platform/desktop/LookStyle.h"

#include "platform/desktop/Icons.h"
#include "platform/desktop/LookParts.h"
#include "platform/desktop/ThemeColours.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>

namespace desktop {

using namespace Qt::StringLiterals;

LookStyle::LookStyle() : QProxyStyle(u"fusion"_s) {
  setObjectName(u"fusion"_s);
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_UnderlineShortcut:
    case SH_ItemView_ShowDecorationSelected:
      return 1;
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:
    case SH_ItemView_ActivateItemOnSingleClick:
    case SH_ScrollBar_Transient:
    case SH_ToolBar_Movable:
    case SH_DialogButtonLayout:  // OK before Annuleren
      return 0;
    case SH_FormLayoutLabelAlignment:
      return Qt::AlignLeft | Qt::AlignVCenter;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

namespace {

bool IsCard(const QWidget* widget) {
  return widget != nullptr && widget->property("card").toBool();
}

// Lines in layouts are hairlines; lists have their own frame; all other frames are Fusion's.
bool DrawShapedFrame(const QStyleOptionFrame& option, QPainter& painter, const QWidget* widget) {
  switch (option.frameShape) {
    case QFrame::HLine:
      look::Hairline(painter, QRect(option.rect.left(), option.rect.center().y(), option.rect.width(), 1),
                     option.palette, Qt::TopEdge);
      return true;
    case QFrame::VLine:
      look::Hairline(painter, QRect(option.rect.center().x(), option.rect.top(), 1, option.rect.height()),
                     option.palette, Qt::LeftEdge);
      return true;
    case QFrame::StyledPanel:
      if (IsCard(widget))
        look::Card(painter, option.rect, option.palette);
      else if (qobject_cast<const QAbstractScrollArea*>(widget) != nullptr)
        look::ListFrame(painter, option);
      else
        return false;
      return true;
    default:
      return false;
  }
}

}  // namespace

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  switch (element) {
    case PE_FrameDefaultButton:
    case PE_FrameStatusBarItem:
    case PE_FrameTabWidget:
    case PE_PanelMenuBar:
      return;
    case PE_PanelLineEdit: {
      const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
      if (frame != nullptr && frame->lineWidth > 0) look::FieldPanel(*painter, *option, widget);
      return;
    }
    case PE_FrameLineEdit:
      return look::FieldPanel(*painter, *option, widget);
    case PE_IndicatorCheckBox:
      return look::CheckMark(*painter, *option);
    case PE_IndicatorRadioButton:
      return look::RadioMark(*painter, *option);
    case PE_FrameFocusRect:
      if (qobject_cast<const QAbstractItemView*>(widget) == nullptr &&
          (widget == nullptr || qobject_cast<const QAbstractItemView*>(widget->parentWidget()) == nullptr))
        look::LabelFocus(*painter, *option, widget);
      return;
    case PE_PanelButtonTool:
      return look::ToolButtonPanel(*painter, *option);
    case PE_FrameMenu:
      return look::Panel(
          *painter, option->rect, 0, QColor(),
          look::Mixed(ThemeColoursFor(option->palette).line, ThemeColoursFor(option->palette).lineStrong, 0.5));
    case PE_IndicatorHeaderArrow:
      if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) look::SortMark(*painter, *header);
      return;
    case PE_FrameTabBarBase:
      return look::Hairline(*painter, option->rect, option->palette, Qt::BottomEdge);
    case PE_PanelScrollAreaCorner:  // the corner between the scroll bars
      return painter->fillRect(option->rect, look::ScrollGround(*option, widget));
    case PE_PanelStatusBar:
      painter->fillRect(option->rect, option->palette.color(QPalette::Button));
      return look::Hairline(*painter, option->rect, option->palette, Qt::TopEdge);
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

bool LookStyle::DrawButtonOrTab(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
    const bool bevel = element == CE_PushButton || element == CE_PushButtonBevel;
    const bool label = element == CE_PushButton || element == CE_PushButtonLabel;
    if (bevel) look::PushButtonBevel(*painter, *button, widget);
    if (label) look::PushButtonLabel(*painter, *button, widget, *this);
    return bevel || label;
  }
  if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) {
    if (element == CE_TabBarTabShape) look::TabShape(*painter, *tab);
    if (element == CE_TabBarTabLabel) look::TabLabel(*painter, *tab, *this);
    return element == CE_TabBarTabShape || element == CE_TabBarTabLabel;
  }
  return false;
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  if (DrawButtonOrTab(element, option, painter, widget)) return;
  if (const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option)) {
    if (element == CE_MenuBarItem) return look::MenuBarItem(*painter, *item, *this);
    if (element == CE_MenuItem) {
      QStyleOptionMenuItem quiet(*item);
      const QColor fill = look::Mixed(item->palette.color(QPalette::Base), ThemeColoursFor(item->palette).accent, 0.14);
      quiet.palette.setColor(QPalette::Highlight, fill);
      quiet.palette.setColor(QPalette::HighlightedText, item->palette.color(QPalette::Text));
      return QProxyStyle::drawControl(element, &quiet, painter, widget);
    }
  }
  if (const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) {
    if (element == CE_ProgressBarGroove) return look::ProgressGroove(*painter, *bar);
    if (element == CE_ProgressBarLabel) return;  // the numbers stand above the bar
    if (element == CE_ProgressBarContents) return look::ProgressContents(*painter, *bar, widget);
  }
  if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
    if (element == CE_ComboBoxLabel) {
      const QRect field = subControlRect(CC_ComboBox, combo, SC_ComboBoxEditField, widget);
      const QStyleOptionComboBox fitting = look::Elided(*combo, field.width());
      return QProxyStyle::drawControl(element, &fitting, painter, widget);
    }
  }
  if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option))
    if (element == CE_HeaderSection) return look::HeaderSection(*painter, *header);
  if (element == CE_MenuBarEmptyArea) return painter->fillRect(option->rect, option->palette.window());
  if (element == CE_ToolBar) {
    painter->fillRect(option->rect, option->palette.window());
    return look::Hairline(*painter, option->rect, option->palette, Qt::BottomEdge);
  }
  if (element == CE_ShapedFrame)
    if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option))
      if (DrawShapedFrame(*frame, *painter, widget)) return;
  QProxyStyle::drawControl(element, option, painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
  if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option))
    if (control == CC_ComboBox) return look::ComboPanel(*painter, *combo, widget);
  if (const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option))
    if (control == CC_GroupBox && !box->subControls.testFlag(SC_GroupBoxCheckBox))
      return look::GroupBox(*painter, *box, *this, widget);
  if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
    if (control == CC_ScrollBar) return look::ScrollBar(*painter, *bar, widget, *this);
  if (const auto* button = qstyleoption_cast<const QStyleOptionToolButton*>(option)) {
    // Fusion would paint the menu arrow over the text.
    QStyleOptionToolButton plain(*button);
    plain.features &= ~QStyleOptionToolButton::HasMenu;
    return QProxyStyle::drawComplexControl(control, &plain, painter, widget);
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

// A hint label uses the placeholder role; it is painted in the hint colour, which has more contrast.
void LookStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                             const QString& text, QPalette::ColorRole role) const {
  if (role != QPalette::PlaceholderText || !enabled)
    return QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
  painter->save();
  painter->setPen(ThemeColoursFor(palette).hint);
  QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, QPalette::NoRole);
  painter->restore();
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  if (icon == SP_LineEditClearButton) return Icon(u"wissen"_s, IconTint::Quiet);
  const QString own = look::OwnIcon(icon);
  return own.isEmpty() ? QProxyStyle::standardIcon(icon, option, widget) : Icon(own);
}

void LookStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QAbstractButton*>(widget) != nullptr || qobject_cast<QComboBox*>(widget) != nullptr ||
      qobject_cast<QScrollBar*>(widget) != nullptr)
    widget->setAttribute(Qt::WA_Hover);
  if (auto* label = qobject_cast<QLabel*>(widget); label != nullptr && label->property("hint").toBool()) {
    label->setForegroundRole(QPalette::PlaceholderText);
    QFont font = label->font();
    if (font.pointSizeF() == QGuiApplication::font().pointSizeF()) font.setPointSizeF(font.pointSizeF() - 1);
    label->setFont(font);
  }
}

}  // namespace desktop
