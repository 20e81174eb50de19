// SPDX-License-Identifier: MIT
#include "platform/controls/ElidedLine.h"

#include "platform/controls/QuietLine.h"

#include <QHBoxLayout>
#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::ElidedLine;
using controls::QuietLine;

namespace {

// The rightmost painted pixel of the line, in logical pixels from the left.
int PaintedTo(ElidedLine& line) {
  const QImage picture = line.grab().toImage();
  const QRgb ground = picture.pixel(picture.width() - 1, 0);
  for (int x = picture.width() - 1; x >= 0; --x) {
    for (int y = 0; y < picture.height(); ++y) {
      if (picture.pixel(x, y) != ground) return static_cast<int>(x / picture.devicePixelRatio());
    }
  }
  return -1;
}

}  // namespace

TEST(ElidedLine, LongTextDoesNotWidenTheLayout) {
  QWidget window;
  auto* layout = new QHBoxLayout(&window);
  auto* line = new ElidedLine;
  layout->addWidget(line);
  window.resize(200, 60);
  window.show();
  line->setText(QString(5000, u'W'));
  EXPECT_EQ(window.minimumSizeHint().width(), layout->contentsMargins().left() + layout->contentsMargins().right());
  EXPECT_EQ(window.width(), 200);
}

TEST(ElidedLine, TextThatFitsIsNotElided) {
  ElidedLine line;
  line.setText(u"Radio"_s);
  line.resize(400, 30);
  EXPECT_NEAR(PaintedTo(line), line.fontMetrics().horizontalAdvance(u"Radio"_s), 3);
}

TEST(ElidedLine, EllipsisIsAtTheRequestedPosition) {
  const QString text = QString(20, u'W') + QString(60, u'i');
  ElidedLine end;
  ElidedLine middle;
  middle.SetElideMode(Qt::ElideMiddle);
  for (ElidedLine* line : {&end, &middle}) {
    line->setText(text);
    line->resize(line->fontMetrics().horizontalAdvance(QString(12, u'W')), 30);
  }
  EXPECT_NE(end.grab().toImage(), middle.grab().toImage());
}

TEST(ElidedLine, QuietLineHasAnotherColour) {
  ElidedLine plain;
  QuietLine quiet;
  for (ElidedLine* line : {&plain, static_cast<ElidedLine*>(&quiet)}) {
    line->setText(u"12 item-spots"_s);
    line->resize(200, 30);
  }
  EXPECT_NE(plain.grab().toImage(), quiet.grab().toImage());
}
