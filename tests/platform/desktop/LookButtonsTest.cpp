// SPDX-License-Identifier: MIT
// Push buttons, tool buttons, check marks and radio marks, as pixels.
#include "tests/platform/desktop/Look.h"

#include <QCheckBox>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QToolButton>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;

class LookOfButtons : public Look {
 protected:
  // A push button's frame and background in a state, on the window's colour.
  static QImage Bevel(QStyle::State state, QStyleOptionButton::ButtonFeatures features = QStyleOptionButton::None) {
    return PaintedOn(QSize(100, 30), PaletteColour(QPalette::Window), [&](QPainter& painter) {
      QStyleOptionButton option;
      option.rect = QRect(0, 0, 100, 30);
      option.palette = QApplication::palette();
      option.state = state;
      option.features = features;
      QApplication::style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter);
    });
  }
  static QImage ToolPanel(QStyle::State state) {
    return PaintedOn(QSize(30, 30), PaletteColour(QPalette::Window), [&](QPainter& painter) {
      QStyleOption option;
      option.rect = QRect(0, 0, 30, 30);
      option.palette = QApplication::palette();
      option.state = state;
      QApplication::style()->drawPrimitive(QStyle::PE_PanelButtonTool, &option, &painter);
    });
  }
  static QImage Mark(QStyle::PrimitiveElement element, QStyle::State state) {
    return PaintedOn(QSize(16, 16), PaletteColour(QPalette::Window), [&](QPainter& painter) {
      QStyleOption option;
      option.rect = QRect(0, 0, 16, 16);
      option.palette = QApplication::palette();
      option.state = state;
      QApplication::style()->drawPrimitive(element, &option, &painter);
    });
  }
  static QIcon RedIcon() {
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
  }
};

constexpr QStyle::State kLive = QStyle::State_Enabled | QStyle::State_Active;
const QColor kRed(Qt::red);
constexpr int kSmoothed = 120;  // the edges of letters are paler

TEST_F(LookOfButtons, TextsAreReadableInBothVariants) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    QApplication::setPalette(palette);
    QDialog dialog;
    QPushButton plain(u"Nieuw"_s, &dialog);
    plain.setAutoDefault(false);
    QPushButton ok(u"Nieuw"_s, &dialog);
    ok.setDefault(true);
    QPushButton remove(u"Nieuw"_s, &dialog);
    remove.setProperty("danger", true);
    QPushButton grey(u"Nieuw"_s, &dialog);
    grey.setEnabled(false);
    EXPECT_GE(InkContrast(Painted(plain, 2), QRect(40, 10, 96, 36), Colours().face), 7);
    EXPECT_GE(InkContrast(Painted(ok, 2), QRect(40, 10, 96, 36), Colours().accent), 4.5);
    EXPECT_GE(InkContrast(Painted(remove, 2), QRect(40, 10, 96, 36), Colours().danger), 4.5);
    EXPECT_GE(InkContrast(Painted(grey, 2), QRect(40, 10, 96, 36), PaletteColour(QPalette::Window)), 3);
  }
}

TEST_F(LookOfButtons, HoveredIsDarkerAndPressedIsDarkestInTheLightVariant) {
  const auto middle = [](QStyle::State state) { return Luminance(Bevel(state).pixelColor(50, 15)); };
  EXPECT_LT(middle(kLive | QStyle::State_MouseOver), middle(kLive));
  EXPECT_LT(middle(kLive | QStyle::State_MouseOver | QStyle::State_Sunken), middle(kLive | QStyle::State_MouseOver));
  EXPECT_EQ(middle(QStyle::State_MouseOver), Luminance(PaletteColour(QPalette::Window)));  // disabled
}

TEST_F(LookOfButtons, FocusIsAnAccentBorderOrARingInsideAFilledButton) {
  const QImage plain = Bevel(kLive | QStyle::State_HasFocus);
  EXPECT_EQ(plain.pixelColor(50, 0), Colours().accent);
  EXPECT_EQ(plain.pixelColor(50, 1), Colours().accent);
  EXPECT_EQ(plain.pixelColor(50, 2), Colours().face);
  const QImage filled = Bevel(kLive | QStyle::State_HasFocus, QStyleOptionButton::DefaultButton);
  EXPECT_EQ(filled.pixelColor(50, 0), Colours().accent);
  EXPECT_EQ(filled.pixelColor(50, 2), Colours().onAccent);
  EXPECT_EQ(filled.pixelColor(50, 3), Colours().accent);
  EXPECT_EQ(Bevel(QStyle::State_HasFocus).pixelColor(50, 1), PaletteColour(QPalette::Window));  // disabled
}

TEST_F(LookOfButtons, FlatButtonIsVisibleOnlyUnderThePointerOrFocus) {
  const QColor window = PaletteColour(QPalette::Window);
  const auto flat = QStyleOptionButton::Flat;
  EXPECT_EQ(CountOf(Bevel(kLive, flat), window), 100 * 30);
  EXPECT_NE(Bevel(kLive | QStyle::State_MouseOver, flat).pixelColor(50, 15), window);
  EXPECT_EQ(Bevel(kLive | QStyle::State_HasFocus, flat).pixelColor(50, 0), Colours().accent);
}

