// SPDX-License-Identifier: MIT
// Connecting to a slow server: the windows stay alive and wait with the user's input.
#include "platform/dao/postgres/ServerWait.h"

#include "app/Start.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "tests/support/Cluster.h"
#include "tests/support/Proxy.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class CountingWindow : public QLineEdit {
 public:
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints;
    QLineEdit::paintEvent(event);
  }
};

}  // namespace

TEST(ServerWait, WindowsRepaintAndTakeNoInputWhileConnecting) {
  dao::CreateDatabase(testing_support::ServerPath(u"Traag"_s));
  dao::CloseKeptConnections();
  const testing_support::Proxy slow(testing_support::SharedCluster().SocketFolder(), 100ms);
  WaitForServersBesideWindows();
  CountingWindow window;
  window.show();
  QApplication::setActiveWindow(&window);
  window.setFocus();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  bool pressed = false;
  QTimer meanwhile;
  QObject::connect(&meanwhile, &QTimer::timeout, [&] {
    window.update();
    if (!pressed) qt_handleKeyEvent(window.windowHandle(), QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, u"a"_s);
    pressed = true;
  });
  meanwhile.start(10ms);
  const int before = window.paints;
  dao::OpenDatabase(u"postgresql://planner@/postgres?host="_s + slow.SocketFolder() + u"\\Traag.mdb");
  meanwhile.stop();
  EXPECT_TRUE(pressed);
  EXPECT_GT(window.paints - before, 3);
  EXPECT_EQ(window.text(), QString());
  QApplication::processEvents();
  EXPECT_EQ(window.text(), u"a"_s);
  dao::CloseKeptConnections();
  dao::SetServerWait({});
}
