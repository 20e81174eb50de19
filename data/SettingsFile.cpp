// SPDX-License-Identifier: MIT
#include "data/SettingsFile.h"

#include "data/Globals.h"

using namespace Qt::StringLiterals;

IniFile SettingsFile() {
  IniFile file;
  file.SetPath(global.programFolder + u"\\ovalis.ini"_s);
  return file;
}
