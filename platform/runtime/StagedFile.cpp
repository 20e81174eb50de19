// SPDX-License-Identifier: MIT
#include "platform/runtime/StagedFile.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/Error.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/SystemReason.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

// The path text up to and including its last separator.
QString FolderText(const QString& pathText) {
  return pathText.left(qMax(pathText.lastIndexOf(u'\\'), pathText.lastIndexOf(u'/')) + 1);
}

}  // namespace

StagedFile::StagedFile(const QString& pathText) : pathText_(pathText) {
  const std::filesystem::path path = NativePath(HostPath(pathText));
  WithFileName([&] { file_ = std::make_unique<files::AtomicFile>(path); });
  temporaryText_ = FolderText(pathText) + QFile::decodeName(file_->TemporaryPath().filename().c_str());
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
