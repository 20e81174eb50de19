// SPDX-License-Identifier: MIT
// The steps of a planner's day on a station with many item-spots, in the real windows and on disks of different speed:
// every sync takes as long as is given. Prints for each step the 95th percentile of the time without the syncs, beside
// its budget; the syncs for each statement that it writes (at most 4); and the longest event that the window handles
// afterwards, until its background work has ended (at most 16 ms). Then the same at 200 %, with windows of a 4K screen.
// usage: DayBench [SPOTS [FOLDER]]     default 50 000, here
#include "app/Start.h"
#include "app/frmMain.h"
#include "bench/DaySteps.h"
#include "bench/DayViews.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Schema.h"
#include "data/Writes.h"
#include "export/OfflineLogExport.h"
#include "items/frmItemsDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/audio/Synth.h"
#include "platform/controls/ComboBox.h"
#include "platform/dao/Database.h"
#include "platform/dao/FileSystemScope.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"

#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using bench::DaySteps;
using bench::Require;

namespace {

constexpr int kSpotsInItem = 20;
constexpr int kSpot = 777;  // with a sound
constexpr char kScale[] = "QT_SCALE_FACTOR";
constexpr QSize k4kAt200Percent(1920, 1080);

bool IsLarge() {
  return qEnvironmentVariable(kScale) == u"2"_s;
}

template <class Form>
std::shared_ptr<Form> Opened() {
  auto form = std::make_shared<Form>(nullptr);
  if (IsLarge()) form->resize(k4kAt200Percent);
  form->show();
  form->Form_Load();
  bench::Paint(*form);
  return form;
}

template <class Form>
std::shared_ptr<Form> OpenedRecord(int id) {
  global.gstrSelectedID = QString::number(id);
  return Opened<Form>();
}

void Click(const QWidget& form, const QString& button) {
  form.findChild<QPushButton*>(button)->click();
}

class Day {
 public:
  Day(DaySteps& steps, double syncMs) : steps_(steps), disk_(bench::Span(syncMs)), scope_(disk_) {
    std::printf("a sync takes %.1f ms%s\n", syncMs, IsLarge() ? ", 200 %, windows of a 4K screen" : "");
  }

  void Run() {
    Start();
    steps_.Run(disk_, {"day-list", "opening the list of item-spots"}, [](int) { return Opened<frmItemSpots>(); });
    Search();
    Spot({"day-edit", "opening an item-spot"}, {"day-save", "saving an item-spot", 1});
    Item({"day-item", "opening an item of 20 spots"},
         {"day-item-save", "saving an item of 20 spots", 2 + kSpotsInItem, 100, 10});
    // A backup, and a table emptied and filled; of items two tables.
    Close<frmItems>({"day-items-close", "closing the list of items", 5, 100, 5});
    Close<frmItemSpots>({"day-close", "closing the list of item-spots", 3, 200, 5});
    if (!IsLarge()) bench::RunDayViews(steps_, disk_);
    steps_.Run(disk_, {"day-offline", "going offline", 1}, [](int) { return UseOnline(false); });
    SaveFirstOffline();
    // Each statement is kept with its basis, carried out and logged.
    Spot({"day-offline-edit", "offline: opening an item-spot"}, {"day-offline-save", "offline: saving it", 3});
    Item({"day-offline-item", "offline: opening an item of 20"},
         {"day-offline-item-save", "offline: saving it", 3 * (2 + kSpotsInItem), 200, 10});
    Export();
    UseOnline(true);
  }

 private:
  // With the only station chosen as soon as the choice is shown.
  void Start() {
    steps_.Run(disk_, {"day-start", "start"}, [](int) -> DaySteps::Window {
      QTimer choose;
      QObject::connect(&choose, &QTimer::timeout, [&] {
        const QWidget* choice = QApplication::activeModalWidget();
        if (choice == nullptr) return;
        choose.stop();
        choice->findChild<controls::ComboBox*>(u"cboRadio"_s)->SetListIndex(0);
        Click(*choice, u"cmdOk"_s);
      });
      choose.start(0);
      std::shared_ptr<frmMain> main = ::Start();
      if (IsLarge()) main->resize(k4kAt200Percent);
      bench::Paint(*main);
      Require(main->windowTitle().contains(u"Radio Bench"_s), "the station is open");
      return main;
    });
  }

  void Search() {
    auto list = Opened<frmItemSpots>();
    auto& field = *list->findChild<QLineEdit*>(u"txtZoek"_s);
    const QString word = u"tuincentrum van damme 77"_s;
    steps_.Run(disk_, {"day-search", "a letter of a search"}, [&](int i) {
      field.setText(word.left(1 + i % word.size()));
      bench::Paint(*list);
      return list;
    });
  }

