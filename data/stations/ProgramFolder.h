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

  // Creates the databases of station `number` (0 to 32767; 0 = file names without a number) where they are missing, and
  // adds it to the list of stations shown at start. A station left incomplete by a killed program or a full disk is
  // completed by the next call. Throws runtime::Error, also when the station is complete.
  void MakeStation(qint16 number, const QString& name) const;

  // Host paths of the databases.
  QString LocalDatabase(qint16 number) const;
  QString ServerDatabase(qint16 number) const;

 private:
  bool HasCompleteStation(qint16 number) const;

  QString path_;
};
