// SPDX-License-Identifier: MIT
#include "platform/desktop/Icons.h"

#include "tests/platform/desktop/Look.h"

#include <QPixmapCache>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;
using desktop::Icon;
using desktop::IconTint;

class LookOfIcons : public Look {
 protected:
  // "stop" is a filled square: its middle has the icon's colour.
  static QColor MiddleOfStop(IconTint tint, QIcon::Mode mode = QIcon::Normal) {
    const QImage image = Icon(u"stop"_s, tint).pixmap(QSize(16, 16), 1.0, mode).toImage();
    return image.pixelColor(8, 8);
  }
};

TEST_F(LookOfIcons, EveryTintHasItsColourInBothVariants) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    QApplication::setPalette(palette);
    EXPECT_EQ(MiddleOfStop(IconTint::Text), PaletteColour(QPalette::ButtonText));
    EXPECT_EQ(MiddleOfStop(IconTint::Accent), Colours().accent);
    EXPECT_EQ(MiddleOfStop(IconTint::Danger), Colours().danger);
    EXPECT_EQ(MiddleOfStop(IconTint::Warning), Colours().ends);
    EXPECT_EQ(MiddleOfStop(IconTint::Quiet), Colours().hint);
    EXPECT_EQ(MiddleOfStop(IconTint::OnHighlight), PaletteColour(QPalette::HighlightedText));
  }
}

TEST_F(LookOfIcons, EveryTintIsVisibleOnTheWindow) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    QApplication::setPalette(palette);
    for (const IconTint tint : {IconTint::Text, IconTint::Accent, IconTint::Danger, IconTint::Warning, IconTint::Quiet})
      EXPECT_GE(Contrast(MiddleOfStop(tint), PaletteColour(QPalette::Window)), 3) << static_cast<int>(tint);
    EXPECT_GE(Contrast(MiddleOfStop(IconTint::OnHighlight), PaletteColour(QPalette::Highlight)), 4.5);
  }
}

TEST_F(LookOfIcons, StateOfTheControlOverrulesTheTint) {
  const QColor grey = QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText);
  for (const IconTint tint : {IconTint::Text, IconTint::Danger, IconTint::OnHighlight})
    EXPECT_EQ(MiddleOfStop(tint, QIcon::Disabled), grey);
  EXPECT_EQ(MiddleOfStop(IconTint::Danger, QIcon::Selected), PaletteColour(QPalette::HighlightedText));
}

TEST_F(LookOfIcons, OnlyAPlainIconHasAnAccentInItsOwnColour) {
  const auto hasAccent = [](IconTint tint, QIcon::Mode mode) {
    return CountOf(Icon(u"items"_s, tint).pixmap(QSize(32, 32), 1.0, mode).toImage(), Colours().accent) > 0;
  };
  EXPECT_TRUE(hasAccent(IconTint::Text, QIcon::Normal));
  EXPECT_FALSE(hasAccent(IconTint::Text, QIcon::Disabled));
  EXPECT_FALSE(hasAccent(IconTint::Text, QIcon::Selected));
  EXPECT_FALSE(hasAccent(IconTint::Danger, QIcon::Normal));
}

// With or without the cache of pixmaps: a key that omits something would return another icon.
TEST_F(LookOfIcons, CacheKeepsNamesSizesAndTintsApart) {
  const auto image = [](const QString& name, int side, IconTint tint) {
    return Icon(name, tint).pixmap(QSize(side, side), 1.0).toImage();
  };
  QPixmapCache::clear();
  const QImage first = image(u"items"_s, 32, IconTint::Text);
  EXPECT_NE(image(u"stop"_s, 32, IconTint::Text), first);
  EXPECT_NE(image(u"items"_s, 32, IconTint::Danger), first);
  EXPECT_NE(image(u"items"_s, 32, IconTint::Accent), first);
  EXPECT_EQ(image(u"items"_s, 16, IconTint::Text).size(), QSize(16, 16));
  EXPECT_EQ(image(u"items"_s, 32, IconTint::Text), first);
}

TEST_F(LookOfIcons, AreDrawnForTheScaleOfTheScreen) {
  for (const QString& name : {u"zoek"_s, u"kalender"_s, u"geluid"_s}) {
    const QIcon icon = Icon(name);
    const auto painted = [&icon](double ratio) {
      return PaintedOn(
          QSize(16, 16), Qt::white, [&icon](QPainter& painter) { icon.paint(&painter, QRect(0, 0, 16, 16)); }, ratio);
    };
    const QImage twice = painted(2);
    EXPECT_NE(twice, painted(1).scaled(32, 32)) << name.toStdString();
    EXPECT_NE(twice, painted(1).scaled(32, 32, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    // The lines are 1.75 of 24 wide: at scale 2 at least one row or column has full ink.
    EXPECT_GT(CountOf(twice, PaletteColour(QPalette::ButtonText)), 10) << name.toStdString();
  }
}

TEST_F(LookOfIcons, PaintedShapeIsCentredInOneColour) {
  const QRect wide(10, 4, 60, 20);
  const QImage image = PaintedOn(
      QSize(80, 28), Qt::white, [&wide](QPainter& painter) { desktop::PaintIcon(painter, wide, u"items"_s, Qt::red); });
  QRect ink;
  int strange = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor colour = image.pixelColor(x, y);
      if (colour == Qt::white) continue;
      ink |= QRect(x, y, 1, 1);
      strange += colour.green() == colour.blue() && colour.red() == 255 ? 0 : 1;  // red on white at the edges
    }
  }
  EXPECT_EQ(strange, 0);
  EXPECT_TRUE(QRect(30, 4, 20, 20).contains(ink)) << ink.left() << " to " << ink.right();
  EXPECT_NEAR(ink.center().x(), wide.center().x(), 1);
  EXPECT_NEAR(ink.center().y(), wide.center().y(), 1);
}

TEST_F(LookOfIcons, AnUnknownNamePaintsNothing) {
  const QImage image = PaintedOn(QSize(20, 20), Qt::white, [](QPainter& painter) {
    desktop::PaintIcon(painter, QRect(0, 0, 20, 20), u"bestaat-niet"_s, Qt::red);
  });
  EXPECT_EQ(CountOf(image, Qt::white), 20 * 20);
}

TEST(Icons, ProgramsIconIsNotOneOfTheNames) {
  EXPECT_FALSE(desktop::IconNames().contains(u"spotrooster"_s));
  EXPECT_GT(desktop::IconNames().size(), 30);
}

TEST(Icons, ProgramsIconHasItsOwnColours) {
  QApplication::setPalette(desktop::LightPalette());
  const QImage light = desktop::AppIcon().pixmap(QSize(64, 64), 1.0).toImage();
  QApplication::setPalette(desktop::DarkPalette());
  EXPECT_EQ(desktop::AppIcon().pixmap(QSize(64, 64), 1.0).toImage(), light);
  QApplication::setPalette(QPalette());
  int opaque = 0;
  for (int y = 0; y < light.height(); ++y)
    for (int x = 0; x < light.width(); ++x)
      opaque += qAlpha(light.pixel(x, y)) == 255 ? 1 : 0;
  EXPECT_GT(opaque, 64 * 64 / 4);
}

}  // namespace
