// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// A program folder on disk in its making: settings file, folders and databases.
class ProgramFolder {
 public:
  // Makes the folder with data/, server/ and export/ where they are missing, and a settings file that maps drive D: to
  // the folder itself, so that it may be moved. What exists stays as it is.
  explicit ProgramFolder(const QString& hostPath);

  const QString& Path() const { return path_; }

  // Makes local, server and work database of a station (0 = none) where they are missing, and adds the station to the
  // list from which one is chosen at start. An error when the station's databases exist already.
  void MakeStation(qint16 number, const QString& name) const;

  // Host paths of the databases.
  QString LocalDatabase(qint16 number) const;
  QString ServerDatabase(qint16 number) const;

 private:
  QString path_;
};
