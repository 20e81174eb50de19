#include "platform/runtime/StagedFile.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace runtime {

StagedFile::StagedFile(const QString& pathText) : pathText_(pathText), path_(HostPath(pathText)) {
  if (QFileInfo(path_).isDir()) Fail(EISDIR);
  // A new file in its place would not ask; who took the right to write away meant the name.
  if (::access(QFile::encodeName(path_).constData(), W_OK) != 0 && errno != ENOENT) Fail(errno);
  const QString ending = u'.' + QUuid::createUuid().toString(QUuid::Id128).left(8) + u".tmp"_s;
  temporaryText_ = pathText + ending;
  temporary_ = path_ + ending;
  file_ = std::make_unique<Descriptor>(temporary_, O_WRONLY | O_CREAT | O_EXCL);
  if (file_->Failure() != 0) Fail(file_->Failure());
  removes_ = true;
  struct stat old {};
  if (::stat(QFile::encodeName(path_).constData(), &old) == 0) ::fchmod(file_->Get(), old.st_mode & 07777);
}

void StagedFile::Write(const QByteArray& piece) const {
  if (const int failure = file_->Write(piece)) Fail(failure);
}

void StagedFile::Complete() {
  if (const int failure = file_->Sync()) Fail(failure);
  file_.reset();
}

// What cannot be removed is left behind under its temporary name: the reason why it was not placed is what counts.
StagedFile::~StagedFile() {
  if (removes_) RemoveFile(temporary_);
}

void StagedFile::SyncName() const {
  if (const int failure = SyncFolderOf(temporary_)) Fail(failure);
}

void StagedFile::Place() {
  if (const int failure = RenameFile(temporary_, path_)) Fail(failure);
  removes_ = false;
  if (const int failure = SyncFolderOf(path_)) Fail(failure);
}

bool StagedFile::PlaceNew(const QString& pathText) {
  const QString path = HostPath(pathText);
  const int failure = RenameNewFile(temporary_, path);
  if (failure == EEXIST) return false;
  if (failure != 0) Fail(failure);
  removes_ = false;
  if (const int unsafe = SyncFolderOf(path)) Fail(unsafe);
  return true;
}

void StagedFile::Fail(int reason) const {
  throw Error(u"Kan '%1' niet schrijven: %2."_s.arg(pathText_, SystemReason(reason)));
}

}  // namespace runtime
