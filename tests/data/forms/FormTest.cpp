// SPDX-License-Identifier: MIT
// Where a form stands and who has the keyboard once it is closed.
#include "data/forms/Form.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

// A form that does something once it is shown, and goes.
class Passing : public Form {
 public:
  Passing(QWidget* owner, std::function<void(Passing&)> shown) : Form(owner), shown_(std::move(shown)) {
    resize(300, 200);
  }
  void Form_Load() override {
    QTimer::singleShot(0, this, [this] {
      shown_(*this);
      Unload();
    });
  }

 private:
  std::function<void(Passing&)> shown_;
};

}  // namespace

TEST(Form, ClosingItReportsWhetherItClosed) {
  class Staying : public Passing {
   public:
    using Passing::Passing;
    void CloseAsked() override {
      if (mayClose) Unload();
    }
    bool mayClose = false;
  };
  Staying form(nullptr, {});
  form.show();
  EXPECT_FALSE(form.close());
  EXPECT_TRUE(form.isVisible());
  form.mayClose = true;
  EXPECT_TRUE(form.close());
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(form.close());
}

// As a desktop does that gives the keyboard to none of the program's windows.
TEST(Form, ItsOwnerIsActiveAgainOnceItIsClosed) {
  QWidget owner;
  QWidget elsewhere;
  owner.show();
  owner.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
  Passing form(&owner, [&](Passing&) {
    elsewhere.show();
    elsewhere.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  });
  form.ShowModal();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&owner));
}

TEST(Form, WithAnOwnerThatIsNotShownItStandsAmidTheScreen) {
  QWidget owner;
  owner.setGeometry(0, 0, 100, 100);
  QPoint centre;
  Passing form(&owner, [&](Passing& shown) { centre = shown.geometry().center(); });
  form.ShowModal();
  const QPoint middle = form.screen()->availableGeometry().center();
  EXPECT_LE((centre - middle).manhattanLength(), 4);
}
