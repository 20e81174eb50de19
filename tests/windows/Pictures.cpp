// SPDX-License-Identifier: MIT
// Takes pictures of every window on the demonstration station, in the states that matter for its design, and prints the
// overviews as PDF.
#include "app/Start.h"
#include "app/TodayPanel.h"
#include "app/frmMain.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "export/frmOfflineLog.h"
#include "export/playout/AirLedger.h"
#include "export/reports/ReportPages.h"
#include "export/reports/Reports.h"
#include "items/frmItemsDetail.h"
#include "media/frmItemPinglesDetail.h"
#include "media/frmItemSpotsDetail.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/DateCombo.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/journeys/Journey.h"
#include "tests/journeys/Stage.h"
#include "tests/windows/Album.h"
#include "tests/windows/DailyPictures.h"
#include "tests/windows/Take.h"
#include "tests/windows/Windows.h"
#include "tools/Commands.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;
using windows::Album;
using windows::Change;
using windows::In;
using windows::TakeForm;

namespace {

constexpr windows::Records kRecords{1, 9, 7, 3};
constexpr qint32 kLockedItem = 4;
constexpr qint32 kLongItem = 5;
constexpr qint32 kLongPattern = 10;
constexpr qint32 kLongSpot = 33;
constexpr qint32 kLostSpot = 6;
constexpr int kPatience = 30000;  // ms; maximum for counting in the background
const QString kLongName =
    u"Coöperatieve vereniging voor plattelandstoerisme ‘Het Wielmeerse Land’ - vijfentwintigste lenteweekend met fiets, boot en boerenmarkt"_s;

// Records as after some years of use: long names, a locked item.
void MakeExtremes() {
  Change(u"UPDATE tblItems SET Locked = -1 WHERE ID = %1"_s.arg(kLockedItem));
  Change(u"UPDATE tblItems SET Naam = \"%1\" WHERE ID = %2"_s.arg(kLongName).arg(kLongItem));
  Change(
      u"UPDATE tblItems SET Opt2Directory = \"D:\\audio\\Blokken\\Een map met een erg lange naam\\en nog "
      u"een\\daaronder\","
      " Opt2VastNaamGedeelte = \"weersverwachting-kust-en-polders-\" WHERE ID = %1"_s.arg(kLongPattern));
  Change(u"UPDATE tblItemSpots SET Naam = \"%1\" WHERE ID = %2"_s.arg(kLongName).arg(kLongSpot));
  Change(
      u"UPDATE tblItemPingles SET Naam = \"Opener avond, versie met koor en pauken voor de feestdagen\" WHERE ID = 2"_s);
}

std::unique_ptr<frmMain> StartedMain() {
  auto main = std::make_unique<frmMain>();
  QTimer::singleShot(200, qApp, [] {
    QWidget* station = QApplication::activeModalWidget();
    In<controls::ComboBox>(*station, u"cboRadio"_s).SetListIndex(0);
    In<QAbstractButton>(*station, u"cmdOk"_s).click();
  });
  main->Form_Load();
  return main;
}

void TakeMain(const Album& album) {
  const std::unique_ptr<frmMain> main = StartedMain();
  MakeExtremes();
  album.Take(u"main"_s, *main, [&] {
    const QLabel& last = In<QLabel>(*main, u"lblAantalZonderBestand"_s);
    if (!QTest::qWaitFor([&] { return last.text() != u"–"_s; }, kPatience)) throw runtime::Error(u"niets geteld"_s);
  });
  main->show();
  album.TakeOpened(u"main-menu"_s, [&] { In<QMenu>(*main, u"mnuOverzichten"_s).exec(QPoint(100, 100)); });
}

template <class List>
void TakeList(const Album& album, const QString& name, const QString& inactive, const QString& searched) {
  TakeForm<List>(album, name, {}, [&](QWidget& form) {
    In<QAbstractButton>(form, inactive).click();
    In<QLineEdit>(form, u"txtZoek"_s).setText(searched);
  });
}

void TakeStates(const Album& album) {
  TakeList<frmItems>(album, u"items-alle"_s, u"chkNietAktieve"_s, {});
  TakeList<frmItemSpots>(album, u"itemSpots-alle"_s, u"chkNietAktieve"_s, {});
  TakeList<frmItemSpots>(album, u"itemSpots-niets"_s, u"chkAktieve"_s, {});
  TakeList<frmItemSpots>(album, u"itemSpots-zoek"_s, u"chkNietAktieve"_s, u"kerst"_s);
  TakeForm<frmItemsDetail>(album, u"item-vergrendeld"_s, QString::number(kLockedItem));
  TakeForm<frmItemsDetail>(album, u"item-lang"_s, QString::number(kLongItem));
  TakeForm<frmItemsDetail>(album, u"item-patroon-lang"_s, QString::number(kLongPattern));
  TakeForm<frmItemsDetail>(album, u"item-nieuw"_s, QString::fromUtf16(kNewRecord));
  TakeForm<frmItemSpotsDetail>(album, u"itemSpot-nieuw"_s, QString::fromUtf16(kNewRecord));
  TakeForm<frmItemSpotsDetail>(album, u"itemSpot-lang"_s, QString::number(kLongSpot), [](QWidget& form) {
    In<QAbstractButton>(form, u"cmdPlay"_s).click();
    QTest::qWait(1500);
    In<QAbstractButton>(form, u"cmdSTOP"_s).click();
  });
  const desktop::MessageBoxScript boxes;
  TakeForm<frmItemSpotsDetail>(album, u"itemSpot-zonder-bestand"_s, QString::number(kLostSpot));
}

// Waits until the window has read the log.
void TakeWaitingChanges(const Album& album) {
  TakeForm<frmOfflineLog>(album, u"offlineLog-gevuld"_s, {}, [](QWidget& form) {
    auto& changes = In<controls::ListBox>(form, u"lstWijzigingen"_s);
    if (!QTest::qWaitFor([&] { return changes.ListCount() > 0; }, kPatience)) throw runtime::Error(u"niets gelezen"_s);
    changes.SetListIndex(1);
    In<QAbstractButton>(form, u"chkSql"_s).click();
  });
}

// Offline work that waits for an export, and the result of one.
void TakeOffline(const Album& album) {
  const desktop::MessageBoxScript boxes;
  const QString& local = global.localDatabasePath;
  const std::pair<QString, bool (*)(const QString&, const QString&)> copies[] = {
      {u"tblCopie_ItemSpots"_s, TransItemSpotsToLocal},
      {u"tblCopie_Items"_s, TransItemsToLocal},
      {u"tblCopie_ItemsItemSpots"_s, TransItemsItemSpotsToLocal},
      {u"tblCopie_ItemPingles"_s, TransItemPinglesToLocal}};
  for (const auto& [table, copy] : copies) {
    if (!DeleteAllInTable(table, local) || !copy(global.serverDatabasePath, local))
      throw runtime::Error(u"kan %1 niet vullen"_s.arg(table));
  }
  global.online = false;
  const Catalogue here = CurrentCatalogue();
  Insert_tblItemSpots(
      {900, u"D:\\audio\\Spots\\apotheek.mp3"_s, u"Apotheek 't Hof"_s, 24, 0, 1200, 45727, 6, 45757, 22, 1}, local,
      here.itemSpots);
  Insert_tblItemsItemSpots({1, 9, 900}, local, here.itemsItemSpots);
  Update_tblItemSpots_Aktief(7, 0, local, here.itemSpots);
  Delete_tblBeheer(12, here.itemSpots, here.itemSpots + u".ID"_s, local);
  TakeForm<frmItemSpots>(album, u"itemSpots-wacht"_s, {});
  TakeForm<frmItems>(album, u"items-wacht"_s, {});
  TakeForm<frmItemPingles>(album, u"itemPingles-wacht"_s, {});
  TakeWaitingChanges(album);
  global.exported = ExportedLog{global.exportPath + u"\\20250311143207.tql"_s,
                                5,
                                {u"item-spot 42 (Apotheek 't Hof, Garage De Smet)"_s},
                                u"uitleg"_s};
  const std::unique_ptr<frmMain> main = StartedMain();
  album.Take(u"main-export"_s, *main);
}

// Reasons in place of counts.
void TakeUnreadable(const Album& album) {
  const std::unique_ptr<frmMain> main = StartedMain();
  const QString path = runtime::HostPath(global.serverDatabasePath);
  if (!QFile::rename(path, path + u".weg"_s)) throw runtime::Error(u"kan de database niet verbergen"_s);
  album.Take(u"main-onleesbaar"_s, *main, [&] {
    In<TodayPanel>(*main, u"fraVandaag"_s).Count();
    const QLabel& words = In<QLabel>(*main, u"lblLopen"_s);
    if (!QTest::qWaitFor([&] { return words.text().contains(u':'); }, kPatience)) throw runtime::Error(u"geen reden"_s);
  });
  QFile::rename(path + u".weg"_s, path);
}

void TakeOthers(const Album& album) {
  album.TakeOpened(u"fout"_s, [] {
    desktop::ShowMessageBox(nullptr,
                            u"De tabel ‘tblItemSpots’ kan niet worden bijgewerkt: het bestand "
                            "\\\\studio\\ovalisto\\data\\OvalistoServer3.mdb is niet bereikbaar."_s,
                            16, u"Update_tblItemSpots"_s);
  });
  album.TakeOpened(u"bestand-kiezen"_s, [] {
    desktop::FileChooser chooser;
    chooser.SetTitle(u"Info-spot kiezen"_s);
    chooser.SetFilter(u"Mpeg-3 (*.MP3)|*.MP3|Wave bestanden (*.WAV) |*.WAV"_s);
    chooser.SetStartFolder(runtime::HostPath(u"D:\\audio\\Spots"_s));
    chooser.ShowOpen(nullptr);
  });
  controls::DateCombo date;
  date.SetDate(QDate(2025, 3, 11));
  date.show();
  album.TakeOpened(u"kalender"_s, [&] {
    date.OpenCalendar();
    QTest::qWait(1500);
  });
}

// Airings of three blocks of four spots a day, for ten days.
void CountSomeAirings() {
  SwitchCounting(CurrentCatalogue().databasePath, true);
  std::vector<Airing> airings;
  for (int at = 0; at < 120; ++at) {
    const QDateTime block(QDate(2025, 3, 1 + at / 12), QTime(7 + at / 4 % 3 * 5, 20));
    airings.push_back({1 + at % 8, block.addSecs(at % 4 * 27), 1 + at / 4 % 3});
  }
  CountAirings(CurrentCatalogue().databasePath, airings);
}

void SavePaper(const QString& folder, const QString& name) {
  const std::pair<QString, Report> reports[] = {
      {u"item-spots"_s, CatalogueReport()},
      {u"items"_s, BlocksReport()},
      {u"verloopt"_s, EndingReport()},
      {u"uitzendingen"_s, AiringsReport({}, QDate(2025, 3, 1), QDate(2025, 3, 11))}};
  for (const auto& [kind, report] : reports)
    runtime::WriteFile(folder + u"/papier-"_s + kind + u'-' + name + u".pdf"_s, PdfOf(report));
}

// The printed overviews of many records, of one and of none.
void TakePaper(const QString& folder) {
  CountSomeAirings();
  constexpr int kMany = 200;
  for (int id = 61; id <= kMany; ++id) {
    Change(
        u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartDatum, StartUur, EindDatum, EindUur, "
        u"AantalGedraaid, "
        u"Aktief) VALUES (%1, \"D:\\audio\\Spots\\%1.mp3\", \"Façade & Crèche nr. %1 - ‘één’ naïeve reünie\", %2, "
        u"45658, 0, %3, 23, 0, 1)"_s.arg(id)
            .arg(10 + id % 50)
            .arg(45727 + id % 40));
    Change(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%1, %2, %2)"_s.arg(1 + id % 8)
               .arg(id));
  }
  SavePaper(folder, u"veel"_s);
  Change(u"DELETE FROM tblItemSpots WHERE ID > 1"_s);
  Change(u"DELETE FROM tblItems WHERE ID > 1"_s);
  Change(u"UPDATE tblItemSpots SET EindDatum = 45737"_s);
  SavePaper(folder, u"een"_s);
  Change(u"DELETE FROM tblItemSpots"_s);
  Change(u"DELETE FROM tblItems"_s);
  SavePaper(folder, u"geen"_s);
}

