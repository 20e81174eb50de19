// SPDX-License-Identifier: MIT
// Fields, scroll bars and progress bars, as pixels.
#include "platform/desktop/Lock.h"
#include "platform/desktop/LookParts.h"
#include "tests/platform/desktop/Look.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOption>
#include <QTimer>

#include <limits>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;

class LookOfFields : public Look {};

TEST_F(LookOfFields, BordersAreVisibleOnAllSidesAtEveryScale) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    QApplication::setPalette(palette);
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0}) {
      QLineEdit edit;
      const QImage image = Painted(edit, scale);
      const QPoint middle = image.rect().center();
      const int depth = static_cast<int>(std::ceil(scale)) + 1;
      for (const QRect& edge : {QRect(middle.x(), 0, 1, depth), QRect(middle.x(), image.height() - depth, 1, depth),
                                QRect(0, middle.y(), depth, 1), QRect(image.width() - depth, middle.y(), depth, 1)})
        EXPECT_GE(InkContrast(image, edge, PaletteColour(QPalette::Base)), 1.9) << scale << " at " << edge.x();
    }
  }
}

TEST_F(LookOfFields, CornersAreRounded) {
  QLineEdit edit;
  const QImage image = Painted(edit);
  for (const QPoint& corner : {image.rect().topLeft(), image.rect().bottomRight()})
    EXPECT_EQ(image.pixelColor(corner), PaletteColour(QPalette::Window));
}

TEST_F(LookOfFields, DisabledAndLockedFieldsHaveAQuietBorder) {
  QLineEdit edit;
  const auto top = [&edit] {
    const QImage image = Painted(edit);
    return image.pixelColor(image.width() / 2, 0);
  };
  EXPECT_EQ(top(), Colours().lineStrong);
  desktop::SetLocked(&edit, true);
  EXPECT_EQ(top(), Colours().line);
  desktop::SetLocked(&edit, false);
  edit.setEnabled(false);
  EXPECT_EQ(top(), Colours().line);
}

TEST_F(LookOfFields, FieldWithoutAFramePaintsNoBorder) {
  QLineEdit edit;
  edit.setFrame(false);
  const QImage image = Painted(edit);
  EXPECT_EQ(CountOf(image, Colours().lineStrong), 0);
}

// The device pixels of a combo's arrow.
QRect ArrowOf(const QComboBox& combo, double ratio = 1) {
  return {QPoint(int((combo.width() - 26) * ratio), int(4 * ratio)),
          QSize(int(22 * ratio), int((combo.height() - 8) * ratio))};
}

TEST_F(LookOfFields, ComboHasAnArrowThatFadesWhenItIsLocked) {
  QComboBox combo;
  combo.addItem(u"Opener"_s);
  QImage image = Painted(combo, 2);
  EXPECT_GE(InkContrast(image, ArrowOf(combo, 2), PaletteColour(QPalette::Base)), 4.5);
  desktop::SetLocked(&combo, true);
  image = Painted(combo, 2);
  EXPECT_LE(InkContrast(image, ArrowOf(combo, 2), PaletteColour(QPalette::Button)), 2);
}

TEST_F(LookOfFields, TextOfAComboEndsBeforeItsArrow) {
  QComboBox combo;
  combo.addItem(u"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW"_s);
  combo.resize(120, 28);
  const QImage image = PaintedAsIs(combo);
  const QRect text = PlaceOf(image, PaletteColour(QPalette::ButtonText));
  EXPECT_FALSE(text.isEmpty());
  EXPECT_LT(text.right(), ArrowOf(combo).left());
  EXPECT_GE(text.left(), 8);
}

TEST_F(LookOfFields, TextOfAComboWithAnIconLeavesRoomForTheIcon) {
  QPixmap pixmap(16, 16);
  pixmap.fill(Qt::red);
  QStyleOptionComboBox option;
  option.fontMetrics = QFontMetrics(QApplication::font());
  option.currentText = u"Een lange omschrijving van de keuze"_s;
  option.iconSize = pixmap.size();
  const auto widthWithin = [&option](int width) {
    return option.fontMetrics.horizontalAdvance(desktop::look::Elided(option, width).currentText);
  };
  EXPECT_GT(widthWithin(120), 120 - 16);
  option.currentIcon = QIcon(pixmap);
  EXPECT_LE(widthWithin(120), 120 - 16);
  EXPECT_TRUE(desktop::look::Elided(option, 120).currentText.endsWith(QChar(0x2026)));
  EXPECT_EQ(desktop::look::Elided(option, 400).currentText, option.currentText);
}

