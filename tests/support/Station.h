// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Database.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace testing_support {

// A station in a temporary folder: program folder with local and work database, server folder, export folder, audio
// folder; `global` is set for it, and restored at the end. Real files, empty tables, one station row (number 0). In a
// run on a server (Cluster.h) the server database is on it and the server folder is empty.
class Station {
 public:
  enum class Mode { Online, Offline };

  explicit Station(Mode mode = Mode::Online);
  ~Station();
  Station(const Station&) = delete;
  Station& operator=(const Station&) = delete;

  QString Folder() const { return folder_.path(); }  // host path of the program folder
  QString ServerFolder() const { return folder_.path() + QLatin1String("/server"); }
  QString ExportFolder() const { return folder_.path() + QLatin1String("/export"); }
  QString AudioFolder() const { return folder_.path() + QLatin1String("/audio"); }

  void Use(Mode mode);

  // The server database gets another name, the file or the schema, as if it were lost; and its own name again. Both
  // throw std::runtime_error.
  void LoseServer() const;
  void FindServer() const;

  // One statement on the server's or the local database.
  int OnServer(const QString& statement) const;
  int OnLocal(const QString& statement) const;
  // On the database of the present mode.
  int OnCurrent(const QString& statement) const;

  dao::Recordset ServerRows(const QString& select) const;
  dao::Recordset LocalRows(const QString& select) const;
  dao::Recordset CurrentRows(const QString& select) const;

  // The logged statements in order.
  QStringList Log() const;

 private:
  QTemporaryDir folder_;
};

}  // namespace testing_support
