// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

// Reads and writes single values of an ini file: sections in square brackets, one key=value per line. Sections and keys
// are case-insensitive, blanks around "=" are ignored (a tab before a value belongs to it), lines that begin with ";"
// or "#" are comments. The encoding is Windows-1252, or UTF-8 if the file begins with a byte order mark. Every call
// reads the file again. User-interface thread only; every failure is a runtime::Error with the path in its text.
class IniFile {
 public:
  void SetPath(const QString& pathText) { path_ = pathText; }
  void SetSection(const QString& section) { section_ = section; }
  void SetKey(const QString& key) { key_ = key; }
  const QString& Path() const { return path_; }

  // The value without surrounding blanks; empty when the section or the key is missing. Throws when the file cannot be
  // read.
  QString Value() const;

  // All keys of the section, as written, with their values.
  QMap<QString, QString> Values() const;

  // Replaces the value, or adds the line; all other bytes are unchanged. A missing file is created. The write is
  // atomic. Throws also for a value that could not be read back unchanged.
  void SetValue(const QString& value) const;

 private:
  QString path_;
  QString section_;
  QString key_;
};