TEST_F(LookOfButtons, PressedInButtonHasAnotherBackground) {
  EXPECT_EQ(Bevel(kLive).pixelColor(50, 15), Colours().face);
  EXPECT_EQ(Bevel(kLive | QStyle::State_On).pixelColor(50, 15), PaletteColour(QPalette::Button));
}

TEST_F(LookOfButtons, EdgesAreCompleteAtEveryScale) {
  for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
    QPushButton button(u"OK"_s);
    const QImage image = Painted(button, scale);
    const QColor face = Colours().face;
    const QPoint middle = image.rect().center();
    const int depth = static_cast<int>(std::ceil(scale)) + 1;
    const QRect edges[] = {{middle.x(), 0, 1, depth},
                           {middle.x(), image.height() - depth, 1, depth},
                           {0, middle.y(), depth, 1},
                           {image.width() - depth, middle.y(), depth, 1}};
    for (const QRect& edge : edges) {
      QImage part = image.copy(edge);
      EXPECT_GE(InkContrast(part, part.rect(), face), 1.4) << scale << " at " << edge.x() << ',' << edge.y();
    }
  }
}

TEST_F(LookOfButtons, IconIsBeforeTheTextOrAfterItOrAtTheEdge) {
  QPushButton button(u"Openen"_s);
  button.setIcon(RedIcon());
  button.setIconSize(QSize(16, 16));
  const QColor ink = PaletteColour(QPalette::ButtonText);
  button.resize(200, 28);
  const auto painted = [&] { return PaintedAsIs(button).copy(4, 4, 192, 20); };

  QImage image = painted();
  QRect icon = PlaceOf(image, kRed);
  QRect text = PlaceOf(image, ink, kSmoothed);
  EXPECT_EQ(icon.width(), 16);
  EXPECT_LT(icon.right(), text.left());
  // Both together are in the middle.
  EXPECT_NEAR(icon.left() + text.right(), image.width(), 8);

  button.setProperty("iconAfterText", true);
  image = painted();
  icon = PlaceOf(image, kRed);
  text = PlaceOf(image, ink, kSmoothed);
  EXPECT_GT(icon.left(), text.right());
  EXPECT_NEAR(text.left() + icon.right(), image.width(), 8);

  button.setProperty("iconAfterText", false);
  button.setProperty("textBesideIcon", true);
  image = painted();
  EXPECT_EQ(PlaceOf(image, kRed).left(), 12 - 4);
  EXPECT_LT(PlaceOf(image, ink, kSmoothed).left(), 60);
}

TEST_F(LookOfButtons, IconWithoutATextIsInTheMiddle) {
  QPushButton button;
  button.setIcon(RedIcon());
  button.setIconSize(QSize(16, 16));
  const QImage image = Painted(button);
  EXPECT_GE(button.width(), 40);
  EXPECT_LT(button.width(), 88);
  const QPoint offset = PlaceOf(image, kRed).center() - image.rect().center();
  EXPECT_LE(offset.manhattanLength(), 1);
}

TEST_F(LookOfButtons, IconOnAFilledButtonHasTheColourOfItsText) {
  QDialog dialog;
  QPushButton ok(&dialog);
  ok.setIcon(RedIcon());
  ok.setDefault(true);
  QImage image = Painted(ok);
  EXPECT_EQ(CountOf(image, kRed), 0);
  EXPECT_EQ(image.pixelColor(image.rect().center()), Colours().onAccent);
  ok.setProperty("danger", true);
  QApplication::setPalette(desktop::DarkPalette());
  QCoreApplication::processEvents();
  image = Painted(ok);
  EXPECT_EQ(image.pixelColor(image.rect().center()), Colours().onDanger);
}

TEST_F(LookOfButtons, ShortcutLettersAreUnderlined) {
  QPushButton plain(u"Nieuw"_s);
  QPushButton marked(u"&Nieuw"_s);
  const QImage without = Painted(plain);
  const QImage with = Painted(marked);
  ASSERT_EQ(with.size(), without.size());
  EXPECT_GT(CountOf(with, PaletteColour(QPalette::ButtonText)), CountOf(without, PaletteColour(QPalette::ButtonText)));
}

TEST_F(LookOfButtons, WideEnoughForItsTextInBoldAndItsIcon) {
  const QString text = u"Alle overzichten opnieuw maken"_s;
  QFont bold = QApplication::font();
  bold.setWeight(QFont::DemiBold);
  const int needed = QFontMetrics(bold).size(Qt::TextShowMnemonic, text).width();
  QPushButton button(text);
  EXPECT_GE(button.sizeHint().width(), needed + 2 * 14);
  const int withoutIcon = button.sizeHint().width();
  button.setIcon(RedIcon());
  EXPECT_GE(button.sizeHint().width(), withoutIcon + 16);
}

