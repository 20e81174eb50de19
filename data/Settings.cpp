// SPDX-License-Identifier: MIT
#include "data/Settings.h"

#include "data/Globals.h"
#include "data/SettingsFile.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;

namespace {

// The new mapping may give the program folder another path text, so that is formed again.
void ReadDrives() {
  const QString folder = runtime::HostPath(global.programFolder);
  IniFile file = SettingsFile();
  file.SetSection(settings::kDrives.toString());
  runtime::SetDrives(file.Values(), folder);
  global.programFolder = runtime::PathText(folder);
}

qint16 WholeNumber(IniFile& file, QStringView key) {
  file.SetKey(key.toString());
  const QString text = file.Value();
  try {
    return runtime::ToInteger(text);
  } catch (const runtime::Error& error) {
    throw runtime::Error(u"De instelling '%1' onder [%2] in '%3' is geen geheel getal: %4"_s.arg(
        key, settings::kAudioPlayers, file.Path(), error.Description()));
  }
}

QString Text(IniFile& file, QStringView key) {
  file.SetKey(key.toString());
  return file.Value();
}

// Called before the required settings are read, because an invalid one ends the reading.
void ReadStationsOwnMode() {
  IniFile file = SettingsFile();
  file.SetSection(settings::kSpotrooster.toString());
  file.SetKey(settings::kStationsOwnMode.toString());
  global.stationsOwnMode = file.Value() == u"1"_s;
}

}  // namespace

void GetSettings() {
  runtime::Trapped(__func__, [] {
    ReadDrives();
    ReadStationsOwnMode();
    IniFile file = SettingsFile();
    file.SetSection(settings::kFiles.toString());
    global.databasePath = Text(file, settings::kDatabasePath);
    global.exportPath = Text(file, settings::kExportPath);
    file.SetSection(settings::kAudioPlayers.toString());
    global.card = WholeNumber(file, settings::kCard);
    global.buffers = WholeNumber(file, settings::kBuffers);
    global.bufferSize = WholeNumber(file, settings::kBufferSize);
    global.callback = WholeNumber(file, settings::kCallback);
  });
}