// A vertical scroll bar of 14 by 200.
QStyleOptionSlider BarOption(int minimum, int maximum, int page, int position) {
  QStyleOptionSlider option;
  option.rect = QRect(0, 0, 14, 200);
  option.palette = QApplication::palette();
  option.orientation = Qt::Vertical;
  option.minimum = minimum;
  option.maximum = maximum;
  option.pageStep = page;
  option.sliderPosition = position;
  option.state = QStyle::State_Enabled;
  return option;
}

QRect PartOf(const QStyleOptionSlider& option, QStyle::SubControl part) {
  return QApplication::style()->subControlRect(QStyle::CC_ScrollBar, &option, part);
}

QRect SliderOf(const QStyleOptionSlider& option) {
  return PartOf(option, QStyle::SC_ScrollBarSlider);
}

TEST_F(LookOfFields, ScrollSliderHasTheShareOfThePageThatIsVisible) {
  EXPECT_EQ(SliderOf(BarOption(0, 100, 100, 0)), QRect(0, 0, 14, 100));
  EXPECT_EQ(SliderOf(BarOption(0, 100, 100, 100)), QRect(0, 100, 14, 100));
  EXPECT_EQ(SliderOf(BarOption(0, 100, 100, 50)), QRect(0, 50, 14, 100));
  EXPECT_EQ(SliderOf(BarOption(-50, 50, 100, 0)), QRect(0, 50, 14, 100));
}

TEST_F(LookOfFields, ScrollSliderIsNeverTooSmallToGrab) {
  EXPECT_EQ(SliderOf(BarOption(0, 100000, 10, 0)), QRect(0, 0, 14, 28));
  EXPECT_EQ(SliderOf(BarOption(0, 100000, 10, 100000)), QRect(0, 172, 14, 28));
  QStyleOptionSlider low = BarOption(0, 100000, 10, 100000);
  low.rect.setHeight(20);  // lower than the smallest slider
  EXPECT_EQ(SliderOf(low), low.rect);
}

TEST_F(LookOfFields, ScrollSliderFillsTheBarWhenThereIsNothingToScroll) {
  EXPECT_EQ(SliderOf(BarOption(0, 0, 10, 0)), QRect(0, 0, 14, 200));
}

TEST_F(LookOfFields, ScrollRangeMayBeAsLargeAsItsType) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_EQ(SliderOf(BarOption(kLowest, kHighest, 10, kLowest)), QRect(0, 0, 14, 28));
  EXPECT_EQ(SliderOf(BarOption(0, kHighest, kHighest, 0)).height(), 100);
}

TEST_F(LookOfFields, PartsOfAScrollBarCoverItWithoutArrows) {
  QStyleOptionSlider lying = BarOption(0, 100, 20, 30);
  lying.rect = QRect(5, 7, 240, 14);
  lying.orientation = Qt::Horizontal;
  for (const QStyleOptionSlider& option : {BarOption(0, 100, 20, 30), lying}) {
    const QRect before = PartOf(option, QStyle::SC_ScrollBarSubPage);
    const QRect slider = SliderOf(option);
    const QRect after = PartOf(option, QStyle::SC_ScrollBarAddPage);
    EXPECT_EQ(before | slider | after, option.rect);
    const auto area = [](const QRect& rect) { return rect.width() * rect.height(); };
    EXPECT_EQ(area(before) + area(slider) + area(after), area(option.rect));
    EXPECT_TRUE((before & slider).isEmpty());
    EXPECT_TRUE((slider & after).isEmpty());
    EXPECT_EQ(PartOf(option, QStyle::SC_ScrollBarGroove), option.rect);
    for (const auto arrow : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine})
      EXPECT_TRUE(PartOf(option, arrow).isEmpty());
  }
}

TEST_F(LookOfFields, UpsideDownScrollBarBeginsAtItsEnd) {
  QStyleOptionSlider option = BarOption(0, 100, 100, 0);
  option.upsideDown = true;
  EXPECT_EQ(SliderOf(option), QRect(0, 100, 14, 100));
}

QImage ScrollBarImage(QStyleOptionSlider option, QStyle::State state, const QWidget* widget = nullptr) {
  option.state = state;
  return PaintedOn(option.rect.size(), Qt::magenta, [&](QPainter& painter) {
    QApplication::style()->drawComplexControl(QStyle::CC_ScrollBar, &option, &painter, widget);
  });
}

