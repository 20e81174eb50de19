#include "platform/runtime/FileCalls.h"

#include "platform/files/FileSystem.h"
#include "platform/files/Uninterrupted.h"

#include <QFile>
#include <QFileInfo>

namespace runtime {

int RenameNewFile(const QString& from, const QString& to) {
  if (const int failure = Hindered(FileCall::Rename, from)) return failure;
  const QByteArray old = Encoded(from);
  const QByteArray name = Encoded(to);
  const int failure = Answer(::renameat2(AT_FDCWD, old.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE));
  if (failure != EINVAL && failure != ENOSYS && failure != ENOTSUP) return failure;
  // Network file systems do not know that call.
  if (const int linking = Answer(::link(old.constData(), name.constData()))) return linking;
  // The name is taken; a temporary name that stays behind harms nothing.
  ::unlink(old.constData());
  return 0;
}

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
