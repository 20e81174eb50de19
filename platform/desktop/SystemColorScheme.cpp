// SPDX-License-Identifier: MIT
#include "platform/desktop/SystemColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariant>

// The desktop portal's settings interface. color-scheme: 0 no preference, 1 dark, 2 light.
namespace desktop {
namespace {

using namespace Qt::StringLiterals;

constexpr int kPatienceMs = 500;

const QString kService = u"org.freedesktop.portal.Desktop"_s;
const QString kPath = u"/org/freedesktop/portal/desktop"_s;
const QString kInterface = u"org.freedesktop.portal.Settings"_s;

}  // namespace

std::optional<Variant> SystemColorScheme() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return std::nullopt;
  QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"Read"_s);
  question << u"org.freedesktop.appearance"_s << u"color-scheme"_s;
  const QDBusMessage answer = bus.call(question, QDBus::Block, kPatienceMs);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return std::nullopt;

  // The value is a variant; with older portals a variant within a variant.
  QVariant value = answer.arguments().constFirst();
  while (value.canConvert<QDBusVariant>())
    value = value.value<QDBusVariant>().variant();
  if (value.toUInt() == 1) return Variant::Dark;
  if (value.toUInt() == 2) return Variant::Light;
  return std::nullopt;
}

void WatchSystemColorScheme(QObject* listener, const char* slot) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  bus.connect(kService, kPath, kInterface, u"SettingChanged"_s, listener, slot);
}

}  // namespace desktop