TEST_F(LookOfFields, ScrollSliderIsClearerUnderThePointerAndWhileDragged) {
  const QStyleOptionSlider option = BarOption(0, 100, 100, 0);
  const QColor ground = PaletteColour(QPalette::Window);
  const QImage quiet = ScrollBarImage(option, QStyle::State_Enabled);
  EXPECT_EQ(quiet.pixelColor(7, 150), ground);
  EXPECT_GT(Contrast(quiet.pixelColor(7, 50), ground), 1.3);
  for (const auto state : {QStyle::State_MouseOver, QStyle::State_Sunken})
    EXPECT_EQ(ScrollBarImage(option, QStyle::State_Enabled | state).pixelColor(7, 50), Colours().lineStrong);
}

TEST_F(LookOfFields, ScrollBarWithNothingToScrollIsEmpty) {
  const QImage image = ScrollBarImage(BarOption(0, 0, 10, 0), QStyle::State_Enabled);
  EXPECT_EQ(CountOf(image, PaletteColour(QPalette::Window)), 14 * 200);
}

TEST_F(LookOfFields, ScrollBarsHaveTheGroundOfTheirListOrPage) {
  QListWidget list;
  QScrollArea page;
  page.setFrameShape(QFrame::NoFrame);
  const QStyleOptionSlider option = BarOption(0, 0, 10, 0);
  const auto ground = [&](QAbstractScrollArea& area) {
    const QImage image = ScrollBarImage(option, QStyle::State_Enabled, area.verticalScrollBar());
    return image.pixelColor(7, 100);
  };
  EXPECT_EQ(ground(list), PaletteColour(QPalette::Base));
  EXPECT_EQ(ground(page), PaletteColour(QPalette::Window));
  const auto corner = [&option](const QWidget& area) {
    return PaintedOn(QSize(14, 14), Qt::magenta, [&](QPainter& painter) {
      QStyleOption place;
      place.rect = QRect(0, 0, 14, 14);
      place.palette = option.palette;
      QApplication::style()->drawPrimitive(QStyle::PE_PanelScrollAreaCorner, &place, &painter, &area);
    });
  };
  EXPECT_EQ(CountOf(corner(list), PaletteColour(QPalette::Base)), 14 * 14);
  EXPECT_EQ(CountOf(corner(page), PaletteColour(QPalette::Window)), 14 * 14);
}

QImage PaintedProgress(int minimum, int maximum, int value) {
  QProgressBar bar;
  bar.setTextVisible(false);
  bar.setRange(minimum, maximum);
  bar.setValue(value);
  bar.resize(200, 24);
  return PaintedAsIs(bar);
}

TEST_F(LookOfFields, ProgressIsAShareOfAnyRange) {
  EXPECT_TRUE(PlaceOf(PaintedProgress(0, 100, 0), Colours().accent).isEmpty());
  EXPECT_NEAR(PlaceOf(PaintedProgress(0, 100, 25), Colours().accent).right(), 50, 4);
  EXPECT_NEAR(PlaceOf(PaintedProgress(-100, 100, 50), Colours().accent).right(), 150, 4);
  EXPECT_NEAR(PlaceOf(PaintedProgress(0, 100, 100), Colours().accent).right(), 199, 4);
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_NEAR(PlaceOf(PaintedProgress(-kHighest, kHighest, 0), Colours().accent).right(), 100, 4);
}

TEST_F(LookOfFields, ProgressBarWithoutATextIsThinInItsMiddle) {
  const QRect groove = PlaceOf(PaintedProgress(0, 100, 0), Colours().line);
  EXPECT_EQ(groove.height(), 8);
  EXPECT_EQ(groove.top(), 8);
  QProgressBar withText;
  withText.setRange(0, 100);
  withText.setValue(0);
  withText.resize(200, 24);
  EXPECT_GT(PlaceOf(PaintedAsIs(withText), Colours().line).height(), 12);
}

TEST_F(LookOfFields, ProgressOfUnknownLengthKeepsMoving) {
  QProgressBar bar;
  bar.setTextVisible(false);
  bar.setRange(0, 0);
  bar.resize(200, 24);
  PaintedAsIs(bar);
  PaintedAsIs(bar);
  const auto timers = bar.findChildren<QTimer*>(u"runningBar"_s);
  ASSERT_EQ(timers.size(), 1);
  EXPECT_TRUE(timers.front()->isActive());
  EXPECT_TRUE(timers.front()->isSingleShot());  // a bar that is not painted any more stops
  const QRect part = PlaceOf(PaintedAsIs(bar), Colours().accent);
  EXPECT_LE(part.width(), 80);
  QProgressBar known;
  known.setRange(0, 10);
  PaintedAsIs(known);
  EXPECT_EQ(known.findChild<QTimer*>(u"runningBar"_s), nullptr);
}

}  // namespace
