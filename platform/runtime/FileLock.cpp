#include "platform/runtime/FileLock.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace runtime {
namespace {

int OpenForLocking(const QString& pathText) {
  try {
    return ::open(QFile::encodeName(HostPath(pathText)).constData(), O_RDONLY | O_CREAT | O_CLOEXEC, 0666);
  } catch (const Error&) {
    return -1;
  }
}

}  // namespace

FileLock::FileLock(const QString& pathText) : fd_(OpenForLocking(pathText)) {
  if (fd_ < 0) return;
  if (::flock(fd_, LOCK_EX | LOCK_NB) == 0) {
    state_ = State::Held;
  } else if (errno == EWOULDBLOCK) {
    state_ = State::HeldByOther;
  }
}

FileLock::~FileLock() {
  if (fd_ >= 0) ::close(fd_);
}

}  // namespace runtime
