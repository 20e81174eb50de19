// SPDX-License-Identifier: MIT
#include "platform/runtime/FileCalls.h"

#include "platform/files/FileSystem.h"
#include "platform/files/Uninterrupted.h"

#include <QFile>
#include <QFileInfo>

namespace runtime {

int RemoveFile(const QString& hostPath) {
  return -files::Uninterrupted([&] { return files::CurrentFileSystem().RawRemove(NativePath(hostPath)); });
}

int SyncFolderOf(const QString& hostPath) {
  const std::filesystem::path folder = NativePath(QFileInfo(hostPath).path());
  return -files::Uninterrupted([&] { return files::CurrentFileSystem().RawSyncFolder(folder); });
}

std::filesystem::path NativePath(const QString& hostPath) {
  return QFile::encodeName(hostPath).toStdString();
}

}  // namespace runtime
