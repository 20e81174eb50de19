#include "tests/journeys/Tour.h"

#include "platform/desktop/Palettes.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString kSplash = u"frmSplash"_s;
const QString kStation = u"frmRadioDetail"_s;
const QString kMain = u"frmMain"_s;
const QString kSettings = u"frmDefaults"_s;
const QString kSpots = u"frmItemSpots"_s;
const QString kSpot = u"frmItemSpotsDetail"_s;
const QString kItems = u"frmItems"_s;
const QString kItem = u"frmItemsDetail"_s;
const QString kEntry = u"frmItemsDetailOpt1"_s;
const QString kJingles = u"frmItemPingles"_s;
const QString kJingle = u"frmItemPinglesDetail"_s;
const QString kExport = u"frmPlanningExporteren"_s;

const QString kNewSpot = u"Nieuwe spot van de rondleiding"_s;
const QString kChangedSpot = u"Bakkerij Van Damme - paasbrood"_s;
const QString kNewItem = u"Blok van de rondleiding"_s;
const QString kEndedSpot = u"Autobedrijf De Smet - opendeurdagen"_s;

QString Written(QDate date) {
  return date.toString(u"dd-MM-yyyy"_s);
}

// An audio file of the demo station.
QString SoundFile(const QString& folder) {
  const QDir sounds(folder + u"/zender/audio/Spots"_s);
  const QStringList files = sounds.entryList({u"*.mp3"_s}, QDir::Files, QDir::Name);
  if (files.isEmpty()) throw StepFailed(u"de zender heeft geen MP3-bestanden"_s);
  return sounds.filePath(files.first());
}

}  // namespace

void Tour::Walk() {
  ChooseStation();
  GoOffline();
  MakeSpotFromFile();
  ChangeSpots();
  MakeItem();
  Export();
  CheckExportFile();
  GoOnline();
  LookInTheDark();
  Leave();
}

void Tour::ChooseStation() {
  desk_.WaitForWindow(kStation);
  desk_.Picture(kSplash, u"01-start"_s);
  desk_.Expect(desk_.Lines(kStation, u"cboRadio"_s).contains(u"Radio Demo"_s), u"de zender staat niet in de lijst"_s);
  desk_.Choose(kStation, u"cboRadio"_s, u"Radio Demo"_s);
  desk_.Picture(kStation, u"02-zender"_s);
  desk_.Click(kStation, u"cmdOk"_s);
  desk_.WaitForWindow(kMain);
  desk_.Expect(desk_.Title(kMain) == u"Spotrooster Radio Demo"_s, u"het venster draagt de naam van de zender niet"_s);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
  PictureOfMain(u"03-hoofdvenster"_s);
  Done(u"zender gekozen: Radio Demo"_s);
}

void Tour::PictureOfMain(const QString& name) {
  desk_.WaitUntil(u"de item-spots werden niet geteld"_s,
                  [this] { return desk_.Find(kMain, u"lblAantalZonderBestand"_s) != u"–"_s; });
  desk_.Picture(kMain, name);
}

void Tour::GoOffline() {
  desk_.ClickTool(kMain, u"actInstellingen"_s);
  desk_.WaitForWindow(kSettings);
  desk_.Click(kSettings, u"optOffline"_s);
  desk_.WaitUntil(u"Offline werd niet gekozen"_s, [this] { return desk_.IsChecked(kSettings, u"optOffline"_s); });
  desk_.Picture(kSettings, u"04-instellingen"_s);
  desk_.Click(kSettings, u"cmdOk"_s);
  desk_.WaitUntilGone(kSettings);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Offline"_s);
  Done(u"offline gegaan"_s);
}

void Tour::MakeSpotFromFile() {
  desk_.ClickTool(kMain, u"actItemSpots"_s);
  desk_.WaitForWindow(kSpots);
  desk_.Picture(kSpots, u"05-item-spots"_s);
  desk_.Click(kSpots, u"cmdNieuw"_s);
  desk_.WaitForWindow(kSpot);
  const QString sound = SoundFile(folder_);
  desk_.ChooseFile(sound);
  desk_.Click(kSpot, u"cmdPath"_s);
  desk_.WaitUntil(u"het geluidsbestand werd niet genomen"_s,
                  [this] { return !desk_.Find(kSpot, u"txtPath"_s).isEmpty(); });
  const int seconds = desk_.Text(kSpot, u"txtLengteSec"_s).toInt();
  desk_.Expect(seconds > 0, u"de lengte werd niet gemeten"_s);
  desk_.Click(kSpot, u"cmdFillName"_s);
  desk_.WaitUntil(u"de naam werd niet ingevuld"_s, [this] { return !desk_.Find(kSpot, u"txtNaam"_s).isEmpty(); });
  desk_.Type(kSpot, u"txtNaam"_s, kNewSpot);
  const QDate today = QDate::currentDate();
  desk_.Type(kSpot, u"cobStart"_s, Written(today));
  desk_.Type(kSpot, u"cobStop"_s, Written(today.addDays(30)));
  MarkMixPoint();
  desk_.Picture(kSpot, u"06-nieuwe-spot"_s);
  desk_.Click(kSpot, u"cmdOk"_s);
  desk_.WaitUntilGone(kSpot);
  desk_.WaitForLine(kSpots, u"lstOverzicht"_s, kNewSpot);
  Done(u"item-spot gemaakt uit %1 (%2 s)"_s.arg(QFileInfo(sound).fileName()).arg(seconds));
}

