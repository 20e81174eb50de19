// SPDX-License-Identifier: MIT
#include "platform/runtime/StagedFile.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <sys/stat.h>

#include <string_view>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

// The path text up to and including its last separator.
QString FolderText(const QString& pathText) {
  return pathText.left(qMax(pathText.lastIndexOf(u'\\'), pathText.lastIndexOf(u'/')) + 1);
}

// The file itself, not only its path: the folder of the temporary files may be shared by computers on which the path is
// the same, and a program folder may be copied.
QByteArray IdentityText(const QString& pathText) {
  const QString hostPath = HostPath(pathText);
  const QFileInfo file(hostPath);
  struct stat status {};
  ::stat(QFile::encodeName(hostPath).constData(), &status);
  return QSysInfo::machineUniqueId() + ' ' + QByteArray::number(quint64{status.st_dev}) + ' ' +
         QByteArray::number(quint64{status.st_ino}) + ' ' + QFile::encodeName(file.canonicalFilePath());
}

}  // namespace

StagedFile::StagedFile(const QString& pathText) : pathText_(pathText) {
  Open({});
}

StagedFile::StagedFile(const QString& pathText, const QString& ownerPathText) : pathText_(pathText) {
  Open(IdentityText(ownerPathText));
}

void StagedFile::Open(const QByteArray& owner) {
  const std::filesystem::path path = NativePath(HostPath(pathText_));
  WithFileName([&] {
    file_ = std::make_unique<files::AtomicFile>(
        path, std::string_view(owner.constData(), static_cast<std::size_t>(owner.size())));
  });
  temporaryText_ = FolderText(pathText_) + QFile::decodeName(file_->TemporaryPath().filename().c_str());
}

StagedFile::~StagedFile() = default;

void StagedFile::Write(const QByteArray& piece) {
  WithFileName([&] { file_->Write({piece.constData(), static_cast<std::size_t>(piece.size())}); });
}

void StagedFile::Complete() {
  WithFileName([&] { file_->Sync(); });
}

void StagedFile::SyncName() {
  WithFileName([&] { file_->SyncName(); });
}

void StagedFile::Place() {
  WithFileName([&] { file_->Commit(); });
}

bool StagedFile::PlaceNew(const QString& pathText) {
  const std::filesystem::path path = NativePath(HostPath(pathText));
  bool isPlaced = false;
  WithFileName([&] { isPlaced = file_->CommitNew(path); });
  return isPlaced;
}

void StagedFile::Keep() {
  file_->Keep();
}

void StagedFile::WithFileName(const std::function<void()>& step) const {
  try {
    step();
  } catch (const files::Error& error) {
    if (error.Code() == files::ErrorCode::NotYetDurable) {
      throw Error(u"'%1' is geschreven, maar het is niet zeker dat het een stroomstoring overleeft: %2."_s.arg(
                      pathText_, SystemReason(error.ErrorNumber())),
                  Error::Outcome::Done);
    }
    if (error.Code() == files::ErrorCode::Unsupported) throw Error(QString::fromUtf8(error.what()));
    throw Error(u"Kan '%1' niet schrijven: %2."_s.arg(pathText_, SystemReason(error.ErrorNumber())));
  }
}

}  // namespace runtime