  // Opening its editor, and saving a changed name.
  void Spot(const DaySteps::Step& opening, const DaySteps::Step& saving) {
    steps_.Run(disk_, opening, [](int) { return OpenedRecord<frmItemSpotsDetail>(kSpot); });
    std::shared_ptr<frmItemSpotsDetail> editor;
    QString name;
    steps_.Run(
        disk_, saving,
        [&](int) {
          Click(*editor, u"cmdOk"_s);
          return editor;
        },
        [&](int) {
          name = u"Gewijzigd %1"_s.arg(++changes_);
          editor = OpenedRecord<frmItemSpotsDetail>(kSpot);
          editor->findChild<QLineEdit*>(u"txtNaam"_s)->setText(name);
        });
    const Catalogue catalogue = CurrentCatalogue();
    Require(GetItemSpotID_Naam(kSpot, catalogue.databasePath, catalogue.itemSpots) == name, "the spot is saved");
  }

  // Saving writes the item, empties its list and adds each line.
  void Item(const DaySteps::Step& opening, const DaySteps::Step& saving) {
    steps_.Run(disk_, opening, [](int) { return OpenedRecord<frmItemsDetail>(1); });
    std::shared_ptr<frmItemsDetail> editor;
    steps_.Run(
        disk_, saving,
        [&](int) {
          Click(*editor, u"cmdOk"_s);
          return editor;
        },
        [&](int) { editor = OpenedRecord<frmItemsDetail>(1); });
    const Catalogue catalogue = CurrentCatalogue();
    Require(dao::OpenDatabase(catalogue.databasePath)
                    .OpenRecordset(u"SELECT ItemID FROM "_s + catalogue.itemsItemSpots)
                    .RecordCount() == kSpotsInItem,
            "the item is saved");
  }

  // The first statement offline also makes the table of the basis.
  static void SaveFirstOffline() {
    const Catalogue catalogue = CurrentCatalogue();
    Require(Update_tblItemSpots_Aktief(1, 1, catalogue.databasePath, catalogue.itemSpots), "a save");
  }

  template <class List>
  void Close(const DaySteps::Step& step) {
    std::shared_ptr<List> list;
    steps_.Run(
        disk_, step,
        [&](int) {
          Click(*list, u"cmdSluiten"_s);
          return list;
        },
        [&](int) { list = Opened<List>(); });
  }

  static DaySteps::Window UseOnline(bool online) {
    Update_cdeInstellingen_OnlineYn(online ? -1 : 0);
    SetOnlineYn();
    Require(global.online == online, "the mode");
    return {};
  }

  // The file with its basis, the record of the export, and the log emptied.
  void Export() {
    int count = 0;
    steps_.Run(
        disk_, {"day-export", "exporting", 4, 100, 5},
        [&](int) -> DaySteps::Window {
          OfflineLogExport exported(global.localDatabasePath);
          exported.WriteFile(global.exportPath);
          exported.EmptyLog();
          count += exported.ChangeCount();
          return {};
        },
        [](int) {
          const auto editor = OpenedRecord<frmItemSpotsDetail>(kSpot);
          editor->findChild<QLineEdit*>(u"txtNaam"_s)->setText(u"Voor de export"_s);
          Click(*editor, u"cmdOk"_s);
        });
    Require(count > kSpotsInItem, "the changes are exported");
  }

  DaySteps& steps_;
  bench::SlowDisk disk_;
  dao::FileSystemScope scope_;
  int changes_ = 0;
};

// One sound, one item, a station in the settings.
void Furnish(const bench::SpotStation& station) {
  const QString sound = station.File(u"spot.mp3"_s);
  audio::WriteToneFile(sound.toStdString(), {});
  QDir(station.Folder()).mkdir(u"export"_s);
  const QString folder = runtime::PathText(station.Folder());
  runtime::WriteFile(folder + u"\\ovalis.ini"_s,
                     "[Files]\r\nDatabasePath=" + folder.toLatin1() + "\r\nExportPath=" + folder.toLatin1() +
                         "\\export\r\n[Audio Players]\r\nCard=-1\r\nBuffers=20\r\nBuffer_Size=2048\r\nCallback=0\r\n");
  schema::AddStation(global.localDatabasePath, 0, u"Radio Bench"_s);
  dao::Database database = dao::OpenDatabase(global.serverDatabasePath);
  database.Execute(u"UPDATE tblItemSpots SET Path = \"%1\" WHERE ID = %2"_s.arg(runtime::PathText(sound)).arg(kSpot));
  database.Execute(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (1, \"Blok\", 1, 1, 0)"_s);
  for (int i = 1; i <= kSpotsInItem; ++i) {
    database.Execute(
        u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, %2)"_s.arg(i).arg(100 * i));
  }
}

}  // namespace

int main(int argc, char** argv) {
  runtime::KeepTimeZone();
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir cache;
  qputenv("XDG_CACHE_HOME", cache.path().toLocal8Bit());
  bench::TimedApplication application(argc, argv);
  const int spots = argc > 1 ? std::atoi(argv[1]) : 50'000;
  Require(spots >= 100 * kSpotsInItem, "usage");
  {
    const bench::SpotStation station(spots, QString::fromLocal8Bit(argc > 2 ? argv[2] : "."));
    Furnish(station);
    RegisterScreens();
    DaySteps steps(application);
    for (const double syncMs : {0.1, 10.0})
      Day(steps, syncMs).Run();
    steps.Report(IsLarge() ? "-large" : "");
  }
  if (IsLarge()) return 0;
  qputenv(kScale, "2");
  return QProcess::execute(application.applicationFilePath(), application.arguments().mid(1));
}
