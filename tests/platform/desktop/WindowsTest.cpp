// SPDX-License-Identifier: MIT
// Windows and their events during a call: owners, repainting, background work, the focus.
#include "platform/desktop/Windows.h"

#include "platform/desktop/Background.h"
#include "platform/desktop/FocusFallback.h"
#include "platform/desktop/TextAsToolTip.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using namespace Qt::StringLiterals;
using desktop::InBackground;
using desktop::OwnerOrActive;

TEST(OwnerOrActive, IsTheOwnerOrElseTheModalOrElseTheActiveWindow) {
  QWidget main;
  QWidget other;
  QDialog question;
  main.show();
  other.show();
  QApplication::setActiveWindow(&main);
  EXPECT_EQ(OwnerOrActive(&other), &other);
  EXPECT_EQ(OwnerOrActive(nullptr), &main);
  question.setModal(true);
  question.show();
  QApplication::setActiveWindow(&main);
  EXPECT_EQ(OwnerOrActive(nullptr), &question);
  EXPECT_EQ(OwnerOrActive(&other), &other);
}

TEST(OwnerOrActive, IsNullWithoutAnyWindow) {
  ASSERT_EQ(QApplication::activeWindow(), nullptr);
  EXPECT_EQ(OwnerOrActive(nullptr), nullptr);
}

// Counts its repaints; a test may wait for the first.
class PaintedWindow : public QWidget {
 public:
  std::promise<void> painted;
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    if (++paints == 1) painted.set_value();
  }
};

TEST(InBackground, RunsInAnotherThreadAndReturnsTheResult) {
  QThread* const here = QThread::currentThread();
  EXPECT_NE(InBackground([] { return QThread::currentThread(); }), here);
  const auto moved = InBackground([] { return std::make_unique<int>(42); });
  EXPECT_EQ(*moved, 42);
}

TEST(InBackground, RethrowsTheException) {
  const auto fails = []() -> int { throw std::runtime_error("de schijf is weg"); };
  try {
    InBackground(fails);
    ADD_FAILURE();
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(std::string(error.what()), "de schijf is weg");
  }
}

TEST(InBackground, WindowsAreRepaintedMeanwhile) {
  PaintedWindow window;
  window.show();
  std::future<void> painted = window.painted.get_future();
  const bool repainted =
      InBackground([&painted] { return painted.wait_for(std::chrono::minutes(1)) == std::future_status::ready; });
  EXPECT_TRUE(repainted);
}

TEST(InBackground, WorkMayStartOtherWork) {
  int result = 0;
  QMetaObject::invokeMethod(
      qApp, [&result] { result = InBackground([] { return 2; }); }, Qt::QueuedConnection);
  EXPECT_EQ(InBackground([] { return 1; }), 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(result, 2);
}

class WindowWithButtons : public testing::Test {
 protected:
  WindowWithButtons() {
    auto* column = new QVBoxLayout(&window);
    for (QPushButton** button : {&first, &second, &third})
      column->addWidget(*button = new QPushButton);
    window.show();
    QApplication::setActiveWindow(&window);
  }

  QWidget window;
  QPushButton* first = nullptr;
  QPushButton* second = nullptr;
  QPushButton* third = nullptr;
};

TEST_F(WindowWithButtons, FocusMovesHomeWhenTheFocusedControlIsDisabled) {
  second->setFocus();
  {
    const desktop::FocusFallback fallback(*first);
    second->setEnabled(false);
  }
  EXPECT_EQ(window.focusWidget(), first);
}

TEST_F(WindowWithButtons, FocusStaysOnAControlThatIsStillEnabled) {
  second->setFocus();
  {
    const desktop::FocusFallback fallback(*first);
    second->setEnabled(false);
    second->setEnabled(true);
    third->setEnabled(false);
    second->setFocus();
  }
  EXPECT_EQ(window.focusWidget(), second);
}

TEST_F(WindowWithButtons, FocusIsNotMovedWhenTheControlIsDeleted) {
  second->setFocus();
  {
    const desktop::FocusFallback fallback(*first);
    delete second;
    third->setFocus();
  }
  EXPECT_EQ(window.focusWidget(), third);
}

TEST(TextAsToolTip, IsTheTextAndForAnEmptyFieldItsOwnToolTip) {
  QLineEdit field(u"/audio/een heel lang pad.wav"_s);
  field.setToolTip(u"Kies een bestand"_s);
  desktop::ShowTextAsToolTip(&field);
  EXPECT_EQ(field.toolTip(), u"/audio/een heel lang pad.wav"_s);
  field.setText(u"/audio/twee.wav"_s);
  EXPECT_EQ(field.toolTip(), u"/audio/twee.wav"_s);
  field.clear();
  EXPECT_EQ(field.toolTip(), u"Kies een bestand"_s);
  QTest::keyClicks(&field, u"d"_s);
  EXPECT_EQ(field.toolTip(), u"d"_s);
}

}  // namespace
