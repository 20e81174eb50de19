// SPDX-License-Identifier: MIT
#include "app/WindowPlaces.h"

#include "catalogue/frmItemSpots.h"
#include "export/frmRadioDetail.h"
#include "tests/support/Station.h"

#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// Shows a window of that name, with its own or its remembered size.
std::unique_ptr<QWidget> Shown(const QString& name, QSize size) {
  auto window = std::make_unique<QWidget>();
  window->setObjectName(name);
  window->resize(size);
  window->show();
  return window;
}

// Windows that the user moved, opened again in the next run.
class WindowsLeft : public ::testing::Test {
 protected:
  template <class Window>
  std::unique_ptr<Window> Opened() const {
    auto window = std::make_unique<Window>(nullptr);
    window->Form_Load();
    window->show();
    return window;
  }
  template <class Window>
  QRect Left(QPoint at) const {
    const WindowPlaces places(file_);
    const auto window = Opened<Window>();
    window->resize(kLeft);
    window->move(at);
    window->hide();
    return window->frameGeometry();
  }
  template <class Window>
  void ExpectInside() const {
    const WindowPlaces places(file_);
    const auto window = Opened<Window>();
    const QRect free = window->screen()->availableGeometry();
    EXPECT_TRUE(free.contains(window->frameGeometry()))
        << window->objectName().toStdString() << " at " << window->x() << ", " << window->y();
    EXPECT_EQ(window->size(), kLeft);
  }
  // As if the window had been on the fourth screen. The screen number follows the magic number, the version and two
  // rectangles.
  void MoveToScreenThatIsGone(const QString& window) const {
    constexpr qsizetype kScreenNumber = 4 + 2 + 2 + 16 + 16;
    QSettings places(file_, QSettings::IniFormat);
    QByteArray place = places.value(window).toByteArray();
    place.replace(kScreenNumber, 4, QByteArray("\0\0\0\3", 4));
    places.setValue(window, place);
  }

  static constexpr QSize kLeft{640, 480};
  const testing_support::Station station_;
  const QTemporaryDir folder_;
  const QString file_ = folder_.filePath(u"vensters.ini"_s);
};

}  // namespace

TEST_F(WindowsLeft, ReturnToTheirPosition) {
  const QRect left = Left<frmItemSpots>(QPoint(40, 60));
  const WindowPlaces places(file_);
  EXPECT_EQ(Opened<frmItemSpots>()->frameGeometry(), left);
}

TEST_F(WindowsLeft, BeyondAnEdgeReturnIntoTheScreen) {
  for (const QPoint at : {QPoint(5000, 4000), QPoint(-5000, 100), QPoint(600, 700), QPoint(-200, -150)}) {
    Left<frmItemSpots>(at);
    ExpectInside<frmItemSpots>();
    Left<frmRadioDetail>(at);
    ExpectInside<frmRadioDetail>();
  }
}

TEST_F(WindowsLeft, OnAMissingScreenReturnIntoAnExistingOne) {
  Left<frmItemSpots>(QPoint(3900, 300));
  MoveToScreenThatIsGone(u"frmItemSpots"_s);
  ExpectInside<frmItemSpots>();
}

TEST(WindowPlaces, AWindowOpensWithItsLastSize) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"vensters.ini"_s);
  {
    const WindowPlaces places(file);
    const auto window = Shown(u"frmProef"_s, QSize(300, 200));
    window->resize(420, 310);
    window->hide();
  }
  const WindowPlaces places(file);
  EXPECT_EQ(Shown(u"frmProef"_s, QSize(300, 200))->size(), QSize(420, 310));
  EXPECT_EQ(Shown(u"frmAnders"_s, QSize(300, 200))->size(), QSize(300, 200));
}

TEST(WindowPlaces, AWindowNeverOpensLargerThanItsScreen) {
  const QTemporaryDir folder;
  const WindowPlaces places(folder.filePath(u"vensters.ini"_s));
  const auto window = Shown(u"frmProef"_s, QSize(5000, 200));
  const int frame = window->frameGeometry().width() - window->width();
  EXPECT_EQ(window->width() + frame, window->screen()->availableSize().width());
  EXPECT_EQ(window->height(), 200);
}

// The frame belongs to the window: its title and lower edge stay on the screen.
TEST(WindowPlaces, AWindowThatFillsItsScreenHasItsFrameInside) {
  const QTemporaryDir folder;
  const WindowPlaces places(folder.filePath(u"vensters.ini"_s));
  const auto window = Shown(u"frmProef"_s, QSize(5000, 4000));
  EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
  QCoreApplication::processEvents();
  const QRect free = window->screen()->availableGeometry();
  EXPECT_GT(window->frameGeometry().width(), window->width());
  EXPECT_TRUE(free.contains(window->frameGeometry()))
      << window->frameGeometry().width() << " x " << window->frameGeometry().height();
}

TEST(WindowPlaces, AWindowCannotBeSmallerThanHalfOfItsOpeningSize) {
  const QTemporaryDir folder;
  const WindowPlaces places(folder.filePath(u"vensters.ini"_s));
  const auto window = Shown(u"frmProef"_s, QSize(300, 200));
  window->resize(10, 10);
  EXPECT_EQ(window->size(), QSize(150, 100));
}

TEST_F(WindowsLeft, HaveAMinimumOfHalfTheirOpeningSize) {
  const WindowPlaces places(file_);
  const auto window = Opened<frmItemSpots>();
  const int half = window->width() / 2;
  ASSERT_GT(half, window->minimumSizeHint().width());
  for (const QSize size : {QSize(10, 10), QSize(2000, 1500), QSize(10, 10)}) {
    window->hide();
    window->show();
    window->resize(size);
  }
  EXPECT_EQ(window->width(), half);
}

TEST(WindowPlaces, OtherWindowsAndTheSplashScreenAreNotChanged) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"vensters.ini"_s);
  const WindowPlaces places(file);
  for (const QString& name : {u"messageBox"_s, u"frmSplash"_s}) {
    Shown(name, QSize(300, 200))->hide();
    EXPECT_EQ(Shown(name, QSize(310, 210))->size(), QSize(310, 210));
  }
}

TEST(WindowPlaces, AReadOnlyFileIsNoError) {
  const WindowPlaces places(u"/proc/niet/hier.ini"_s);
  const auto window = Shown(u"frmProef"_s, QSize(300, 200));
  window->hide();
  EXPECT_FALSE(window->isVisible());
}
