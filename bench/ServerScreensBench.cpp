// SPDX-License-Identifier: MIT
// The screens of one workstation with the shared database on a PostgreSQL server, compared with a database file on a
// local disk: through the server's socket, and through a proxy that delays the data so that a round trip takes 1 or
// 20 ms. Elapsed times, medians. usage: ServerScreensBench [SPOTS [FOLDER]]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItemSpots.h"
#include "data/Globals.h"
#include "items/frmItemsDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/audio/Synth.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/CopyDatabase.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Cluster.h"
#include "tests/support/Proxy.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;
using testing_support::Cluster;
using testing_support::Proxy;

namespace {

constexpr int kSpot = 777;
constexpr int kLinks = 100;
constexpr int kRounds = 5;

// Times in milliseconds, by screen.
struct Screens {
  double list = 0;
  double openSpot = 0;
  double saveSpot = 0;
  double openItem = 0;
  double saveItem = 0;
};

void Execute(const QString& statement) {
  dao::OpenDatabase(global.serverDatabasePath).Execute(statement);
}

void AddItemAndSound(const bench::SpotStation& station) {
  const QString sound = station.File(u"spot.mp3"_s);
  audio::WriteToneFile(sound.toStdString(), {});
  Execute(u"UPDATE tblItemSpots SET Path = \"%1\" WHERE ID = %2"_s.arg(runtime::PathText(sound)).arg(kSpot));
  Execute(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (1, \"Blok\", 1, 1, 0)"_s);
  for (int place = 1; place <= kLinks; ++place) {
    Execute(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, %2)"_s.arg(place).arg(
        place * 7));
  }
}

double ListMs(int spots) {
  frmItemSpots form(nullptr);
  const double ms = bench::MillisecondsOf([&] {
    form.show();
    form.Form_Load();
    form.grab();
  });
  Require(form.findChild<controls::ListBox*>(u"lstOverzicht"_s)->ListCount() == spots, "every spot is listed");
  return ms;
}

// Opening and saving with a changed name.
std::pair<double, double> SpotMs() {
  static int name = 0;
  global.gstrSelectedID = QString::number(kSpot);
  frmItemSpotsDetail editor(nullptr);
  const double opening = bench::MillisecondsOf([&] {
    editor.show();
    editor.Form_Load();
    editor.grab();
  });
  editor.findChild<QLineEdit*>(u"txtNaam"_s)->setText(u"Gewijzigd %1"_s.arg(++name));
  const double saving = bench::MillisecondsOf([&] { editor.findChild<QPushButton*>(u"cmdOk"_s)->click(); });
  Require(dao::OpenDatabase(global.serverDatabasePath)
                  .OpenRecordset(
                      u"SELECT ID FROM tblItemSpots WHERE ID = %1 AND Naam = \"Gewijzigd %2\""_s.arg(kSpot).arg(name))
                  .RecordCount() == 1,
          "the spot is saved");
  return {opening, saving};
}

std::pair<double, double> ItemMs() {
  global.gstrSelectedID = u"1"_s;
  frmItemsDetail editor(nullptr);
  const double opening = bench::MillisecondsOf([&] {
    editor.show();
    editor.Form_Load();
    editor.grab();
  });
  auto* list = editor.findChild<controls::ListBox*>(u"lstOpt1ItemSpots"_s);
  Require(list->ListCount() == kLinks, "every spot of the item is listed");
  list->MoveLine(0, kLinks - 1);
  const double saving = bench::MillisecondsOf([&] { editor.findChild<QPushButton*>(u"cmdOk"_s)->click(); });
  Require(dao::OpenDatabase(global.serverDatabasePath)
                  .OpenRecordset(u"SELECT ItemID FROM tblItemsItemSpots"_s)
                  .RecordCount() == kLinks,
          "no link is lost");
  return {opening, saving};
}

Screens Measure(int spots) {
  std::array<std::vector<double>, 5> times;
  for (int round = 0; round <= kRounds; ++round) {
    const double list = ListMs(spots);
    const auto [openSpot, saveSpot] = SpotMs();
    const auto [openItem, saveItem] = ItemMs();
    if (round == 0) continue;  // connects, and reads the definitions of the tables
    const std::array<double, 5> all = {list, openSpot, saveSpot, openItem, saveItem};
    for (std::size_t i = 0; i < all.size(); ++i)
      times[i].push_back(all[i]);
  }
  return {bench::Median(times[0]), bench::Median(times[1]), bench::Median(times[2]), bench::Median(times[3]),
          bench::Median(times[4])};
}

void Print(const char* where, const std::string& id, const Screens& here, const Screens& file) {
  std::printf("%s\n", where);
  const auto row = [&](const char* what, const char* screen, double ms, double fileMs) {
    std::printf("  %-28s %9.2f ms   %6.2f x the file\n", what, ms, ms / fileMs);
    if (&here != &file) bench::ReportTimes("server-" + id + '-' + screen, ms, "file", fileMs);
  };
  row("the list", "list", here.list, file.list);
  row("opening a spot", "open-spot", here.openSpot, file.openSpot);
  row("saving a spot", "save-spot", here.saveSpot, file.saveSpot);
  row("opening an item of 100", "open-item", here.openItem, file.openItem);
  row("saving an item of 100", "save-item", here.saveItem, file.saveItem);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (!Cluster::IsInstalled()) {
    std::puts("PostgreSQL is not installed");
    return 0;
  }
  const QTemporaryDir cache;
  qputenv("XDG_CACHE_HOME", QFile::encodeName(cache.path()));
  const QApplication application(argc, argv);
  const int spots = argc > 1 ? std::max(1000, std::atoi(argv[1])) : 100'000;
  const bench::SpotStation station(spots, QString::fromLocal8Bit(argc > 2 ? argv[2] : "."));
  AddItemAndSound(station);
  Cluster::Settings settings;
  settings.durable = true;
  const Cluster cluster(settings);
  const QString schema = u"\\OvalistoServer.mdb"_s;
  dao::CopyDatabase(global.serverDatabasePath, cluster.Url() + schema, dao::CopyMode::Fill);
  cluster.Sql(u"ANALYZE"_s);

  const Screens file = Measure(spots);
  Print("a file on a local disk", "file", file, file);
  global.serverDatabasePath = cluster.Url() + schema;
  Print("a server, through its socket", "socket", Measure(spots), file);
  for (const int roundTrip : {1, 20}) {
    const Proxy proxy(cluster.SocketFolder(), std::chrono::microseconds(roundTrip * 500));
    global.serverDatabasePath = u"postgresql://planner@/postgres?host="_s + proxy.SocketFolder() + schema;
    const std::string name = std::to_string(roundTrip) + "ms";
    Print(("a server, a round trip of " + name).c_str(), name, Measure(spots), file);
    dao::CloseKeptConnections();
  }
  return 0;
}
