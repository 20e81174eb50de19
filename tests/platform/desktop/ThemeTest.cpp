// SPDX-License-Identifier: MIT
#include "platform/desktop/Theme.h"

#include "platform/desktop/Icons.h"
#include "tests/platform/desktop/Look.h"

#include <QEvent>
#include <QImage>
#include <QPixmap>
#include <QPushButton>
#include <QStyleFactory>

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;
using desktop::Theme;
using desktop::Variant;

class ThemeChoice : public testing::Test {
 protected:
  void TearDown() override {
    QApplication::setStyle(QStyleFactory::create(u"fusion"_s));
    QApplication::setPalette(QPalette());
  }
};

QApplication& App() {
  return *static_cast<QApplication*>(QCoreApplication::instance());
}

TEST_F(ThemeChoice, StartOptionDecides) {
  EXPECT_EQ(desktop::VariantFromText(u"dark"_s), Variant::Dark);
  EXPECT_EQ(desktop::VariantFromText(u"light"_s), Variant::Light);
  EXPECT_FALSE(desktop::VariantFromText(u"blauw"_s).has_value());
  const Theme theme(App(), Variant::Dark);
  EXPECT_EQ(theme.Current(), Variant::Dark);
  EXPECT_TRUE(desktop::IsDark(QApplication::palette()));
}

TEST_F(ThemeChoice, ReplacesFusionByTheProgramsStyle) {
  const Theme theme(App(), Variant::Light);
  EXPECT_NE(qobject_cast<desktop::LookStyle*>(QApplication::style()), nullptr);
}

TEST_F(ThemeChoice, OtherStyleKeepsItsColours) {
  QApplication::setStyle(QStyleFactory::create(u"windows"_s));
  const QColor window = QApplication::palette().color(QPalette::Window);
  const Theme theme(App(), std::nullopt);
  EXPECT_EQ(qobject_cast<desktop::LookStyle*>(QApplication::style()), nullptr);
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), window);
}

TEST_F(ThemeChoice, WithoutAPreferenceThePlatformsPaletteDecides) {
  QPalette platform;
  platform.setColor(QPalette::Window, Qt::black);
  platform.setColor(QPalette::WindowText, Qt::white);
  QApplication::setPalette(platform);
  const Theme theme(App(), std::nullopt);
  EXPECT_EQ(theme.Current(), Variant::Dark);
}

TEST_F(ThemeChoice, TextsHaveEnoughContrastInBothVariants) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    const desktop::ThemeColours& colours = desktop::ThemeColoursFor(palette);
    const QColor base = palette.color(QPalette::Base);
    EXPECT_GE(Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)), 12);
    EXPECT_GE(Contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)), 4.5);
    EXPECT_GE(Contrast(palette.color(QPalette::PlaceholderText), base), 4.5);
    EXPECT_GE(Contrast(colours.onAccent, colours.accent), 4.5);
    EXPECT_GE(Contrast(colours.onDanger, colours.danger), 4.5);
    EXPECT_GE(Contrast(colours.hint, palette.color(QPalette::Window)), 4.5);
    for (const QColor& state : {colours.runs, colours.begins, colours.ends, colours.over, colours.wrong})
      EXPECT_GE(Contrast(state, base), 4.5) << state.name().toStdString();
    EXPECT_GE(Contrast(colours.lineStrong, base), 3);
    EXPECT_GE(Contrast(colours.lineStrong, palette.color(QPalette::Window)), 3);
  }
}

TEST_F(ThemeChoice, AButtonHasABorderThatCanBeSeen) {
  for (const Variant variant : {Variant::Light, Variant::Dark}) {
    const Theme theme(App(), variant);
    QWidget window;
    window.resize(200, 80);
    QPushButton button(u"Knop"_s, &window);
    button.setGeometry(20, 20, 120, 30);
    const QImage image = window.grab().toImage();
    double best = 0;
    for (int x = 18; x < 24; ++x)
      best = std::max(best, Contrast(image.pixelColor(x, 35), image.pixelColor(10, 35)));
    EXPECT_GE(best, 3);
  }
}

// The most frequent colour of an icon.
QColor MainColour(const QIcon& icon, QIcon::Mode mode = QIcon::Normal) {
  const QImage image = icon.pixmap(QSize(16, 16), 1.0, mode).toImage();
  QHash<QRgb, int> counts;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 240) ++counts[image.pixel(x, y)];
  QRgb most = 0;
  for (auto it = counts.cbegin(); it != counts.cend(); ++it)
    if (it.value() > counts.value(most)) most = it.key();
  return QColor(most);
}

TEST_F(ThemeChoice, IconsFollowThePalette) {
  Theme theme(App(), Variant::Light);
  const QIcon icon = desktop::Icon(u"stop"_s);
  EXPECT_EQ(MainColour(icon), QApplication::palette().color(QPalette::ButtonText));
  theme.Use(Variant::Dark);
  EXPECT_EQ(MainColour(icon), QApplication::palette().color(QPalette::ButtonText));
  EXPECT_EQ(MainColour(icon, QIcon::Disabled), QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText));
}

TEST_F(ThemeChoice, TintsComeFromTheTokens) {
  const Theme theme(App(), Variant::Dark);
  const desktop::ThemeColours& colours = desktop::ThemeColoursFor(QApplication::palette());
  EXPECT_EQ(MainColour(desktop::Icon(u"stop"_s, desktop::IconTint::Danger)), colours.danger);
  EXPECT_EQ(MainColour(desktop::Icon(u"stop"_s, desktop::IconTint::Accent)), colours.accent);
}

TEST_F(ThemeChoice, IconsHaveTheAccentFrom24Pixels) {
  const Theme theme(App(), Variant::Light);
  const QColor accent = desktop::ThemeColoursFor(QApplication::palette()).accent;
  const QIcon icon = desktop::Icon(u"items"_s);
  EXPECT_GT(CountOf(icon.pixmap(QSize(28, 28), 2.0).toImage(), accent), 0);
  EXPECT_EQ(CountOf(icon.pixmap(QSize(16, 16), 2.0).toImage(), accent), 0);
}

TEST(Icons, EveryNameHasANonEmptyIcon) {
  for (const char* name :
       {"item-spots",  "items",     "exporteren", "instellingen", "afsluiten", "item-pingles", "nieuw",     "open",
        "desaktiveer", "verwijder", "zoek",       "geluid",       "map",       "kalender",     "nul",       "play",
        "stop",        "rrew",      "rew",        "ffw",          "fffw",      "radio",        "online",    "offline",
        "log",         "vraag",     "fout",       "let-op",       "info",      "omhoog",       "map-nieuw", "tegels",
        "regels",      "computer",  "schijf",     "bestand",      "afdrukken", "handleiding"}) {
    const QString text = QString::fromLatin1(name);
    EXPECT_TRUE(desktop::IconNames().contains(text)) << name;
    const QImage image = desktop::Icon(text).pixmap(QSize(48, 48), 1.0).toImage();
    int inked = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        inked += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
    EXPECT_GT(inked, 40) << name;
    for (int edge = 0; edge < 48; ++edge)
      EXPECT_EQ(qAlpha(image.pixel(edge, 0)) + qAlpha(image.pixel(0, edge)), 0) << name << " touches its edge";
  }
  EXPECT_TRUE(desktop::Icon(u"bestaat-niet"_s).isNull());
}

TEST(Icons, ProgramIconHasAllUsualSizes) {
  const QIcon icon = desktop::AppIcon();
  for (const int side : {16, 32, 48, 256})
    EXPECT_EQ(icon.actualSize(QSize(side, side)), QSize(side, side));
}

}  // namespace
