// SPDX-License-Identifier: MIT
#include "export/ExportRecord.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/SystemReason.h"
#include "platform/runtime/TextFile.h"

#include <QStringList>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLargestRecord = 64 << 10;
constexpr qsizetype kLinesWithoutBasis = 4;
constexpr qsizetype kLines = 6;

ExportRecord Parsed(const QByteArray& content, const QString& path) {
  const QStringList lines = QString::fromUtf8(content).split(u'\n', Qt::SkipEmptyParts);
  bool isNumber = false;
  const bool hasBasis = lines.size() == kLines;
  const qint32 highestID = hasBasis || lines.size() == kLinesWithoutBasis ? lines[2].toInt(&isNumber) : 0;
  if (!isNumber) {
    throw runtime::Error(u"Het bestand '%1' van een onderbroken export kan niet gelezen worden."_s.arg(path));
  }
  ExportRecord record{lines[0], lines[1], highestID, lines[3].toLatin1(), {}, {}};
  if (hasBasis) {
    record.basisTemporary = lines[4];
    record.basisDigest = lines[5].toLatin1();
  }
  return record;
}

}  // namespace

QString ExportRecordPath(const QString& localDatabasePath) {
  return localDatabasePath + u"-export"_s;
}

std::optional<ExportRecord> ReadExportRecord(const QString& localDatabasePath) {
  const QString path = ExportRecordPath(localDatabasePath);
  if (!runtime::IsThere(path)) return std::nullopt;
  return Parsed(runtime::ReadFile(path, kLargestRecord), path);
}

void WriteExportRecord(const QString& localDatabasePath, const ExportRecord& record) {
  const QString content = record.path + u'\n' + record.temporary + u'\n' + QString::number(record.highestID) + u'\n' +
                          QString::fromLatin1(record.digest) + u'\n' + record.basisTemporary + u'\n' +
                          QString::fromLatin1(record.basisDigest) + u'\n';
  runtime::WriteFile(ExportRecordPath(localDatabasePath), content.toUtf8());
}

void RemoveExportRecord(const QString& localDatabasePath) {
  const QString path = ExportRecordPath(localDatabasePath);
  const QString hostPath = runtime::HostPath(path);
  int failure = runtime::RemoveFile(hostPath);
  if (failure == ENOENT) return;
  if (failure == 0) failure = runtime::SyncFolderOf(hostPath);
  if (failure != 0) throw runtime::Error(u"Kan '%1' niet verwijderen: %2."_s.arg(path, runtime::SystemReason(failure)));
}
