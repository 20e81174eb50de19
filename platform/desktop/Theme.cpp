// SPDX-License-Identifier: MIT
#include "platform/desktop/Theme.h"

#include "platform/desktop/LookStyle.h"
#include "platform/desktop/Palettes.h"
#include "platform/desktop/SystemColorScheme.h"
#include "platform/desktop/ThemeColours.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>

namespace desktop {

using namespace Qt::StringLiterals;

std::optional<Variant> VariantFromText(const QString& text) {
  if (text == u"light"_s) return Variant::Light;
  if (text == u"dark"_s) return Variant::Dark;
  return std::nullopt;
}

Theme::Theme(QApplication& application, std::optional<Variant> requested)
    : QObject(&application),
      application_(application),
      platform_(IsDark(QApplication::palette()) ? Variant::Dark : Variant::Light),
      current_(platform_) {
  const bool isFusion = QApplication::style()->name().compare(u"fusion"_s, Qt::CaseInsensitive) == 0;
  if (isFusion) QApplication::setStyle(new LookStyle);
  if (!isFusion && !requested) return;
  Use(requested ? *requested : SystemColorScheme().value_or(platform_));
  if (!requested) FollowDesktop();
}

void Theme::FollowDesktop() {
  followsDesktop_ = true;
  application_.installEventFilter(this);
  WatchSystemColorScheme(this, SLOT(UpdateFromDesktop()));
}

void Theme::Use(Variant variant) {
  current_ = variant;
  QApplication::setPalette(variant == Variant::Dark ? DarkPalette() : LightPalette());
}

void Theme::UpdateFromDesktop() {
  const Variant preferred = SystemColorScheme().value_or(platform_);
  if (preferred != current_) Use(preferred);
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
  // Every window gets this event; the desktop is queried once after all of them.
  if (followsDesktop_ && event->type() == QEvent::ThemeChange && !updateScheduled_) {
    updateScheduled_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
          updateScheduled_ = false;
          UpdateFromDesktop();
        },
        Qt::QueuedConnection);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace desktop
