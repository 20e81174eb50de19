// SPDX-License-Identifier: MIT
#include "platform/controls/LineDelegate.h"

#include "platform/controls/LineModel.h"

#include <QFont>
#include <QFontMetrics>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using controls::ColumnTexts;
using controls::LineColumns;
using controls::LineDelegate;
using controls::LineModel;

namespace {

constexpr QRect kLine(0, 0, 1200, 40);

QFontMetrics MetricsOf(int pixels) {
  QFont font;
  font.setPixelSize(pixels);
  return QFontMetrics(font);
}

controls::LineDetails Details(const QString& word, const QString& date, const QString& trailing) {
  controls::LineDetails details;
  details.word = word;
  details.date = date;
  details.trailing = trailing;
  return details;
}

class LineDelegateTest : public testing::Test {
 protected:
  LineDelegateTest() {
    lines_.Append({{u"Bakkerij"_s, 1, Details(u"loopt"_s, u"20-04-2025"_s, u"0:30"_s)}});
    delegate_.SetCaptions(captions_);
  }

  // The kept widths give the same columns as measuring again.
  void ExpectAsNewDelegate(const QFontMetrics& metrics) const {
    LineDelegate other(lines_, nullptr);
    other.SetCaptions(captions_);
    const LineColumns found = delegate_.ColumnsOf(kLine, metrics);
    const LineColumns expected = other.ColumnsOf(kLine, metrics);
    EXPECT_EQ(found.text, expected.text);
    EXPECT_EQ(found.word, expected.word);
    EXPECT_EQ(found.date, expected.date);
    EXPECT_EQ(found.trailing, expected.trailing);
  }

  LineModel lines_;
  ColumnTexts captions_;
  LineDelegate delegate_{lines_, nullptr};
  QFontMetrics metrics_ = MetricsOf(13);
};

}  // namespace

TEST_F(LineDelegateTest, ColumnsFollowTheFont) {
  ExpectAsNewDelegate(metrics_);
  const int width = delegate_.ColumnsOf(kLine, metrics_).word.width();
  ExpectAsNewDelegate(MetricsOf(26));
  EXPECT_GT(delegate_.ColumnsOf(kLine, MetricsOf(26)).word.width(), width);
  ExpectAsNewDelegate(metrics_);
}

TEST_F(LineDelegateTest, ColumnsFollowTheLongestTexts) {
  const LineColumns before = delegate_.ColumnsOf(kLine, metrics_);
  lines_.SetDetails(0, Details(u"loopt t/m 20-04-2025"_s, u"20-04-2025 en later"_s, u"1:00:30"_s));
  ExpectAsNewDelegate(metrics_);
  const LineColumns after = delegate_.ColumnsOf(kLine, metrics_);
  EXPECT_GT(after.word.width(), before.word.width());
  EXPECT_GT(after.date.width(), before.date.width());
  EXPECT_GT(after.trailing.width(), before.trailing.width());
}

TEST_F(LineDelegateTest, ColumnsFollowTheCaptions) {
  const LineColumns before = delegate_.ColumnsOf(kLine, metrics_);
  captions_.fill(u"Een lang opschrift"_s);
  delegate_.SetCaptions(captions_);
  ExpectAsNewDelegate(metrics_);
  EXPECT_GT(delegate_.ColumnsOf(kLine, metrics_).trailing.width(), before.trailing.width());
}
