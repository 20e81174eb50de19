// SPDX-License-Identifier: MIT
// Checks every window for users of a keyboard or a screen reader.
#include "platform/desktop/LookStyle.h"
#include "platform/desktop/Palettes.h"
#include "tests/support/Station.h"
#include "tests/windows/Controls.h"
#include "tests/windows/FilledStation.h"
#include "tests/windows/Windows.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

constexpr windows::Records kRecords = windows::kFilledRecords;

class EveryWindow : public ::testing::TestWithParam<int> {
 protected:
  static void SetUpTestSuite() {
    QApplication::setStyle(new desktop::LookStyle);
    QApplication::setPalette(desktop::LightPalette());
    station_ = std::make_unique<Station>();
    windows::FillStation(*station_);
  }
  static void TearDownTestSuite() { station_.reset(); }

  EveryWindow() {
    window_ = std::make_unique<windows::Window>(windows::All(kRecords).at(GetParam()).open());
    Widget().show();
    Widget().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget()));
  }
  QWidget& Widget() const { return window_->Widget(); }

  inline static std::unique_ptr<Station> station_;
  std::unique_ptr<windows::Window> window_;
};

std::string Joined(const QStringList& found) {
  return found.join(u'\n').toStdString();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(All, EveryWindow, ::testing::Range(0, static_cast<int>(windows::All(kRecords).size())),
                         [](const ::testing::TestParamInfo<int>& at) {
                           return windows::All(kRecords).at(at.param).name.toStdString();
                         });

TEST_P(EveryWindow, NamesEachOfItsControls) {
  EXPECT_EQ(Joined(windows::Nameless(Widget())), "");
}

TEST_P(EveryWindow, GivesEachOfItsControlsItsOwnName) {
  EXPECT_EQ(Joined(windows::SharedNames(Widget())), "");
}

TEST_P(EveryWindow, FitsAFullHdScreenAt200Percent) {
  constexpr QSize kScreen(960, 540);
  constexpr int kTitleBar = 24;
  EXPECT_LE(Widget().minimumSizeHint().width(), kScreen.width());
  EXPECT_LE(Widget().minimumSizeHint().height(), kScreen.height() - kTitleBar);
}

TEST_P(EveryWindow, DescribesControlsThatNeedMoreThanAName) {
  EXPECT_EQ(Joined(windows::Undescribed(Widget())), "");
}

TEST_P(EveryWindow, ShowsWhereTheFocusIs) {
  Widget().resize(Widget().size().expandedTo({1200, 800}));  // so that nothing is scrolled out of view
  EXPECT_EQ(Joined(windows::Unmarked(Widget(), windows::TabStops(Widget()))), "");
}

TEST_P(EveryWindow, UsesEachMnemonicOnce) {
  EXPECT_EQ(Joined(windows::SharedMnemonics(Widget())), "");
}

TEST_P(EveryWindow, ReachesEachControlWithTab) {
  EXPECT_EQ(Joined(windows::Described(windows::Missed(Widget(), windows::TabStops(Widget())))), "");
}

TEST_P(EveryWindow, TabFollowsTheReadingOrder) {
  const QStringList against = windows::AgainstReading(windows::TabStops(Widget()));
  EXPECT_LE(against.size(), 1) << Joined(against);
}
