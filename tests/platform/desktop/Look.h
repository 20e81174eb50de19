// SPDX-License-Identifier: MIT
// Painting widgets and parts in the program's style, and reading the pixels.
#pragma once

#include "platform/desktop/LookStyle.h"
#include "platform/desktop/Palettes.h"
#include "platform/desktop/ThemeColours.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStyleFactory>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>

namespace look_test {

// The program's style in its light variant.
class Look : public testing::Test {
 protected:
  void SetUp() override {
    QApplication::setStyle(new desktop::LookStyle);
    QApplication::setPalette(desktop::LightPalette());
  }
  void TearDown() override {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    QApplication::setPalette(QPalette());
  }
};

inline const desktop::ThemeColours& Colours() {
  return desktop::ThemeColoursFor(QApplication::palette());
}

inline QColor PaletteColour(QPalette::ColorRole role) {
  return QApplication::palette().color(role);
}

// The widget at its present size, `ratio` device pixels for each logical one.
inline QImage PaintedAsIs(QWidget& widget, double ratio = 1) {
  widget.ensurePolished();
  QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  widget.render(&image);
  return image;
}

// The same at the size that it asks for.
inline QImage Painted(QWidget& widget, double ratio = 1) {
  widget.ensurePolished();
  widget.resize(widget.sizeHint());
  return PaintedAsIs(widget, ratio);
}

// What `paint` paints on a ground of one colour.
inline QImage PaintedOn(QSize size, const QColor& ground, const std::function<void(QPainter&)>& paint,
                        double ratio = 1) {
  QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(ground);
  QPainter painter(&image);
  paint(painter);
  return image;
}

// The smallest rectangle of device pixels with all pixels of that colour; empty without any. Each part of a pixel's
// colour may differ by `tolerance`.
inline QRect PlaceOf(const QImage& image, const QColor& colour, int tolerance = 0) {
  QRect place;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor pixel = image.pixelColor(x, y);
      const int difference = std::max({std::abs(pixel.red() - colour.red()), std::abs(pixel.green() - colour.green()),
                                       std::abs(pixel.blue() - colour.blue())});
      if (difference <= tolerance && pixel.alpha() == colour.alpha()) place |= QRect(x, y, 1, 1);
    }
  }
  return place;
}

inline int CountOf(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      count += image.pixelColor(x, y) == colour ? 1 : 0;
  return count;
}

inline double Luminance(const QColor& colour) {
  const auto part = [](float component) {
    const auto value = static_cast<double>(component);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

// Contrast ratio of two opaque colours, 1 to 21.
inline double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

// The contrast of the pixel that differs most from `ground` within `area`: of the ink of a text or a sign.
inline double InkContrast(const QImage& image, const QRect& area, const QColor& ground) {
  double most = 1;
  const QRect inside = area & image.rect();
  for (int y = inside.top(); y <= inside.bottom(); ++y)
    for (int x = inside.left(); x <= inside.right(); ++x)
      most = std::max(most, Contrast(image.pixelColor(x, y), ground));
  return most;
}

}  // namespace look_test
