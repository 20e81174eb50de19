// SPDX-License-Identifier: MIT
#include "app/UserFile.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString UserFile(const QString& name) {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/spotrooster/"_s + name;
}
