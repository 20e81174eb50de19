// SPDX-License-Identifier: MIT
// Two workstations offline from one server, and their work brought home, step by step as the manual's chapter "Offline
// van begin tot einde" says, through the real windows.
#include "data/Globals.h"
#include "platform/desktop/FileChooser.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "tests/journeys/CatalogueModel.h"
#include "tests/journeys/Desk.h"
#include "tests/journeys/Journey.h"
#include "tests/journeys/Planner.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTabWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace window;

namespace {

const QString kLog = u"frmOfflineLog"_s;
const QString kApply = u"frmExportsVerwerken"_s;
const QString kShared = u"Bakkerij Van Damme - paasbrood"_s;
const QString kExportName = u"20250311143200.tql"_s;  // of both, in the same second
const QDate kDay(2025, 3, 11);

// A program folder and the planner who sits there.
class Workplace {
 public:
  explicit Workplace(const QString& folder) : folder_(folder), desk_(folder, files_), planner_(desk_) {}
  ~Workplace() { Forget(); }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;

  // A session from the choice of the station to leaving.
  void Sit(const std::function<void()>& work) {
    RunJourney(folder_, [&] {
      planner_.ChooseStation(u"Radio Demo"_s);
      work();
      planner_.Leave();
    });
    Forget();
  }

  void WorkOffline(const QString& naam, QDate lastDay) {
    for (const auto& [action, list] : {std::pair(u"actItemSpots"_s, kSpots), std::pair(u"actItems"_s, kItems),
                                       std::pair(u"actItemPingles"_s, kJingles)}) {
      planner_.Open(action, list);
      planner_.Close(list);
    }
    planner_.GoOffline();
    planner_.Open(u"actItemSpots"_s, kSpots);
    planner_.MakeSpot({folder_ + u"/audio/Spots/Apotheek Centrum - griepprik.mp3"_s, naam, kDay, kDay.addDays(40)});
    planner_.ChangeSpotEnd(kShared, lastDay);
    desk_.WaitForText(kSpots, u"lblWachten"_s,
                      u"2 wijzigingen wachten op export; na het sluiten toont deze lijst weer de gedeelde database"_s);
    desk_.Click(kSpots, u"cmdTonen"_s);
    desk_.WaitForLine(kLog, u"lstWijzigingen"_s, u"item-spot \""_s + naam + u'"');
    desk_.WaitForText(kLog, u"lblAantal"_s, u"2 wijzigingen in de volgende export"_s);
    planner_.Close(kLog);
    planner_.Close(kSpots);
    planner_.Open(u"actExporteren"_s, kExport);
    planner_.StartExport();
    desk_.Answer(u"Heeft U de vorige export-files reeds verwerkt"_s, u"Ja"_s);
    planner_.EndExport();
    desk_.WaitForText(kMain, u"lblResultaat"_s, kExportName + u": 2 wijzigingen"_s);
    desk_.WaitForText(kMain, u"lblResultaatMap"_s, folder_ + u"/export"_s);
  }

  // The settings open the export, which has nothing to write.
  void ReturnOnline() {
    planner_.GoOnline();
    desk_.Click(kExport, u"cmdAnnuleren"_s);
    desk_.WaitUntilGone(kExport);
    desk_.WaitUntilGone(kSettings);
    desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
  }

  void OpenApply() { planner_.Open(u"actExportsVerwerken"_s, kApply); }
  void ProcessFolder(const QString& waiting = {}) {
    desk_.WaitForLine(kApply, u"lstBestanden"_s, kExportName);
    desk_.WaitForText(kApply, u"lblAantal"_s, u"1 bestand te verwerken"_s);
    desk_.Click(kApply, u"cmdVerwerken"_s);
    desk_.WaitForText(kApply, u"lblAantal"_s, u"Alle bestanden zijn verwerkt"_s + waiting);
  }
  void TakeFolder(const QString& folder) {
    desk_.ChooseFile(folder);
    desk_.Click(kApply, u"cmdMap"_s);
  }
  void SettleForOffline() {
    Desk::InWindows([] {
      auto* tabs = QApplication::activeModalWidget()->findChild<QTabWidget*>(u"tabVerwerken"_s);
      if (tabs == nullptr || tabs->tabText(1) != u"&Botsingen (1)"_s) throw StepFailed(u"er wacht niet één botsing"_s);
      tabs->setCurrentIndex(1);
    });
    desk_.Choose(kApply, u"lstBotsingen"_s, desk_.Lines(kApply, u"lstBotsingen"_s).value(0));
    desk_.Click(kApply, u"cmdOffline"_s);
    desk_.WaitUntil(u"de botsing bleef staan"_s, [&] { return desk_.LinesNow(kApply, u"lstBotsingen"_s).isEmpty(); });
    planner_.Close(kApply);
  }
  void ExpectSpots(const QStringList& names) {
    planner_.Open(u"actItemSpots"_s, kSpots);
    for (const QString& naam : names)
      desk_.WaitForLine(kSpots, u"lstOverzicht"_s, naam);
    planner_.Close(kSpots);
  }

 private:
  static void Forget() {
    global = Globals();
    runtime::SetDrives({});
  }

  QString folder_;
  runtime::ClockScope clock_{QDateTime(kDay, QTime(14, 32))};
  desktop::FileChooserScript files_;
  Desk desk_;
  Planner planner_;
};

// A second program folder on the server of the first, as its administrator makes it.
void MakeSecond(const QString& first, const QString& second) {
  MakeStation(second);
  QDir(second + u"/server"_s).removeRecursively();
  QFile settings(second + u"/ovalis.ini"_s);
  if (!settings.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the settings");
  QByteArray content = settings.readAll();
  settings.close();
  content.replace("DatabasePath=D:\\server", "DatabasePath=S:\\");
  content.replace("[Drives]", QByteArray("[Drives]\nS=" + QFile::encodeName(first + u"/server"_s)));
  if (!settings.open(QIODevice::WriteOnly) || settings.write(content) != content.size())
    throw std::runtime_error("cannot write the settings");
}

}  // namespace

TEST(TwoWorkstations, TheManualLeadsFromOfflineToOneDatabase) {
  const QTemporaryDir folder;
  const QString first = folder.filePath(u"A/zender"_s);
  const QString second = folder.filePath(u"B/zender"_s);
  MakeStation(first);
  MakeSecond(first, second);
  {
    Workplace a(first);
    a.Sit([&] { a.WorkOffline(u"Apotheek 't Hof"_s, kDay.addDays(10)); });
  }
  {
    Workplace b(second);
    b.Sit([&] { b.WorkOffline(u"Garage De Smet"_s, kDay.addDays(20)); });
  }
  Workplace a(first);
  a.Sit([&] {
    a.ReturnOnline();
    a.OpenApply();
    a.ProcessFolder();
    a.TakeFolder(second + u"/export"_s);
    a.ProcessFolder(u"; 1 botsing wacht op uw keuze"_s);
    a.SettleForOffline();
    a.ExpectSpots({u"Apotheek 't Hof"_s, u"Garage De Smet"_s});
  });
  CatalogueModel server = CatalogueModel::Of(first + u"/server/OvalistoServer.mdb"_s);
  const auto spot = [&](const QString& naam) { return server.Find(u"tblItemSpots"_s, u"Naam"_s, naam); };
  EXPECT_EQ(spot(u"Garage De Smet"_s)[u"ID"_s].toInt(), spot(u"Apotheek 't Hof"_s)[u"ID"_s].toInt() + 1);
  EXPECT_EQ(spot(kShared)[u"EindDatum"_s], kDay.addDays(20).toString(Qt::ISODate));
}
