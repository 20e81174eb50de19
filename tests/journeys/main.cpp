// SPDX-License-Identifier: MIT
#include "data/SettingsFile.h"
#include "platform/dao/CopyDatabase.h"
#include "platform/desktop/FileChooser.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/journeys/Desk.h"
#include "tests/journeys/Journey.h"
#include "tests/journeys/Stage.h"
#include "tests/journeys/Tour.h"
#include "tools/Commands.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <iostream>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

void MakeFolder(const QString& folder) {
  for (const QFileInfo& old : QDir(folder).entryInfoList({u"*.png"_s, u"*.tql"_s}, QDir::Files)) {
    QFile::remove(old.filePath());
  }
  if (!QDir().mkpath(folder)) throw runtime::Error(u"kan de map %1 niet maken"_s.arg(folder));
  MakeStation(folder + u"/zender"_s);
}

// The tour with the shared database on a server: SPOTROOSTER_TOUR_SERVER is its address, without a schema.
void MoveToServer(const QString& folder) {
  const QString address = qEnvironmentVariable("SPOTROOSTER_TOUR_SERVER");
  if (address.isEmpty()) return;
  const QString station = folder + u"/zender"_s;
  const QString file = station + u"/server/OvalistoServer.mdb";
  dao::CopyDatabase(runtime::PathText(file), address + u"\\OvalistoServer.mdb", dao::CopyMode::Fill);
  if (!QFile::remove(file)) throw runtime::Error(u"kan %1 niet verwijderen"_s.arg(file));
  IniFile settings;
  settings.SetPath(runtime::PathText(station + u"/ovalis.ini"));
  settings.SetSection(settings::kFiles.toString());
  settings.SetKey(settings::kDatabasePath.toString());
  settings.SetValue(address);
}

int Show(const QString& folder) {
  desktop::FileChooserScript files;
  const Desk desk(folder, files);
  Tour tour(desk, folder);
  const runtime::ClockScope clock([&tour] { return tour.Now(); });
  RunJourney(folder + u"/zender"_s, [&tour] { tour.Walk(); });
  std::cout << "De rondleiding is gelukt; de beelden staan in " << folder.toStdString() << std::endl;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::optional<StageOptions> options = ParseStageOptions(argc, argv);
  if (!options) {
    std::cerr << "spotrooster-tour " << kStageUsage
              << "    loopt door de vensters en laat beelden en het exportbestand achter in MAP\n";
    return kWrongUse;
  }
  const Stage stage(argc, argv, *options);
  try {
    MakeFolder(options->folder);
    MoveToServer(options->folder);
    return Show(options->folder);
  } catch (const runtime::Error& error) {
    std::cerr << "spotrooster-tour: " << error.what() << '\n';
    return kFailed;
  }
}
