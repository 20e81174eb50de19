// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QString>

namespace testing_support {

// Every file of a folder and those below it with its bytes, by path. Lock files of databases come and go, and hold
// nothing that counts.
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
