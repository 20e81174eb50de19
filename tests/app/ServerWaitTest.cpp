// SPDX-License-Identifier: MIT
// Connecting to a slow server does not freeze the windows.
#include "platform/dao/postgres/ServerWait.h"

#include "app/Start.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "tests/support/Cluster.h"
#include "tests/support/Proxy.h"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class CountingWindow : public QWidget {
 public:
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

}  // namespace

TEST(ServerWait, WindowsRepaintWhileConnecting) {
  dao::CreateDatabase(testing_support::ServerPath(u"Traag"_s));
  dao::CloseKeptConnections();
  const testing_support::Proxy slow(testing_support::SharedCluster().SocketFolder(), 100ms);
  WaitForServersBesideWindows();
  CountingWindow window;
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QTimer meanwhile;
  QObject::connect(&meanwhile, &QTimer::timeout, &window, [&window] { window.update(); });
  meanwhile.start(10ms);
  const int before = window.paints;
  dao::OpenDatabase(u"postgresql://planner@/postgres?host="_s + slow.SocketFolder() + u"\\Traag.mdb");
  EXPECT_GT(window.paints - before, 3);
  dao::CloseKeptConnections();
  dao::SetServerWait({});
}
