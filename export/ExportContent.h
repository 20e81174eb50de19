// SPDX-License-Identifier: MIT
#pragma once

#include "data/WaitingChanges.h"
#include "export/ContentDigest.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <limits>
#include <optional>

// Statements that differ between file and log: a character outside the code page became "?".
struct AlteredStatements {
  int count = 0;
  QStringList first;  // a few of them

  void Add(QStringView statement);
};

// The content of one export file for the companion tool: the statements of the offline log, one per line in the order
// of adding, each trimmed and followed by ";", carriage return and line feed. Windows-1252, no header. Written in
// blocks, so memory is limited to two blocks for a log of any size.
class ExportContent {
 public:
  using Sink = std::function<void(const QByteArray& block)>;

  // The file name for that moment: "yyyyMMddhhmmss.tql".
  static QString FileName(const QDateTime& moment);

  // Passes every block to `sink` when there is one.
  explicit ExportContent(Sink sink = {}) : sink_(std::move(sink)) {}
  ExportContent(const ExportContent&) = delete;
  ExportContent& operator=(const ExportContent&) = delete;

  // Adds the current log of a local database in recording order; with `last` only rows up to that ID. Throws
  // runtime::Error.
  void AddLog(const QString& localDatabasePath, std::optional<qint32> last = std::nullopt);
  // Adds the SqlSyntax of one log row; an empty text adds nothing.
  void Add(QStringView sqlSyntax);
  // Writes the last block and returns the digest of the complete content. Nothing may be added afterwards.
  QByteArray Finish();

  const AlteredStatements& Altered() const { return altered_; }
  qint64 ByteCount() const { return byteCount_; }
  qsizetype StatementCount() const { return statementCount_; }
  // Log rows read, including empty ones.
  int RowCount() const { return rowCount_; }
  int ChangeCount() const { return changes_.Count(); }
  qint32 HighestID() const { return highestID_; }

 private:
  void Flush();

  Sink sink_;
  QByteArray block_;
  ContentDigest digest_;
  AlteredStatements altered_;
  qint64 byteCount_ = 0;
  qsizetype statementCount_ = 0;
  int rowCount_ = 0;
  ChangeCounter changes_;
  qint32 highestID_ = std::numeric_limits<qint32>::min();
};

// The warning about altered statements for the user; quotes the first few.
QString AlteredWarning(const AlteredStatements& altered, const QString& path);
