// SPDX-License-Identifier: MIT
#include "platform/desktop/WaitPointer.h"

#include "platform/desktop/Windows.h"

#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

TEST(WaitPointer, ShowsTheWaitPointerWhileItExists) {
  ASSERT_EQ(QApplication::overrideCursor(), nullptr);
  {
    const desktop::WaitPointer outer;
    {
      const desktop::WaitPointer inner;
      EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(WaitPointer, ArrowWithoutAWaitPointerChangesNothing) {
  const desktop::ArrowPointer arrow;
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Events, YieldingProcessesPendingEvents) {
  bool handled = false;
  QMetaObject::invokeMethod(
      qApp, [&handled] { handled = true; }, Qt::QueuedConnection);
  desktop::YieldToEvents();
  EXPECT_TRUE(handled);
}

class CountingWidget : public QWidget {
 public:
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent*) override { ++paints; }
};

TEST(Events, RepaintingPaintsWindows) {
  CountingWidget window;
  window.show();
  desktop::RepaintWindows();
  const int before = window.paints;
  window.update();
  desktop::RepaintWindows();
  EXPECT_GT(window.paints, before);
}

}  // namespace
