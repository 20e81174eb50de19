// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace desktop {

// The program's style: Fusion with its own buttons, fields, frames and sizes. All colours come from the palette and
// ThemeColours.h. Heights follow the font. Optional dynamic properties of widgets:
//   "danger" true      a push button filled with the danger colour
//   "card" true        a QFrame painted like the inside of a group box
//   "hint" true        a QLabel in the hint colour
//   "quiet" true       a default push button that is not filled
//   "textBesideIcon"   a push button with the icon at its left edge, followed by the text
//   "iconAfterText"    a push button with the icon after its text
class LookStyle : public QProxyStyle {
  Q_OBJECT

 public:
  LookStyle();

  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int layoutSpacing(QSizePolicy::ControlType one, QSizePolicy::ControlType other, Qt::Orientation orientation,
                    const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                       const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  void drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette, bool enabled,
                    const QString& text, QPalette::ColorRole role) const override;
  QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption* option, const QWidget* widget) const override;
  void polish(QWidget* widget) override;
  using QProxyStyle::polish;

 private:
  // False for other elements, which it does not draw.
  bool DrawButtonOrTab(ControlElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const;
};

}  // namespace desktop
