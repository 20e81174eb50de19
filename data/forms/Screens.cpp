// SPDX-License-Identifier: MIT
#include "data/forms/Screens.h"

#include "platform/runtime/Error.h"

#include <QMap>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QMap<Screen, ShowScreenModally>& Registered() {
  static QMap<Screen, ShowScreenModally> screens;
  return screens;
}

}  // namespace

void RegisterScreen(Screen screen, ShowScreenModally show) {
  Registered()[screen] = std::move(show);
}

bool HasScreen(Screen screen) {
  return static_cast<bool>(Registered().value(screen));
}

void ShowScreen(Screen screen, QWidget* owner) {
  const ShowScreenModally show = Registered().value(screen);
  if (!show) throw runtime::Error(u"Dit scherm is niet beschikbaar."_s);
  show(owner);
}
