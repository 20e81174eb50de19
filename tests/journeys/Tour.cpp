// SPDX-License-Identifier: MIT
#include "tests/journeys/Tour.h"

#include "platform/desktop/Palettes.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QWidget>

#include <iostream>

using namespace Qt::StringLiterals;
using namespace window;

namespace {

const QString kNewSpot = u"Nieuwe spot van de rondleiding"_s;
const QString kChangedSpot = u"Bakkerij Van Damme - paasbrood"_s;
const QString kEndedSpot = u"Autobedrijf De Smet - opendeurdagen"_s;
const QString kRemovedSpot = u"Carwash Blinkend"_s;
const QString kListItem = u"Blok van de rondleiding"_s;
const QString kPatternItem = u"Weekblok van de rondleiding"_s;
const QString kNewJingle = u"Opener van de rondleiding"_s;

void Done(const QString& what) {
  std::cout << "ok    " << what.toStdString() << std::endl;
}

// The first audio file of that kind of the demonstration station.
QString SoundFile(const QString& folder, const QString& kind) {
  const QDir sounds(folder + u"/zender/audio/"_s + kind);
  const QStringList files = sounds.entryList({u"*.mp3"_s}, QDir::Files, QDir::Name);
  if (files.isEmpty()) throw StepFailed(u"de zender heeft geen MP3-bestanden"_s);
  return sounds.filePath(files.first());
}

// The parts in order, each once.
bool HoldsInOrder(const QByteArray& content, const QList<QByteArray>& parts) {
  qsizetype at = 0;
  for (const QByteArray& part : parts) {
    at = content.indexOf(part, at);
    if (at < 0) return false;
    at += part.size();
  }
  return true;
}

}  // namespace

Tour::Tour(const Desk& desk, const QString& folder)
    : desk_(desk), folder_(folder), planner_(desk, [this](const QString& window) { Picture(window); }) {}

void Tour::Walk() {
  Arrive();
  MakeSpotFromFile();
  MakeItems();
  planner_.GoOffline();
  Done(u"offline gegaan"_s);
  ChangeSpots();
  ChangeJingles();
  ChangeItems();
  Export();
  GoOnline();
  ReadHelp();
  LookAhead();
  LookInTheDark();
  Leave();
}

QString Tour::NextName(const QString& window) {
  const QString number = u"%1"_s.arg(++pictures_, 2, 10, QChar(u'0'));
  return number + u'-' + window + (dark_ ? u"-donker"_s : QString());
}

void Tour::Picture(const QString& window) {
  desk_.Picture(window, NextName(window));
}

void Tour::PictureOfMain() {
  desk_.WaitUntil(u"de item-spots werden niet geteld"_s,
                  [this] { return desk_.Find(kMain, u"lblAantalZonderBestand"_s) != u"–"_s; });
  Picture(kMain);
}

QDateTime Tour::Now() {
  QWidget* window = QApplication::activeModalWidget();
  const auto* panel = window == nullptr ? nullptr : window->findChild<QWidget*>(u"picProgress"_s);
  if (panel != nullptr && panel->isVisible()) {
    desk_.SavePicture(*window, NextName(u"export-bezig"_s));
    exportSeen_ = true;
  }
  return QDateTime::currentDateTime();
}

void Tour::OpenList(const QString& action, const QString& list) {
  planner_.Open(action, list);
  Picture(list);
}

void Tour::ExpectLogged(const QString& text) const {
  desk_.WaitForText(kMain, u"pnlLog"_s, text + u" nog niet geëxporteerd"_s);
}

void Tour::Arrive() {
  desk_.WaitForWindow(kStation);
  Picture(kSplash);
  planner_.ChooseStation(u"Radio Demo"_s);
  desk_.Expect(desk_.Title(kMain) == u"Spotrooster Radio Demo"_s, u"het venster draagt de naam van de zender niet"_s);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
  PictureOfMain();
  Done(u"zender gekozen: Radio Demo"_s);
}

void Tour::MakeSpotFromFile() {
  OpenList(u"actItemSpots"_s, kSpots);
  const QString sound = SoundFile(folder_, u"Spots"_s);
  const QDate today = QDate::currentDate();
  planner_.MakeSpot({sound, kNewSpot, today, today.addDays(30)}, [this] { MarkMixPoint(); });
  planner_.Close(kSpots);
  ExpectLogged(u"0 wijzigingen"_s);
  Done(u"online een item-spot gemaakt uit "_s + QFileInfo(sound).fileName());
}

// A click in the waveform seeks to that position; the button sets it as the mix point.
void Tour::MarkMixPoint() {
  desk_.ClickAt(kSpot, u"waveform"_s, 0.93);
  desk_.WaitUntil(u"de golfvorm sprong niet naar het gekozen moment"_s,
                  [this] { return desk_.Value(kSpot, u"sliPlay"_s) > 0; });
  desk_.Click(kSpot, u"cmdMix"_s);
  desk_.WaitUntil(u"het mixpunt werd niet bepaald"_s, [this] { return desk_.Value(kSpot, u"ledMix"_s) > 0; });
  TestMixPoint();
}