// A click in the waveform goes to that moment; the button takes it as the mix point.
void Tour::MarkMixPoint() {
  desk_.ClickAt(kSpot, u"waveform"_s, 0.93);
  desk_.WaitUntil(u"de golfvorm sprong niet naar het gekozen moment"_s,
                  [this] { return desk_.Value(kSpot, u"sliPlay"_s) > 0; });
  desk_.Click(kSpot, u"cmdMix"_s);
  desk_.WaitUntil(u"het mixpunt werd niet bepaald"_s, [this] { return desk_.Value(kSpot, u"ledMix"_s) > 0; });
  TestMixPoint();
}

// What is heard begins at the mix point.
void Tour::TestMixPoint() {
  int marked = 0;
  Desk::InWindows([&] { marked = desk_.Value(kSpot, u"sliPlay"_s); });
  desk_.Click(kSpot, u"cmdTestMix"_s);
  desk_.WaitUntil(u"het mixpunt werd niet gespeeld"_s,
                  [this, marked] { return desk_.Value(kSpot, u"sliPlay"_s) > marked; });
  desk_.Click(kSpot, u"cmdSTOP"_s);
  Done(u"mixpunt bepaald en beluisterd"_s);
}

void Tour::ChangeSpots() {
  desk_.Choose(kSpots, u"lstOverzicht"_s, kChangedSpot);
  desk_.DoubleClick(kSpots, u"lstOverzicht"_s);
  desk_.WaitForWindow(kSpot);
  desk_.Type(kSpot, u"cobStop"_s, Written(QDate::currentDate().addDays(60)));
  desk_.Picture(kSpot, u"07-spot-wijzigen"_s);
  desk_.Click(kSpot, u"cmdOk"_s);
  desk_.WaitUntilGone(kSpot);
  desk_.WaitUntil(u"de lijst werd niet opnieuw gevuld"_s, [this] { return !desk_.IsEnabled(kSpots, u"cmdOpen"_s); });
  desk_.Choose(kSpots, u"lstOverzicht"_s, kEndedSpot);
  desk_.Click(kSpots, u"cmdDesaktiveer"_s);
  desk_.WaitUntil(u"de spot bleef aktief"_s,
                  [this] { return !desk_.LinesNow(kSpots, u"lstOverzicht"_s).contains(kEndedSpot); });
  desk_.Click(kSpots, u"cmdSluiten"_s);
  desk_.WaitUntilGone(kSpots);
  desk_.WaitForText(kMain, u"pnlLog"_s, u"3 opdrachten nog niet geëxporteerd"_s);
  Done(u"offline een spot gewijzigd en een gedesaktiveerd: 3 opdrachten in het logboek"_s);
}

void Tour::MakeItem() {
  desk_.ClickTool(kMain, u"actItems"_s);
  desk_.WaitForWindow(kItems);
  desk_.Picture(kItems, u"08-items"_s);
  desk_.Click(kItems, u"cmdNieuw"_s);
  desk_.WaitForWindow(kItem);
  desk_.Type(kItem, u"txtNaam"_s, kNewItem);
  AddSpotToItem(kChangedSpot);
  AddSpotToItem(u"Brasserie Het Sluisje - menu"_s);
  desk_.Click(kItem, u"chkOpenerPingle"_s);
  desk_.WaitUntil(u"de opener werd niet gekozen"_s, [this] { return desk_.IsChecked(kItem, u"chkOpenerPingle"_s); });
  const QStringList jingles = desk_.Lines(kItem, u"cboOpenerPingle"_s);
  desk_.Expect(!jingles.isEmpty(), u"er zijn geen jingles om uit te kiezen"_s);
  desk_.Choose(kItem, u"cboOpenerPingle"_s, jingles.first());
  LookAtJingle(jingles.first());
  desk_.Picture(kItem, u"09-nieuw-item"_s);
  desk_.Click(kItem, u"cmdOk"_s);
  desk_.WaitUntilGone(kItem);
  desk_.WaitForLine(kItems, u"lstOverzicht"_s, kNewItem);
  desk_.Click(kItems, u"cmdSluiten"_s);
  desk_.WaitUntilGone(kItems);
  desk_.WaitForText(kMain, u"pnlLog"_s, u"7 opdrachten nog niet geëxporteerd"_s);
  PictureOfMain(u"10-offline-gewijzigd"_s);
  Done(u"item gemaakt met twee spots en een opener"_s);
}

