// SPDX-License-Identifier: MIT
#include "platform/runtime/TextFile.h"

#include "platform/files/Error.h"
#include "platform/files/FileSystem.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/StagedFile.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <cerrno>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

[[noreturn]] void Fail(const QString& doing, const QString& pathText, const QString& reason) {
  throw Error(u"Kan '%1' niet %2: %3."_s.arg(pathText, doing, reason));
}

[[noreturn]] void Fail(const QString& doing, const QString& pathText, int reason) {
  Fail(doing, pathText, SystemReason(reason));
}

void WithFileName(const QString& doing, const QString& pathText, const std::function<void()>& step) {
  try {
    step();
  } catch (const files::Error& error) {
    Fail(doing, pathText, error.ErrorNumber());
  }
}

// In the largest unit that gives a whole number.
QString SizeText(qint64 bytes) {
  constexpr qint64 kKilo = 1024;
  if (bytes >= kKilo * kKilo && bytes % (kKilo * kKilo) == 0) return u"%1 MB"_s.arg(bytes / (kKilo * kKilo));
  if (bytes >= kKilo && bytes % kKilo == 0) return u"%1 kB"_s.arg(bytes / kKilo);
  return u"%1 bytes"_s.arg(bytes);
}

}  // namespace

QByteArray ReadFile(const QString& pathText, qint64 limit) {
  const std::filesystem::path path = NativePath(HostPath(pathText));
  QByteArray content;
  std::vector<std::uint8_t> block(64 << 10);
  WithFileName(u"lezen"_s, pathText, [&] {
    const auto file = files::CurrentFileSystem().Open(path, files::OpenMode::Read);
    while (const std::size_t count = file->ReadAt(static_cast<std::uint64_t>(content.size()), block)) {
      content.append(reinterpret_cast<const char*>(block.data()), static_cast<qsizetype>(count));
      if (content.size() > limit) Fail(u"lezen"_s, pathText, u"het is groter dan %1"_s.arg(SizeText(limit)));
    }
  });
  return content;
}

void WriteFile(const QString& pathText, const QByteArray& content) {
  StagedFile file(pathText);
  file.Write(content);
  file.Complete();
  file.Place();
}

void AppendLine(const QString& pathText, const QString& line) {
  const std::filesystem::path path = NativePath(HostPath(pathText));
  const QByteArray bytes = ToCodePage(line) + "\r\n";
  WithFileName(u"aanvullen"_s, pathText, [&] {
    files::FileSystem& files = files::CurrentFileSystem();
    const auto file = files.Open(path, files::OpenMode::Append);
    const std::uint64_t before = file->Size();
    try {
      file->WriteAt(before, {reinterpret_cast<const std::uint8_t*>(bytes.data()), static_cast<size_t>(bytes.size())});
      file->Sync();
      if (before == 0) files.SyncFolderOf(path);
    } catch (const files::Error&) {
      WithFileName(u"herstellen"_s, pathText, [&] { file->Truncate(before); });
      throw;
    }
  });
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
