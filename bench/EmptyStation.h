#pragma once
#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/Schema.h"
#include "platform/runtime/HostPath.h"

#include <QDir>

namespace bench {

// The empty databases of a station in that folder; `global` is set for it, online.
inline void MakeEmptyStation(const QString& folder) {
  QDir(folder).mkdir(QStringLiteral("data"));
  runtime::SetDrives({});
  global.programFolder = global.databasePath = runtime::PathText(folder);
  global.online = true;
  FormDatabasePaths();
  schema::CreateLocalDatabase(global.localDatabasePath);
  schema::CreateServerDatabase(global.serverDatabasePath);
  schema::CreateWorkDatabase(global.workDatabasePath);
}

}  // namespace bench