// From the item to the list of jingles, into one of them, and back.
void Tour::LookAtJingle(const QString& jingle) {
  desk_.Click(kItem, u"cmdShowItemPingles"_s);
  desk_.WaitForWindow(kJingles);
  desk_.Choose(kJingles, u"lstOverzicht"_s, jingle);
  desk_.Click(kJingles, u"cmdOpen"_s);
  desk_.WaitForWindow(kJingle);
  desk_.Expect(desk_.Text(kJingle, u"txtNaam"_s) == jingle, u"de jingle ging niet open"_s);
  desk_.Picture(kJingle, u"15-item-pingle"_s);
  desk_.Click(kJingle, u"cmdAnnuleren"_s);
  desk_.WaitUntilGone(kJingle);
  desk_.Click(kJingles, u"cmdSluiten"_s);
  desk_.WaitUntilGone(kJingles);
  desk_.WaitForWindow(kItem);
  Done(u"jingle bekeken: "_s + jingle);
}

void Tour::AddSpotToItem(const QString& spot) {
  desk_.Click(kItem, u"cmdOpt1Toevoegen"_s);
  desk_.WaitForWindow(kEntry);
  desk_.Choose(kEntry, u"cboItemSpot"_s, spot);
  desk_.Click(kEntry, u"cmdOk"_s);
  desk_.WaitUntilGone(kEntry);
  desk_.WaitForLine(kItem, u"lstOpt1ItemSpots"_s, spot);
}

void Tour::Export() {
  desk_.ClickTool(kMain, u"actExporteren"_s);
  desk_.WaitForWindow(kExport);
  desk_.Picture(kExport, u"11-exporteren"_s);
  desk_.Click(kExport, u"cmdOk"_s);
  desk_.PictureBox(u"12-vraag"_s);
  desk_.Answer(u"Heeft U de vorige export-files reeds verwerkt"_s, u"Ja"_s);
  desk_.Answer(u"export"_s, u"OK"_s);
  desk_.WaitUntilGone(kExport);
  desk_.WaitForText(kMain, u"pnlLog"_s, u"0 opdrachten nog niet geëxporteerd"_s);
  desk_.Expect(QFile::exists(folder_ + u"/13-export-bezig.png"_s), u"de export was niet te zien"_s);
}

void Tour::CheckExportFile() {
  const QDir exports(folder_ + u"/zender/export"_s);
  const QStringList files = exports.entryList({u"*.tql"_s}, QDir::Files);
  desk_.Expect(files.size() == 1, u"er is niet precies één exportbestand"_s);
  QFile file(exports.filePath(files.first()));
  desk_.Expect(file.open(QIODevice::ReadOnly), u"het exportbestand kan niet gelezen worden"_s);
  const QByteArray content = file.readAll();
  desk_.Expect(content.endsWith(";\r\n"), u"het exportbestand eindigt niet met een regel"_s);
  qsizetype at = 0;
  for (const QByteArray part :
       {"INSERT INTO tblItemSpots (ID, ", "'Nieuwe spot van de rondleiding'",
        ";\r\nUPDATE tblItemSpots SET Path = ", ";\r\nUPDATE tblItemSpots SET Aktief = 0 WHERE",
        ";\r\nINSERT INTO tblItems (ID, Naam, ", "'Blok van de rondleiding'",
        ";\r\nINSERT INTO tblItemsItemSpots (ItemID, ", ";\r\nINSERT INTO tblItemsItemSpots "}) {
    at = content.indexOf(part, at);
    desk_.Expect(at >= 0, u"niet op zijn plaats in het exportbestand: "_s + QString::fromLatin1(part.trimmed()));
    at += part.size();
  }
  desk_.Expect(QFile::copy(file.fileName(), folder_ + u'/' + files.first()), u"kan het exportbestand niet kopiëren"_s);
  Done(u"geëxporteerd: %1, %2 opdrachten"_s.arg(files.first()).arg(content.count(";\r\n")));
}

void Tour::GoOnline() {
  desk_.ClickTool(kMain, u"actInstellingen"_s);
  desk_.WaitForWindow(kSettings);
  desk_.Click(kSettings, u"optOnline"_s);
  desk_.Answer(u"dient u meteen ook te exporteren"_s, u"OK"_s);
  desk_.Click(kSettings, u"cmdOk"_s);
  desk_.WaitForWindow(kExport);
  desk_.Click(kExport, u"cmdAnnuleren"_s);
  desk_.WaitUntilGone(kSettings);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
  Done(u"weer online gegaan"_s);
}

void Tour::LookInTheDark() {
  Desk::InWindows([] { QApplication::setPalette(desktop::DarkPalette()); });
  PictureOfMain(u"14-donker"_s);
  Desk::InWindows([] { QApplication::setPalette(desktop::LightPalette()); });
  Done(u"donker bekeken"_s);
}

void Tour::Leave() {
  desk_.ClickTool(kMain, u"actAfsluiten"_s);
  desk_.WaitUntilGone(kMain);
  Done(u"afgesloten"_s);
}
