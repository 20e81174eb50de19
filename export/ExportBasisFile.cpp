// SPDX-License-Identifier: MIT
#include "export/ExportBasisFile.h"

#include "data/LoggedStatements.h"
#include "data/OfflineBasis.h"
#include "export/ContentDigest.h"
#include "export/ExportContent.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"

#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kBasisBlock = qsizetype{1} << 20;  // bytes written at once
constexpr qsizetype kLinesATurn = 1000;

}  // namespace

ExportBasisFile::ExportBasisFile(const QString& localDatabasePath, const ExportContent& content, basis::Header header)
    : localDatabasePath_(localDatabasePath),
      highestID_(content.HighestID()),
      statementCount_(content.StatementCount()),
      header_(std::move(header)) {
  header_.exportID = QUuid::createUuid().toString(QUuid::WithoutBraces);
}

void ExportBasisFile::Stage(const QString& exportPath) {
  if (file_) return;
  file_.emplace(basis::PathOf(exportPath), localDatabasePath_);
  temporaryPath_ = file_->TemporaryPath();
  ContentDigest digest;
  QByteArray block = basis::HeaderLine(header_);
  const auto flush = [&] {
    digest.Add(block);
    file_->Write(block);
    block = QByteArray();
  };
  const auto add = [&](const QByteArray& line) {
    block += line;
    if (block.size() >= kBasisBlock) flush();
  };
  sameNumbers_ = {};
  if (basis::HasOfflineTable(dao::OpenDatabase(localDatabasePath_))) {
    VisitLog(localDatabasePath_, highestID_, [&](const LoggedStatement& logged) {
      if (logged.sqlSyntax.isEmpty()) return;
      add(basis::EntryLine(logged.entry));
      sameNumbers_.Add(logged.entry);
    });
  } else {
    // The log need not be read again: it may have a million statements, of which no rows were kept.
    const QByteArray line = basis::EntryLine(std::nullopt);
    for (qsizetype left = statementCount_; left > 0; left -= kLinesATurn)
      add(line.repeated(std::min(left, kLinesATurn)));
  }
  block += basis::LastLine(statementCount_);
  flush();
  digest_ = digest.Result();
  file_->Complete();
  file_->SyncName();
}

// Also after an error by which the name is taken, but may not survive a power cut.
bool ExportBasisFile::Placed(const QString& exportPath, const std::function<bool()>& place) {
  try {
    if (!place()) return false;
  } catch (const runtime::Error& error) {
    if (error.IsDone()) placed_ = basis::PathOf(exportPath);
    throw;
  }
  placed_ = basis::PathOf(exportPath);
  file_.reset();
  return true;
}

void ExportBasisFile::Replace(const QString& exportPath) {
  Placed(exportPath, [&] {
    file_->Place();
    return true;
  });
}

bool ExportBasisFile::PlaceNew(const QString& exportPath) {
  return Placed(exportPath, [&] { return file_->PlaceNew(basis::PathOf(exportPath)); });
}

void ExportBasisFile::TakeBack() const {
  if (!placed_.isEmpty()) runtime::RemoveFile(runtime::HostPath(placed_));
}

void ExportBasisFile::Keep() {
  if (file_) file_->Keep();
}
