// SPDX-License-Identifier: MIT
// Marks of lines and of states, the columns of a line, the scale of a level meter.
#include "platform/controls/Marks.h"

#include "platform/controls/LevelScale.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/StateMark.h"
#include "tests/platform/desktop/Look.h"

#include <memory>

namespace {

using namespace Qt::StringLiterals;
using namespace look_test;
using controls::LineMark;
using controls::LineTone;
using controls::ListBox;

constexpr LineMark kMarks[] = {LineMark::Circle, LineMark::Clock, LineMark::Triangle,
                               LineMark::Square, LineMark::Dash,  LineMark::Cross};
constexpr LineTone kTones[] = {LineTone::Quiet, LineTone::Runs, LineTone::Begins, LineTone::Ends, LineTone::Wrong};

QImage MarkImage(LineMark mark, QSize size = QSize(14, 14), double ratio = 1) {
  return PaintedOn(
      size, Qt::white,
      [&](QPainter& painter) { controls::PaintMark(painter, QRectF(QPointF(), QSizeF(size)), mark, Qt::black); },
      ratio);
}

QRect InkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y) != Qt::white) ink |= QRect(x, y, 1, 1);
  return ink;
}

class LookOfLines : public Look {};

// Also without colours: each state has a shape of its own.
TEST_F(LookOfLines, EveryMarkHasItsOwnShape) {
  for (const LineMark one : kMarks)
    for (const LineMark other : kMarks)
      EXPECT_EQ(MarkImage(one) == MarkImage(other), one == other) << int(one) << ' ' << int(other);
  EXPECT_TRUE(InkOf(MarkImage(LineMark::None)).isEmpty());
}

TEST_F(LookOfLines, MarksAreCentredAndAsLargeAsTheShorterSide) {
  for (const LineMark mark : kMarks) {
    const QRect ink = InkOf(MarkImage(mark, QSize(60, 28)));
    EXPECT_NEAR(ink.center().x(), 29.5, 1) << int(mark);
    EXPECT_NEAR(ink.center().y(), 13.5, 1.5) << int(mark);
    EXPECT_LE(ink.width(), 28);
    EXPECT_GE(ink.width(), 18) << int(mark);
  }
}

TEST_F(LookOfLines, MarksHaveMoreDetailAtScaleTwo) {
  for (const LineMark mark : {LineMark::Circle, LineMark::Triangle, LineMark::Clock})
    EXPECT_NE(MarkImage(mark, QSize(14, 14), 2), MarkImage(mark).scaled(28, 28)) << int(mark);
}

TEST_F(LookOfLines, TonesAreDifferentAndReadableOnAList) {
  for (const QPalette& palette : {desktop::LightPalette(), desktop::DarkPalette()}) {
    for (const LineTone one : kTones) {
      EXPECT_GE(Contrast(controls::ToneColour(one, palette), palette.color(QPalette::Base)), 4.5) << int(one);
      for (const LineTone other : kTones)
        EXPECT_EQ(controls::ToneColour(one, palette) == controls::ToneColour(other, palette), one == other);
    }
  }
}

TEST_F(LookOfLines, StateMarkShowsTheLatestState) {
  controls::StateMark mark;
  EXPECT_EQ(mark.sizeHint(), QSize(14, 14));
  EXPECT_EQ(CountOf(Painted(mark), controls::ToneColour(LineTone::Wrong, mark.palette())), 0);
  mark.Show(LineMark::Square, LineTone::Wrong);
  EXPECT_GT(CountOf(Painted(mark), controls::ToneColour(LineTone::Wrong, mark.palette())), 40);
  mark.Show(LineMark::Square, LineTone::Runs);
  EXPECT_EQ(CountOf(Painted(mark), controls::ToneColour(LineTone::Wrong, mark.palette())), 0);
  EXPECT_GT(CountOf(Painted(mark), controls::ToneColour(LineTone::Runs, mark.palette())), 40);
}

// A list with one line, painted as it is in a window.
class PaintedLine : public Look {
 protected:
  void SetUp() override {
    Look::SetUp();
    owned = std::make_unique<ListBox>();
    owned->resize(400, 60);
    owned->AddItem(u"Bakker"_s, 1);
  }
  void TearDown() override {
    owned.reset();
    Look::TearDown();
  }
  QImage Image() {
    owned->show();
    return PaintedAsIs(*owned);
  }
  QRect Line() const { return owned->visualRect(owned->model()->index(0, 0)).translated(owned->viewport()->pos()); }

  std::unique_ptr<ListBox> owned;
};