TEST_F(LookOfButtons, ToolButtonHasAPanelOnlyWhenItIsLiveAndRaised) {
  const QColor window = PaletteColour(QPalette::Window);
  EXPECT_EQ(CountOf(ToolPanel(kLive), window), 30 * 30);
  EXPECT_EQ(CountOf(ToolPanel(QStyle::State_MouseOver | QStyle::State_On), window), 30 * 30);  // disabled
  for (const QStyle::State raised : {QStyle::State_MouseOver, QStyle::State_Sunken, QStyle::State_On})
    EXPECT_NE(ToolPanel(kLive | raised).pixelColor(15, 15), window);
  const QImage focused = ToolPanel(kLive | QStyle::State_HasFocus);
  EXPECT_EQ(focused.pixelColor(15, 2), Colours().accent);
  EXPECT_EQ(focused.pixelColor(15, 15), window);
  EXPECT_EQ(CountOf(ToolPanel(QStyle::State_HasFocus), window), 30 * 30);
}

TEST_F(LookOfButtons, MenuOfAToolButtonPaintsNoArrowOverItsText) {
  QToolButton button;
  button.setText(u"Kolommen"_s);
  button.resize(100, 30);
  const QImage without = PaintedAsIs(button);
  QMenu menu;
  button.setMenu(&menu);
  button.setPopupMode(QToolButton::InstantPopup);
  EXPECT_EQ(PaintedAsIs(button), without);
}

TEST_F(LookOfButtons, ToolButtonWithTextUnderItsIconHasRoomForBoth) {
  QToolButton button;
  button.setText(u"Log"_s);
  button.setIcon(RedIcon());
  EXPECT_LT(button.sizeHint().width(), 96);
  button.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  EXPECT_EQ(button.sizeHint().width(), 96);
  EXPECT_GE(button.sizeHint().height(), 62);
  button.setText(u"Een tekst die breder is dan de knop"_s);
  EXPECT_GE(button.sizeHint().width(), QFontMetrics(button.font()).horizontalAdvance(button.text()) + 16);
}

TEST_F(LookOfButtons, MarkIsATickOrForPartlyADash) {
  const QImage ticked = Mark(QStyle::PE_IndicatorCheckBox, kLive | QStyle::State_On);
  const QImage partly = Mark(QStyle::PE_IndicatorCheckBox, kLive | QStyle::State_NoChange);
  const QImage off = Mark(QStyle::PE_IndicatorCheckBox, kLive | QStyle::State_Off);
  EXPECT_GT(CountOf(ticked, Colours().accent), 60);
  EXPECT_GT(CountOf(partly, Colours().accent), 60);
  EXPECT_EQ(CountOf(off, Colours().accent), 0);
  const QRect tick = PlaceOf(ticked, Colours().onAccent);
  const QRect dash = PlaceOf(partly, Colours().onAccent);
  EXPECT_GE(tick.height(), 5);
  EXPECT_LE(dash.height(), 2);
  EXPECT_GE(dash.width(), 5);
  EXPECT_GE(Contrast(Colours().lineStrong, PaletteColour(QPalette::Base)), 3);
  EXPECT_EQ(off.pixelColor(8, 8), PaletteColour(QPalette::Base));
}

TEST_F(LookOfButtons, ChosenRadioMarkHasADotInItsMiddle) {
  const QImage on = Mark(QStyle::PE_IndicatorRadioButton, kLive | QStyle::State_On);
  const QRect dot = PlaceOf(on, Colours().onAccent);
  EXPECT_NEAR(dot.center().x(), 7.5, 1);
  EXPECT_NEAR(dot.center().y(), 7.5, 1);
  EXPECT_LE(dot.width(), 7);
  EXPECT_EQ(on.pixelColor(0, 0), PaletteColour(QPalette::Window));  // round
  EXPECT_TRUE(PlaceOf(Mark(QStyle::PE_IndicatorRadioButton, kLive), Colours().accent).isEmpty());
}

TEST_F(LookOfButtons, DisabledMarkIsVisibleWithoutTheAccent) {
  for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
    const QImage on = Mark(element, QStyle::State_On);
    EXPECT_EQ(CountOf(on, Colours().accent), 0);
    EXPECT_GE(InkContrast(on, QRect(3, 3, 10, 10), PaletteColour(QPalette::Button)), 2.5);
  }
}

TEST_F(LookOfButtons, FollowThePointer) {
  QPushButton push;
  QToolButton tool;
  QCheckBox check;
  QRadioButton radio;
  for (QAbstractButton* button : std::initializer_list<QAbstractButton*>{&push, &tool, &check, &radio}) {
    button->ensurePolished();
    EXPECT_TRUE(button->testAttribute(Qt::WA_Hover)) << button->metaObject()->className();
  }
}

}  // namespace
