// SPDX-License-Identifier: MIT
#include "data/DatabasePaths.h"

#include "data/Globals.h"

void FormDatabasePaths() {
  const QString number = global.stationNumber == 0 ? QString() : QString::number(global.stationNumber);
  global.localDatabasePath = global.programFolder + u"\\data\\OvalistoLocal" + number + u".mdb";
  global.serverDatabasePath = global.databasePath + u"\\OvalistoServer" + number + u".mdb";
  global.workDatabasePath = global.programFolder + u"\\data\\work.mdb";
}
