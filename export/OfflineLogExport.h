#pragma once
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>

// The content of one export file for the companion tool: the statements of the offline log, one a line in the order in
// which they are added, each trimmed of blanks and ended by ";", carriage return and line feed. Windows-1252, no
// header.
class OfflineLogExport {
 public:
  // The file's name for that moment: its date and time to the second, and the extension tql.
  static QString FileName(const QDateTime& moment);

  // Adds the SqlSyntax of one log row; an empty one adds nothing.
  void Add(const QVariant& sqlSyntax);

  const QByteArray& Bytes() const { return bytes_; }
  // The statements in which a character that the code page does not have became "?".
  const QStringList& Altered() const { return altered_; }

 private:
  QByteArray bytes_;
  QStringList altered_;
};

// What the user is told about them; names the first few.
QString AlteredWarning(const QStringList& altered, const QString& path);