TEST_F(PaintedLine, HasMarkTextWordAndTrailingTextFromLeftToRight) {
  controls::LineDetails details;
  details.mark = LineMark::Square;
  details.tone = LineTone::Wrong;
  details.word = u"loopt"_s;
  details.trailing = u"12-03"_s;
  owned->SetDetails(0, details);
  const QImage image = Image();
  const QRect mark = PlaceOf(image, controls::ToneColour(LineTone::Wrong, owned->palette()));
  const QRect text = PlaceOf(image.copy(0, 0, 150, 60), PaletteColour(QPalette::Text), 60);
  EXPECT_LE(mark.left(), Line().left() + 16);
  EXPECT_LT(mark.right(), text.left());
  // The edges of the text have the quiet colour too.
  const auto quietTo = [&] { return 150 + PlaceOf(Image().copy(150, 0, 250, 60), Colours().hint, 20).right(); };
  const int withTrailing = quietTo();
  EXPECT_GT(withTrailing, Line().right() - 20);
  details.trailing.clear();
  owned->SetDetails(0, details);
  EXPECT_LT(quietTo(), withTrailing - 10);
  EXPECT_GT(quietTo(), 200);
}

TEST_F(PaintedLine, WordMayHaveTheToneAndTheTextMayBeQuiet) {
  controls::LineDetails details;
  details.tone = LineTone::Wrong;
  details.word = u"MMMM"_s;
  owned->SetDetails(0, details);
  const QColor tone = controls::ToneColour(LineTone::Wrong, owned->palette());
  EXPECT_EQ(CountOf(Image(), tone), 0);
  details.wordInTone = true;
  owned->SetDetails(0, details);
  EXPECT_GT(CountOf(Image(), tone), 4);
  EXPECT_GT(CountOf(Image(), PaletteColour(QPalette::Text)), 4);
  details.quietText = true;
  owned->SetDetails(0, details);
  EXPECT_EQ(CountOf(Image(), PaletteColour(QPalette::Text)), 0);
}

// Cut off it would say nothing, and the name needs the room.
TEST_F(PaintedLine, AWordThatFitsLessThanHalfIsNotShown) {
  controls::LineDetails details;
  details.tone = LineTone::Wrong;
  details.wordInTone = true;
  details.word = u"loopt t/m 04-09-2025 en nog langer"_s;
  owned->SetDetails(0, details);
  const QColor tone = controls::ToneColour(LineTone::Wrong, owned->palette());
  owned->resize(400, 60);
  EXPECT_GT(CountOf(Image(), tone), 4);
  owned->resize(230, 60);
  EXPECT_EQ(CountOf(Image(), tone), 0);
}

TEST_F(PaintedLine, ALongLastColumnLeavesRoomForTheText) {
  controls::LineDetails details;
  details.trailing = QString(80, u'M');
  owned->SetDetails(0, details);
  owned->resize(400, 60);
  EXPECT_GT(CountOf(Image().copy(0, 0, 150, 60), PaletteColour(QPalette::Text)), 4);
}

TEST_F(PaintedLine, SelectedLineIsInTheHighlightColours) {
  controls::LineDetails details;
  details.mark = LineMark::Square;
  details.tone = LineTone::Wrong;
  owned->SetDetails(0, details);
  owned->SetListIndex(0);
  const QImage image = Image();
  EXPECT_EQ(CountOf(image, controls::ToneColour(LineTone::Wrong, owned->palette())), 0);
  EXPECT_GT(CountOf(image, PaletteColour(QPalette::Highlight)), Line().width() * Line().height() / 2);
  EXPECT_GT(CountOf(image, PaletteColour(QPalette::HighlightedText)), 40);
}

TEST_F(PaintedLine, NumbersCountFromOneAndTakeRoomOnlyWhenShown) {
  const int without = PlaceOf(Image(), PaletteColour(QPalette::Text), 60).left();
  owned->SetNumbered(true);
  const QImage numbered = Image();
  EXPECT_GT(PlaceOf(numbered, PaletteColour(QPalette::Text), 60).left(), without + 10);
  EXPECT_FALSE(PlaceOf(numbered, Colours().hint, 40).isEmpty());
}

TEST_F(PaintedLine, RowHeightGrowsWithTheFont) {
  owned->SetRowHeight(40);
  EXPECT_EQ(owned->RowHeight(), 40);
  Image();
  const int before = Line().height();
  EXPECT_GE(before, 40);
  owned->setFont(QFont(owned->font().family(), 30));
  Image();
  EXPECT_GT(Line().height(), before);
}

TEST_F(LookOfLines, ScaleHasItsTicksAtTheBlocksOfTheMeter) {
  controls::LevelScale scale;
  scale.SetInset(10);
  scale.resize(221, scale.sizeHint().height());
  const QImage image = PaintedAsIs(scale, 1);
  int ticks = 0;
  for (int x = 1; x < image.width(); ++x)
    ticks += image.pixelColor(x, 3) != image.pixelColor(5, 3) && image.pixelColor(x - 1, 3) == image.pixelColor(5, 3);
  EXPECT_EQ(ticks, 11);
  EXPECT_NE(image.pixelColor(10, 3), image.pixelColor(5, 3));
  EXPECT_EQ(scale.Inset(), 10);
}

}  // namespace
