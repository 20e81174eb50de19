#include "platform/runtime/FileCalls.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace runtime {
namespace {

FileCallScope::Hook& CurrentHook() {
  static FileCallScope::Hook hook;
  return hook;
}

int Hindered(FileCall call, const QString& hostPath) {
  return CurrentHook() ? CurrentHook()(call, hostPath) : 0;
}

int Answer(int result) {
  return result < 0 ? errno : 0;
}

QByteArray Encoded(const QString& hostPath) {
  return QFile::encodeName(hostPath);
}

}  // namespace

Descriptor::Descriptor(const QString& hostPath, int flags)
    : path_(hostPath), failure_(Hindered(FileCall::Open, hostPath)) {
  if (failure_ != 0) return;
  fd_ = ::open(Encoded(hostPath).constData(), flags | O_CLOEXEC, 0666);
  failure_ = Answer(fd_);
}

Descriptor::~Descriptor() {
  if (fd_ >= 0) ::close(fd_);
}

int Descriptor::Write(const QByteArray& bytes) const {
  if (const int failure = Hindered(FileCall::Write, path_)) return failure;
  qsizetype done = 0;
  while (done < bytes.size()) {
    const ssize_t count = ::write(fd_, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    done += count;
  }
  return 0;
}

int Descriptor::Sync() const {
  if (const int failure = Hindered(FileCall::Sync, path_)) return failure;
  return Answer(::fsync(fd_));
}

int RenameFile(const QString& from, const QString& to) {
  if (const int failure = Hindered(FileCall::Rename, from)) return failure;
  return Answer(::rename(Encoded(from).constData(), Encoded(to).constData()));
}

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
  if (const int failure = Hindered(FileCall::Remove, hostPath)) return failure;
  return Answer(::unlink(Encoded(hostPath).constData()));
}

int SyncFolderOf(const QString& hostPath) {
  if (const int failure = Hindered(FileCall::SyncFolder, hostPath)) return failure;
  const int folder = ::open(Encoded(QFileInfo(hostPath).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return errno;
  const int result = Answer(::fsync(folder));
  ::close(folder);
  // Some network file systems cannot sync a folder; their renames are as durable as the server makes them.
  return result == EINVAL || result == ENOTSUP ? 0 : result;
}

FileCallScope::FileCallScope(Hook hook) : previous_(std::exchange(CurrentHook(), std::move(hook))) {}
FileCallScope::~FileCallScope() {
  CurrentHook() = std::move(previous_);
}

}  // namespace runtime
