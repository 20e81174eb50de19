#include "app/WindowPlaces.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <QTemporaryDir>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

// A window of that name, shown at its size or at the one remembered.
std::unique_ptr<QWidget> Shown(const QString& name, QSize size) {
  auto window = std::make_unique<QWidget>();
  window->setObjectName(name);
  window->resize(size);
  window->show();
  return window;
}

}  // namespace

TEST(WindowPlaces, AWindowOpensAsItWasLeft) {
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
  EXPECT_EQ(window->size(), QSize(window->screen()->availableSize().width(), 200));
}

TEST(WindowPlaces, OtherWindowsAndTheSplashScreenAreLeftAlone) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(u"vensters.ini"_s);
  const WindowPlaces places(file);
  for (const QString& name : {u"messageBox"_s, u"frmSplash"_s}) {
    Shown(name, QSize(300, 200))->hide();
    EXPECT_EQ(Shown(name, QSize(310, 210))->size(), QSize(310, 210));
  }
}

TEST(WindowPlaces, AFileThatCannotBeWrittenIsNoTrouble) {
  const WindowPlaces places(u"/proc/niet/hier.ini"_s);
  const auto window = Shown(u"frmProef"_s, QSize(300, 200));
  window->hide();
  EXPECT_FALSE(window->isVisible());
}
