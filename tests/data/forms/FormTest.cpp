// SPDX-License-Identifier: MIT
// A form's position, and the keyboard focus after it is closed.
#include "data/forms/Form.h"

#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

// A form that calls a function once it is shown, and then closes.
class SelfClosing : public Form {
 public:
  SelfClosing(QWidget* owner, std::function<void(SelfClosing&)> shown) : Form(owner), shown_(std::move(shown)) {
    resize(300, 200);
  }
  void Form_Load() override {
    QTimer::singleShot(0, this, [this] {
      shown_(*this);
      Unload();
    });
  }

 private:
  std::function<void(SelfClosing&)> shown_;
};

}  // namespace

TEST(Form, CloseReturnsWhetherTheFormClosed) {
  class MayRefuse : public SelfClosing {
   public:
    using SelfClosing::SelfClosing;
    void CloseAsked() override {
      if (mayClose) Unload();
    }
    bool mayClose = false;
  };
  MayRefuse form(nullptr, {});
  form.show();
  EXPECT_FALSE(form.close());
  EXPECT_TRUE(form.isVisible());
  form.mayClose = true;
  EXPECT_TRUE(form.close());
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(form.close());
}

// Another window is active in between, as on desktops that activate none of the program's windows.
TEST(Form, OwnerIsActiveAgainAfterClosing) {
  QWidget owner;
  QWidget elsewhere;
  owner.show();
  owner.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&owner));
  SelfClosing form(&owner, [&](SelfClosing&) {
    elsewhere.show();
    elsewhere.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&elsewhere));
  });
  form.ShowModal();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&owner));
}

TEST(Form, FormWithAHiddenOwnerIsCentredOnTheScreen) {
  QWidget owner;
  owner.setGeometry(0, 0, 100, 100);
  QPoint centre;
  SelfClosing form(&owner, [&](SelfClosing& shown) { centre = shown.geometry().center(); });
  form.ShowModal();
  const QPoint middle = form.screen()->availableGeometry().center();
  EXPECT_LE((centre - middle).manhattanLength(), 4);
}
