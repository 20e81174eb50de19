// SPDX-License-Identifier: MIT
#pragma once

#include "export/ContentDigest.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <limits>
#include <optional>

// The statements that are not in a file as they are in the log: a character that the code page does not have became
// "?".
struct AlteredStatements {
  int count = 0;
  QStringList first;  // a few of them

  void Add(QStringView statement);
};

// The content of one export file for the companion tool: the statements of the offline log, one a line in the order in
// which they are added, each trimmed of blanks and ended by ";", carriage return and line feed. Windows-1252, no
// header. It is handed on while it comes into being: a log of any size takes no more memory than two blocks.
class ExportContent {
 public:
  using Sink = std::function<void(const QByteArray& block)>;

  // The file's name for that moment: its date and time to the second, and the extension tql.
  static QString FileName(const QDateTime& moment);

  // Every block goes to `sink`, where one is told.
  explicit ExportContent(Sink sink = {}) : sink_(std::move(sink)) {}
  ExportContent(const ExportContent&) = delete;
  ExportContent& operator=(const ExportContent&) = delete;

  // Adds the log of a local database as it is now, in recording order; only its rows up to `last` when told. Throws
  // runtime::Error.
  void AddLog(const QString& localDatabasePath, std::optional<qint32> last = std::nullopt);
  // Adds the SqlSyntax of one log row; an empty one adds nothing.
  void Add(QStringView sqlSyntax);
  // Hands on what is left, and gives the digest of all of it. Nothing is added after that.
  QByteArray Finish();

  const AlteredStatements& Altered() const { return altered_; }
  // Of the log rows read; the empty ones count.
  int RowCount() const { return rowCount_; }
  qint32 HighestID() const { return highestID_; }

 private:
  void Flush();

  Sink sink_;
  QByteArray block_;
  ContentDigest digest_;
  AlteredStatements altered_;
  int rowCount_ = 0;
  qint32 highestID_ = std::numeric_limits<qint32>::min();
};

// What the user is told about altered statements; names the first few.
QString AlteredWarning(const AlteredStatements& altered, const QString& path);