void TakeAll(const QString& folder) {
  QDir().mkpath(folder);
  MakeStation(folder + u"/zender"_s);
  global.programFolder = runtime::PathText(folder + u"/zender"_s);
  RegisterScreens();
  const Album album(folder);
  TakeMain(album);
  for (const windows::Opening& opening : windows::All(kRecords)) {
    if (opening.name != u"main"_s) album.Take(opening.name, opening.open().Widget());
  }
  TakeStates(album);
  TakeOthers(album);
  TakeUnreadable(album);
  TakeOffline(album);
  global.online = true;
  windows::TakeDaily(album);
  TakePaper(folder);
}

}  // namespace

int main(int argc, char** argv) {
  const std::optional<StageOptions> options = ParseStageOptions(argc, argv);
  if (!options) {
    std::cerr << "window_pictures " << kStageUsage << "    maakt van elk venster een beeld in MAP\n";
    return kWrongUse;
  }
  const Stage stage(argc, argv, *options);
  QApplication::setCursorFlashTime(0);
  // A fixed moment, so that two runs can be compared.
  const runtime::ClockScope clock([] { return QDateTime(QDate(2025, 3, 11), QTime(14, 32, 7)); });
  try {
    TakeAll(options->folder);
    return kDone;
  } catch (const runtime::Error& error) {
    std::cerr << "window_pictures: " << error.what() << '\n';
    return kFailed;
  }
}
