// SPDX-License-Identifier: MIT
#include "platform/runtime/FileCalls.h"

#include "platform/files/FileSystem.h"
#include "platform/files/Uninterrupted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>

#include <system_error>

using namespace Qt::StringLiterals;

namespace runtime {

int RemoveFile(const QString& hostPath) {
  return -files::Uninterrupted([&] { return files::CurrentFileSystem().RawRemove(NativePath(hostPath)); });
}

int SyncFolderOf(const QString& hostPath) {
  const std::filesystem::path folder = NativePath(QFileInfo(hostPath).path());
  return -files::Uninterrupted([&] { return files::CurrentFileSystem().RawSyncFolder(folder); });
}

void MakeFolders(const QString& hostPath) {
  std::error_code failure;
  std::filesystem::create_directories(NativePath(hostPath), failure);
  if (failure) throw Error(u"Kan de map '%1' niet maken: %2."_s.arg(hostPath, SystemReason(failure.value())));
}

std::filesystem::path NativePath(const QString& hostPath) {
  return QFile::encodeName(hostPath).toStdString();
}

}  // namespace runtime
