// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

// Reads and writes single values of an ini file: sections in square brackets, one key=value a line. Sections and keys
// are matched without regard to letter case, blanks around "=" do not count (a tab before a value belongs to it), lines
// that begin with ";" or "#" are comments. The text is Windows-1252, or UTF-8 when the file begins with its mark. The
// file is looked at anew by each call. User-interface thread only; every failure is a runtime::Error that names the
// file.
class IniFile {
 public:
  void SetPath(const QString& pathText) { path_ = pathText; }
  void SetSection(const QString& section) { section_ = section; }
  void SetKey(const QString& key) { key_ = key; }
  const QString& Path() const { return path_; }

  // The value as it stands, without the blanks around it; the empty text when the section or the key is missing.
  // Error when the file cannot be read.
  QString Value() const;

  // All keys of the section, as written, with their values.
  QMap<QString, QString> Values() const;

  // Replaces the value in the file's own bytes, or adds the line: everything else stays as it is. A missing file is
  // made. The file is written whole or not at all. Error also for a value that the file could not give back.
  void SetValue(const QString& value) const;

 private:
  QString path_;
  QString section_;
  QString key_;
};