// Playback begins at the mix point.
void Tour::TestMixPoint() {
  int marked = 0;
  Desk::InWindows([&] { marked = desk_.Value(kSpot, u"sliPlay"_s); });
  desk_.Click(kSpot, u"cmdTestMix"_s);
  desk_.WaitUntil(u"het mixpunt werd niet gespeeld"_s,
                  [this, marked] { return desk_.Value(kSpot, u"sliPlay"_s) > marked; });
  desk_.Click(kSpot, u"cmdSTOP"_s);
  Done(u"mixpunt bepaald en beluisterd"_s);
}

void Tour::MakeItems() {
  OpenList(u"actItems"_s, kItems);
  planner_.MakeListItem({kListItem, 2, u"Opener reclame ochtend"_s, u"Tussenstuk kort"_s, u"Sluiter Polderstem"_s},
                        {kNewSpot, kChangedSpot, u"Brasserie Het Sluisje - menu"_s});
  Done(u"online een item gemaakt met drie spots, opener, middenstuk en sluiter"_s);
  planner_.MakePatternItem({kPatternItem, 3, u"Opener reclame avond"_s, u"Tussenstuk nieuws"_s, u"Sluiter weekend"_s},
                           {{u"audio"_s, u"Blokken"_s}, u"verkeer"_s, u"ww"_s, u"Maandag"_s, u"wav"_s, 1500, 9});
  planner_.Close(kItems);
  Done(u"online een item gemaakt met een naampatroon, opener, middenstuk en sluiter"_s);
}

void Tour::ChangeSpots() {
  planner_.Open(u"actItemSpots"_s, kSpots);
  const QDate today = QDate::currentDate();
  planner_.MakeSpot({SoundFile(folder_, u"Spots"_s), kNewSpot + u" (offline)"_s, today, today.addDays(30)});
  planner_.ChangeSpotEnd(kChangedSpot, today.addDays(60));
  planner_.Deactivate(kSpots, kEndedSpot);
  planner_.CleanUp(kSpots, kRemovedSpot, {u"chkVerwijderID"_s, u"chkVerwijderBestand"_s});
  planner_.Close(kSpots);
  ExpectLogged(u"4 wijzigingen"_s);
  Done(u"offline een spot gemaakt, een gewijzigd, een gedesaktiveerd en een opgeruimd"_s);
}

void Tour::ChangeJingles() {
  OpenList(u"actItemPingles"_s, kJingles);
  planner_.MakeJingle({SoundFile(folder_, u"Jingles"_s), kNewJingle});
  desk_.Choose(kJingles, u"lstOverzicht"_s, u"Sluiter weekend"_s);
  desk_.Click(kJingles, u"cmdVerwijder"_s);
  desk_.PictureBox(NextName(u"vraag"_s));
  desk_.Answer(u"\"Sluiter weekend\" verwijderen"_s, u"Nee"_s);
  planner_.Close(kJingles);
  ExpectLogged(u"5 wijzigingen"_s);
  Done(u"offline een jingle gemaakt"_s);
}

void Tour::ChangeItems() {
  planner_.Open(u"actItems"_s, kItems);
  planner_.RemoveEntry(u"Gemeentelijke mededelingen"_s, u"Gemeente Wielmeer - wegwerkzaamheden"_s);
  planner_.CleanUp(kItems, u"Maandblok cultuur"_s, {u"chkVerwijderID"_s});
  planner_.Close(kItems);
  ExpectLogged(u"7 wijzigingen"_s);
  PictureOfMain();
  Done(u"offline een item gewijzigd en een opgeruimd: 7 wijzigingen in het logboek"_s);
  LookAtWhatWaits();
}

// As many lines as the status bar counts: the item and its list are one change.
void Tour::LookAtWhatWaits() {
  const QString window = u"frmOfflineLog"_s;
  planner_.Open(u"actOfflineLog"_s, window);
  desk_.WaitForText(window, u"lblAantal"_s, u"7 wijzigingen in de volgende export"_s);
  Picture(window);
  planner_.Close(window);
  Done(u"bekeken wat op export wacht"_s);
}

void Tour::Export() {
  planner_.Open(u"actExporteren"_s, kExport);
  planner_.StartExport();
  desk_.PictureBox(NextName(u"vraag"_s));
  desk_.Answer(u"Heeft U de vorige export-files reeds verwerkt"_s, u"Ja"_s);
  planner_.EndExport();
  ExpectLogged(u"0 wijzigingen"_s);
  PictureOfMain();
  Desk::InWindows([this] { desk_.Expect(exportSeen_, u"de export was niet te zien"_s); });
  CheckExportFile();
}

QStringList Tour::ExportFiles() const {
  return QDir(folder_ + u"/zender/export"_s).entryList({u"*.tql"_s}, QDir::Files, QDir::Name);
}

