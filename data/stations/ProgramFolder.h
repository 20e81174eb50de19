// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Creates a program folder on disk: settings file, folders and databases.
class ProgramFolder {
 public:
  // Creates the folder with data/, server/ and export/, and a settings file that maps drive D: to the folder itself, so
  // that the folder can be moved. Existing files and folders are left unchanged. Throws runtime::Error.
  explicit ProgramFolder(const QString& hostPath);

  const QString& Path() const { return path_; }

  // Creates the databases of station `number` (0 to 32767; 0 = file names without a number) and adds it to the list of
  // stations shown at start. An existing server or work database is left unchanged. Throws runtime::Error, also when
  // the local database exists.
  void MakeStation(qint16 number, const QString& name) const;

  // Host paths of the databases.
  QString LocalDatabase(qint16 number) const;
  QString ServerDatabase(qint16 number) const;

 private:
  QString path_;
};
