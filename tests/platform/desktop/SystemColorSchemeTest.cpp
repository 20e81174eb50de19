// SPDX-License-Identifier: MIT
// The desktop's preference for light or dark windows, from a desktop portal on a message bus of the test's own.
#include "platform/desktop/SystemColorScheme.h"

#include "tests/platform/desktop/Look.h"
#include "tests/support/Waiting.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTemporaryFile>
#include <QThread>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <string>

namespace {

using namespace Qt::StringLiterals;
using desktop::SystemColorScheme;
using desktop::Theme;
using desktop::Variant;

// A dbus-daemon that starts no services. Qt connects to the session bus once, so it must be there before main.
class PrivateBus {
 public:
  PrivateBus() {
    config_.open();
    config_.write(R"(<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><policy context="default">
      <allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>)");
    config_.flush();
    const QByteArray config = "--config-file=" + config_.fileName().toUtf8();
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) return;
    daemon_ = ::fork();
    if (daemon_ == 0) {
      ::prctl(PR_SET_PDEATHSIG, SIGKILL);
      ::dup2(ends[1], STDOUT_FILENO);
      ::execlp("dbus-daemon", "dbus-daemon", config.constData(), "--nofork", "--print-address=1", nullptr);
      ::_exit(127);
    }
    ::close(ends[1]);
    std::array<char, 512> line{};
    const auto length = ::read(ends[0], line.data(), line.size());
    ::close(ends[0]);
    address_ = std::string(line.data(), length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    ::setenv("SPOTROOSTER_TEST_BUS", address_.c_str(), 1);
  }
  ~PrivateBus() {
    if (daemon_ <= 0) return;
    ::kill(daemon_, SIGTERM);
    ::waitpid(daemon_, nullptr, 0);
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // Empty when there is no dbus-daemon.
  QString Address() const { return QString::fromStdString(address_); }

 private:
  QTemporaryFile config_;
  pid_t daemon_ = -1;
  std::string address_;
};

const PrivateBus privateBus;

const QString kPortal = u"org.freedesktop.portal.Desktop"_s;
const QString kPlace = u"/org/freedesktop/portal/desktop"_s;
const QString kSettings = u"org.freedesktop.portal.Settings"_s;

// Lives in another thread, because the program waits for its reply.
class Portal : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    ++asked;
    const bool known =
        message.arguments() == QVariantList{u"org.freedesktop.appearance"_s, u"color-scheme"_s} && !refuses;
    if (silent) return true;
    QDBusVariant value(text.isEmpty() ? QVariant(scheme.load()) : QVariant(text));
    if (nested) value = QDBusVariant(QVariant::fromValue(value));
    connection.send(known ? message.createReply(QVariant::fromValue(value))
                          : message.createErrorReply(QDBusError::InvalidArgs, u"unknown setting"_s));
    return true;
  }

  std::atomic<uint> scheme = 0;
  std::atomic<int> asked = 0;
  std::atomic<bool> nested = false, refuses = false, silent = false;
  QString text;
};

class WithPortal : public testing::Test {
 protected:
  void SetUp() override {
    if (privateBus.Address().isEmpty()) GTEST_SKIP() << "there is no dbus-daemon";
    portal.moveToThread(&thread);
    thread.start();
    ASSERT_TRUE(bus.isConnected());
    ASSERT_TRUE(bus.registerVirtualObject(kPlace, &portal));
    ASSERT_TRUE(bus.registerService(kPortal));
  }
  ~WithPortal() override {
    bus.unregisterService(kPortal);
    bus.unregisterObject(kPlace);
    QDBusConnection::disconnectFromBus(u"portal"_s);
    thread.quit();
    thread.wait();
    QApplication::setStyle(QStyleFactory::create(u"fusion"_s));
    QApplication::setPalette(QPalette());
  }
  void AnnounceChange() {
    QDBusMessage signal = QDBusMessage::createSignal(kPlace, kSettings, u"SettingChanged"_s);
    signal << u"org.freedesktop.appearance"_s << u"color-scheme"_s
           << QVariant::fromValue(QDBusVariant(portal.scheme.load()));
    bus.send(signal);
  }

  QThread thread;
  Portal portal;
  QDBusConnection bus = QDBusConnection::connectToBus(privateBus.Address(), u"portal"_s);
};

TEST(WithoutPortal, ThereIsNoPreference) {
  EXPECT_EQ(SystemColorScheme(), std::nullopt);
}

TEST_F(WithPortal, PreferenceIsReadFromOldAndNewPortals) {
  for (const bool nested : {false, true}) {
    portal.nested = nested;
    portal.scheme = 1;
    EXPECT_EQ(SystemColorScheme(), Variant::Dark);
    portal.scheme = 2;
    EXPECT_EQ(SystemColorScheme(), Variant::Light);
  }
}

TEST_F(WithPortal, UnknownValuesAndErrorsAreNoPreference) {
  for (const uint scheme : {0U, 3U, 4000000000U}) {
    portal.scheme = scheme;
    EXPECT_EQ(SystemColorScheme(), std::nullopt) << scheme;
  }
  portal.text = u"donker"_s;
  EXPECT_EQ(SystemColorScheme(), std::nullopt);
  portal.text.clear();
  portal.scheme = 1;
  portal.refuses = true;
  EXPECT_EQ(SystemColorScheme(), std::nullopt);
}

TEST_F(WithPortal, PortalThatDoesNotReplyIsNoPreference) {
  portal.scheme = 1;
  portal.silent = true;
  EXPECT_EQ(SystemColorScheme(), std::nullopt);
  EXPECT_EQ(portal.asked, 1);
}

TEST_F(WithPortal, ThemeBeginsWithThePreferenceAndFollowsIt) {
  portal.scheme = 1;
  const Theme theme(*qApp, std::nullopt);
  EXPECT_EQ(theme.Current(), Variant::Dark);
  EXPECT_TRUE(desktop::IsDark(QApplication::palette()));
  portal.scheme = 2;
  AnnounceChange();
  EXPECT_TRUE(WaitUntil([&] { return theme.Current() == Variant::Light; }));
  EXPECT_FALSE(desktop::IsDark(QApplication::palette()));
}

TEST_F(WithPortal, ThemeOfTheStartOptionIsKept) {
  portal.scheme = 1;
  const Theme theme(*qApp, Variant::Light);
  QEvent change(QEvent::ThemeChange);
  QWidget window;
  QApplication::sendEvent(&window, &change);
  QCoreApplication::processEvents();
  EXPECT_EQ(theme.Current(), Variant::Light);
  EXPECT_EQ(portal.asked, 0);
}

// Every window gets the event; each question to the desktop may take half a second.
TEST_F(WithPortal, ChangeOfTheDesktopsThemeIsLookedUpOnceForAllWindows) {
  portal.scheme = 2;
  const Theme theme(*qApp, std::nullopt);
  portal.scheme = 1;
  const int before = portal.asked;
  std::array<QWidget, 3> windows;
  for (QWidget& window : windows) {
    QEvent change(QEvent::ThemeChange);
    QApplication::sendEvent(&window, &change);
  }
  EXPECT_EQ(theme.Current(), Variant::Light);
  EXPECT_TRUE(WaitUntil([&] { return theme.Current() == Variant::Dark; }));
  EXPECT_EQ(portal.asked, before + 1);
}

}  // namespace
