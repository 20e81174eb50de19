// SPDX-License-Identifier: MIT
#include "app/Version.h"

using namespace Qt::StringLiterals;

QString Version() {
  return QStringLiteral(SPOTROOSTER_VERSION);
}

QString VersionText() {
  return u"Versie "_s + Version();
}
