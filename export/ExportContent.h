#pragma once
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <limits>
#include <optional>

// The content of one export file for the companion tool: the statements of the offline log, one a line in the order in
// which they are added, each trimmed of blanks and ended by ";", carriage return and line feed. Windows-1252, no
// header.
class ExportContent {
 public:
  // The file's name for that moment: its date and time to the second, and the extension tql.
  static QString FileName(const QDateTime& moment);
  // The log of a local database as it is now, in recording order; only its rows up to `last` when told. Throws
  // runtime::Error.
  static ExportContent OfLog(const QString& localDatabasePath, std::optional<qint32> last = std::nullopt);

  // Adds the SqlSyntax of one log row; an empty one adds nothing.
  void Add(const QVariant& sqlSyntax);

  const QByteArray& Bytes() const { return bytes_; }
  // BLAKE2b-256 of the bytes, in hexadecimal.
  QByteArray Digest() const { return DigestOf(bytes_); }
  static QByteArray DigestOf(const QByteArray& bytes);
  // The statements in which a character that the code page does not have became "?".
  const QStringList& Altered() const { return altered_; }
  // Of the log rows read; the empty ones count.
  int RowCount() const { return rowCount_; }
  qint32 HighestID() const { return highestID_; }

 private:
  QByteArray bytes_;
  QStringList altered_;
  int rowCount_ = 0;
  qint32 highestID_ = std::numeric_limits<qint32>::min();
};

// What the user is told about altered statements; names the first few.
QString AlteredWarning(const QStringList& altered, const QString& path);