QByteArray Tour::ContentOf(const QString& exportFile) const {
  QFile copy(folder_ + u'/' + exportFile);
  desk_.Expect(QFile::copy(folder_ + u"/zender/export/"_s + exportFile, copy.fileName()),
               u"kan het exportbestand niet kopiëren"_s);
  desk_.Expect(copy.open(QIODevice::ReadOnly), u"het exportbestand kan niet gelezen worden"_s);
  return copy.readAll();
}

void Tour::CheckExportFile() {
  desk_.Expect(ExportFiles().size() == 1, u"er is niet precies één exportbestand"_s);
  const QByteArray content = ContentOf(ExportFiles().first());
  desk_.Expect(
      HoldsInOrder(content, {"INSERT INTO tblItemSpots (ID, ", "'Nieuwe spot van de rondleiding (offline)'",
                             ";\r\nUPDATE tblItemSpots SET Path = ", ";\r\nUPDATE tblItemSpots SET Aktief = 0 WHERE",
                             ";\r\nDELETE FROM tblItemSpots WHERE", ";\r\nINSERT INTO tblItemPingles (ID, ",
                             ";\r\nUPDATE tblItems SET Naam = ", ";\r\nINSERT INTO tblItemsItemSpots (ItemID, ",
                             ";\r\nDELETE FROM tblCopie_Items WHERE"}),
      u"het exportbestand houdt niet alle wijzigingen in hun volgorde"_s);
  desk_.Expect(content.count(";\r\n") == 11 && content.endsWith(";\r\n"), u"het exportbestand heeft geen 11 regels"_s);
  Done(u"geëxporteerd: %1, 7 wijzigingen in 11 regels"_s.arg(ExportFiles().first()));
}

void Tour::GoOnline() {
  planner_.Open(u"actItems"_s, kItems);
  planner_.Deactivate(kItems, u"Weekblok verkeer"_s);
  planner_.Close(kItems);
  // Within the same second the second file would replace the first.
  const QString first = ExportFiles().first();
  desk_.WaitUntil(u"de klok staat stil"_s,
                  [&first] { return QDateTime::currentDateTime().toString(u"yyyyMMddHHmmss'.tql'"_s) > first; });
  planner_.GoOnline();
  planner_.StartExport();
  planner_.EndExport();
  desk_.WaitUntilGone(kSettings);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
  desk_.Expect(ExportFiles().size() == 2, u"de overgang naar online heeft niet geëxporteerd"_s);
  desk_.Expect(ContentOf(ExportFiles().last()) == "UPDATE tblItems SET Aktief = 0 WHERE ID = 9;\r\n",
               u"het tweede exportbestand klopt niet"_s);
  Done(u"weer online gegaan, met de export die erbij hoort: "_s + ExportFiles().last());
}

void Tour::ReadHelp() {
  planner_.Open(u"actHandleiding"_s, kManual);
  Picture(kManual);
  planner_.Close(kManual);
  Visit(u"actVersie"_s, u"frmVersie"_s);
  Done(u"handleiding en versie bekeken"_s);
}

void Tour::Visit(const QString& action, const QString& window) {
  planner_.Open(action, window);
  Picture(window);
  planner_.Close(window);
}

void Tour::LookAhead() {
  Visit(u"actWeek"_s, u"frmWeek"_s);
  Visit(u"actOntbreekt"_s, u"frmOntbreekt"_s);
  Visit(u"actExportsVerwerken"_s, u"frmExportsVerwerken"_s);
  Done(u"week, ontbrekende bestanden en exports bekeken"_s);
}

void Tour::LookInTheDark() {
  Desk::InWindows([] { QApplication::setPalette(desktop::DarkPalette()); });
  dark_ = true;
  PictureOfMain();
  planner_.Open(u"actInstellingen"_s, kSettings);
  Picture(kSettings);
  desk_.Click(kSettings, u"cmdAnnuleren"_s);
  desk_.WaitUntilGone(kSettings);
  OpenList(u"actItemSpots"_s, kSpots);
  LookAt(kSpots, kNewSpot, kSpot);
  planner_.Close(kSpots);
  OpenList(u"actItems"_s, kItems);
  LookAt(kItems, kListItem, kItem);
  LookAt(kItems, kPatternItem, kItem);
  planner_.Close(kItems);
  dark_ = false;
  Desk::InWindows([] { QApplication::setPalette(desktop::LightPalette()); });
  Done(u"donker bekeken"_s);
}

void Tour::LookAt(const QString& list, const QString& line, const QString& editor) {
  planner_.Edit(list, line, editor);
  Picture(editor);
  desk_.Click(editor, u"cmdAnnuleren"_s);
  desk_.WaitUntilGone(editor);
  planner_.WaitForRefill(list);
}

void Tour::Leave() {
  planner_.Leave();
  Done(u"afgesloten"_s);
}
