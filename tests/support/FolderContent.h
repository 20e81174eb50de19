// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QString>

namespace testing_support {

// Every file below a folder with its bytes, by path, without the lock files of databases, whose content does not
// matter.
inline QMap<QString, QByteArray> FolderContent(const QString& folder) {
  QMap<QString, QByteArray> content;
  QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    if (file.fileName().endsWith(QLatin1String(".ldb"))) continue;
    content[file.fileName()] = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
  }
  return content;
}

}  // namespace testing_support
