// SPDX-License-Identifier: MIT
#include "platform/desktop/Theme.h"

#include "platform/desktop/LookStyle.h"
#include "platform/desktop/Palettes.h"
#include "platform/desktop/SystemColorScheme.h"
#include "platform/desktop/Tokens.h"

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

Theme::Theme(QApplication& application, std::optional<Variant> asked)
    : QObject(&application),
      application_(application),
      platform_(IsDark(QApplication::palette()) ? Variant::Dark : Variant::Light),
      current_(platform_) {
  const bool ours = QApplication::style()->name().compare(u"fusion"_s, Qt::CaseInsensitive) == 0;
  if (ours) QApplication::setStyle(new LookStyle);
  if (!ours && !asked) return;
  Use(asked.value_or(SystemColorScheme().value_or(platform_)));
  if (!asked) FollowDesktop();
}

void Theme::FollowDesktop() {
  follows_ = true;
  application_.installEventFilter(this);
  WatchDesktopWish(this, SLOT(AskDesktop()));
}

void Theme::Use(Variant variant) {
  current_ = variant;
  QApplication::setPalette(variant == Variant::Dark ? DarkPalette() : LightPalette());
}

void Theme::AskDesktop() {
  const Variant wished = SystemColorScheme().value_or(platform_);
  if (wished != current_) Use(wished);
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
  // Every window gets one; the desktop is asked once they are all through.
  if (follows_ && event->type() == QEvent::ThemeChange && !asking_) {
    asking_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
          asking_ = false;
          AskDesktop();
        },
        Qt::QueuedConnection);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace desktop
