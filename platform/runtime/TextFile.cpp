#include "platform/runtime/TextFile.h"

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

[[noreturn]] void Fail(const QString& doing, const QString& pathText, int reason) {
  throw Error(u"Kan '%1' niet %2: %3."_s.arg(pathText, doing, SystemReason(reason)));
}

// An open file descriptor that closes itself.
class Descriptor {
 public:
  Descriptor(const QString& hostPath, int flags)
      : fd_(::open(QFile::encodeName(hostPath).constData(), flags | O_CLOEXEC, 0666)) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  bool IsOpen() const { return fd_ >= 0; }
  int Get() const { return fd_; }

  // False with errno set when not every byte could be written.
  bool Write(const QByteArray& bytes) const {
    qsizetype done = 0;
    while (done < bytes.size()) {
      const ssize_t count = ::write(fd_, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return false;
      done += count;
    }
    return true;
  }
  bool Sync() const { return ::fsync(fd_) == 0; }

 private:
  int fd_;
};

bool SyncFolderOf(const QString& hostPath) {
  const Descriptor folder(QFileInfo(hostPath).path(), O_RDONLY | O_DIRECTORY);
  return folder.IsOpen() && folder.Sync();
}

bool Rename(const QString& from, const QString& to) {
  return ::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

void Unlink(const QString& hostPath) {
  ::unlink(QFile::encodeName(hostPath).constData());
}

}  // namespace

QByteArray ReadFile(const QString& pathText, qint64 limit) {
  const QString path = HostPath(pathText);
  if (QFileInfo(path).isDir()) Fail(u"lezen"_s, pathText, EISDIR);
  const Descriptor file(path, O_RDONLY);
  if (!file.IsOpen()) Fail(u"lezen"_s, pathText, errno);
  QByteArray content;
  char buffer[64 << 10];
  for (;;) {
    const ssize_t count = ::read(file.Get(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail(u"lezen"_s, pathText, errno);
    if (count == 0) return content;
    content.append(buffer, count);
    if (content.size() > limit) Fail(u"lezen"_s, pathText, EFBIG);
  }
}

void WriteFile(const QString& pathText, const QByteArray& content) {
  const QString path = HostPath(pathText);
  if (QFileInfo(path).isDir()) Fail(u"schrijven"_s, pathText, EISDIR);
  const QString temporary = path + u'.' + QUuid::createUuid().toString(QUuid::Id128).left(8) + u".tmp"_s;
  {
    const Descriptor file(temporary, O_WRONLY | O_CREAT | O_EXCL);
    if (!file.IsOpen()) Fail(u"schrijven"_s, pathText, errno);
    struct stat old {};
    if (::stat(QFile::encodeName(path).constData(), &old) == 0) ::fchmod(file.Get(), old.st_mode & 07777);
    if (!file.Write(content) || !file.Sync()) {
      const int reason = errno;
      Unlink(temporary);
      Fail(u"schrijven"_s, pathText, reason);
    }
  }
  if (!Rename(temporary, path)) {
    const int reason = errno;
    Unlink(temporary);
    Fail(u"schrijven"_s, pathText, reason);
  }
  if (!SyncFolderOf(path)) Fail(u"schrijven"_s, pathText, errno);
}

void AppendLine(const QString& pathText, const QString& line) {
  const QString path = HostPath(pathText);
  const Descriptor file(path, O_WRONLY | O_APPEND | O_CREAT);
  if (!file.IsOpen()) Fail(u"aanvullen"_s, pathText, errno);
  const off_t before = ::lseek(file.Get(), 0, SEEK_END);
  if (!file.Write(ToCodePage(line) + "\r\n") || !file.Sync()) {
    const int reason = errno;
    if (::ftruncate(file.Get(), before) != 0) Fail(u"herstellen"_s, pathText, errno);
    Fail(u"aanvullen"_s, pathText, reason);
  }
}

void DeleteFile(const QString& pathText) {
  if (pathText.isEmpty()) throw Error(u"Er is geen bestand om te verwijderen: het pad is leeg."_s);
  RequireThere(pathText);
  const QByteArray path = QFile::encodeName(HostPathExactly(pathText));
  struct stat status {};
  if (::lstat(path.constData(), &status) != 0) Fail(u"verwijderen"_s, pathText, errno);
  if (S_ISDIR(status.st_mode)) Fail(u"verwijderen"_s, pathText, EISDIR);
  if (!S_ISREG(status.st_mode)) throw Error(u"Kan '%1' niet verwijderen: het is geen gewoon bestand."_s.arg(pathText));
  if (::unlink(path.constData()) != 0) Fail(u"verwijderen"_s, pathText, errno);
}

bool IsFolder(const QString& pathText) {
  return Probe(pathText) == Presence::There && QFileInfo(HostPath(pathText)).isDir();
}

}  // namespace runtime
