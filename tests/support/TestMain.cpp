// SPDX-License-Identifier: MIT
// The main of every test program with Qt: offscreen, fixed locale, fixed style, no desktop settings.
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/DetachedThread.h"
#include "tests/support/Cluster.h"
#include "tests/support/OwnUserFolders.h"

#include <QApplication>
#include <QFileInfo>
#include <QLocale>

#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

namespace {

constexpr int kSkipped = 77;  // exit code that CTest reports as skipped
constexpr std::chrono::seconds kBackgroundWait{10};

int RunProgram(int argc, char** argv) {
  // A test program that needs another program registers that before main.
  const QByteArray platform = qgetenv("SPOTROOSTER_TEST_PLATFORM");
  qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
  // Nor the preferences of the developer's desktop; a test that needs a message bus registers its own, also before
  // main.
  const QByteArray bus = qgetenv("SPOTROOSTER_TEST_BUS");
  qputenv("DBUS_SESSION_BUS_ADDRESS", bus.isEmpty() ? QByteArray("unix:path=/dev/null") : bus);
  // Every test makes its own databases; in memory their syncs cost nothing.
  if (QFileInfo(QStringLiteral("/dev/shm")).isWritable()) qputenv("TMPDIR", "/dev/shm");
  testing::InitGoogleTest(&argc, argv);
  const testing_support::OwnUserFolders folders;
  QLocale::setDefault(QLocale(QLocale::Dutch, QLocale::Belgium));
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  desktop::ShowUserMessagesAsBoxes();
  if (testing_support::OnServer() && !testing_support::Cluster::IsInstalled()) {
    std::cout << "PostgreSQL is not installed\n";
    return kSkipped;
  }
  const int result = RUN_ALL_TESTS();
  testing_support::StopSharedCluster();
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  return runtime::AwaitDetached(RunProgram(argc, argv), kBackgroundWait);
}
