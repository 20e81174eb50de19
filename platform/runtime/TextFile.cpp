#include "platform/runtime/TextFile.h"

#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

[[noreturn]] void Fail(const QString& doing, const QString& pathText, int reason) {
  throw Error(u"Kan '%1' niet %2: %3."_s.arg(pathText, doing, SystemReason(reason)));
}

}  // namespace

QByteArray ReadFile(const QString& pathText, qint64 limit) {
  const QString path = HostPath(pathText);
  if (QFileInfo(path).isDir()) Fail(u"lezen"_s, pathText, EISDIR);
  const Descriptor file(path, O_RDONLY);
  if (file.Failure() != 0) Fail(u"lezen"_s, pathText, file.Failure());
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
  StagedFile file(pathText);
  file.Write(content);
  file.Complete();
  file.Place();
}

void AppendLine(const QString& pathText, const QString& line) {
  const QString path = HostPath(pathText);
  const Descriptor file(path, O_WRONLY | O_APPEND | O_CREAT);
  if (file.Failure() != 0) Fail(u"aanvullen"_s, pathText, file.Failure());
  const off_t before = ::lseek(file.Get(), 0, SEEK_END);
  int failure = file.Write(ToCodePage(line) + "\r\n");
  if (failure == 0) failure = file.Sync();
  if (failure == 0 && before == 0) failure = SyncFolderOf(path);
  if (failure == 0) return;
  if (::ftruncate(file.Get(), before) != 0) Fail(u"herstellen"_s, pathText, errno);
  Fail(u"aanvullen"_s, pathText, failure);
}

void DeleteFile(const QString& pathText) {
  if (pathText.isEmpty()) throw Error(u"Er is geen bestand om te verwijderen: het pad is leeg."_s);
  RequireThere(pathText);
  const QString path = HostPathExactly(pathText);
  struct stat status {};
  if (::lstat(QFile::encodeName(path).constData(), &status) != 0) Fail(u"verwijderen"_s, pathText, errno);
  if (S_ISDIR(status.st_mode)) Fail(u"verwijderen"_s, pathText, EISDIR);
  if (!S_ISREG(status.st_mode)) throw Error(u"Kan '%1' niet verwijderen: het is geen gewoon bestand."_s.arg(pathText));
  if (const int failure = RemoveFile(path)) Fail(u"verwijderen"_s, pathText, failure);
}

bool IsFolder(const QString& pathText) {
  return Probe(pathText) == Presence::There && QFileInfo(HostPath(pathText)).isDir();
}

}  // namespace runtime
