#include "tests/journeys/Tour.h"

#include "platform/desktop/FileChooser.h"

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
const QString kExport = u"frmPlanningExporteren"_s;

const QString kNewSpot = u"Nieuwe spot van de rondleiding"_s;
const QString kChangedSpot = u"Bakkerij Van Damme - paasbrood"_s;
const QString kEndedSpot = u"Autobedrijf De Smet - opendeurdagen"_s;

QString Written(QDate date) { return date.toString(u"dd-MM-yyyy"_s); }

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
  Export();
  CheckExportFile();
  GoOnline();
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
  desk_.Expect(desk_.Text(kMain, u"pnlModus"_s) == u"Online"_s, u"de zender begint niet online"_s);
  desk_.WaitUntil(u"de item-spots werden niet geteld"_s,
                  [this] { return desk_.Find(kMain, u"lblAantalZonderBestand"_s) != u"–"_s; });
  desk_.Picture(kMain, u"03-hoofdvenster"_s);
  Done(u"zender gekozen: Radio Demo"_s);
}

void Tour::GoOffline() {
  desk_.ClickTool(kMain, u"actInstellingen"_s);
  desk_.WaitForWindow(kSettings);
  desk_.Click(kSettings, u"optOffline"_s);
  desk_.WaitUntil(u"Offline werd niet gekozen"_s, [this] { return desk_.IsChecked(kSettings, u"optOffline"_s); });
  desk_.Picture(kSettings, u"04-instellingen"_s);
  desk_.Click(kSettings, u"cmdOk"_s);
  desk_.WaitUntilGone(kSettings);
  desk_.Expect(desk_.Text(kMain, u"pnlModus"_s) == u"Offline"_s, u"de zender werkt niet offline"_s);
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
  desk_.Picture(kSpot, u"06-nieuwe-spot"_s);
  desk_.Click(kSpot, u"cmdOk"_s);
  desk_.WaitUntilGone(kSpot);
  desk_.Expect(desk_.Lines(kSpots, u"lstOverzicht"_s).contains(kNewSpot), u"de nieuwe spot staat niet in de lijst"_s);
  Done(u"item-spot gemaakt uit %1 (%2 s)"_s.arg(QFileInfo(sound).fileName()).arg(seconds));
}

void Tour::ChangeSpots() {
  desk_.Choose(kSpots, u"lstOverzicht"_s, kChangedSpot);
  desk_.DoubleClick(kSpots, u"lstOverzicht"_s);
  desk_.WaitForWindow(kSpot);
  desk_.Type(kSpot, u"cobStop"_s, Written(QDate::currentDate().addDays(60)));
  desk_.Picture(kSpot, u"07-spot-wijzigen"_s);
  desk_.Click(kSpot, u"cmdOk"_s);
  desk_.WaitUntilGone(kSpot);
  desk_.Choose(kSpots, u"lstOverzicht"_s, kEndedSpot);
  desk_.Click(kSpots, u"cmdDesaktiveer"_s);
  desk_.WaitUntil(u"de spot bleef aktief"_s,
                  [this] { return !desk_.LinesNow(kSpots, u"lstOverzicht"_s).contains(kEndedSpot); });
  desk_.Click(kSpots, u"cmdSluiten"_s);
  desk_.WaitUntilGone(kSpots);
  desk_.Expect(desk_.Text(kMain, u"pnlLog"_s) == u"3 opdrachten nog niet geëxporteerd"_s,
               u"er staan geen drie opdrachten klaar: "_s + desk_.Text(kMain, u"pnlLog"_s));
  desk_.Picture(kMain, u"08-offline-gewijzigd"_s);
  Done(u"offline een spot gewijzigd en een gedesaktiveerd: 3 opdrachten in het logboek"_s);
}

void Tour::Export() {
  desk_.ClickTool(kMain, u"actExporteren"_s);
  desk_.WaitForWindow(kExport);
  desk_.Picture(kExport, u"09-exporteren"_s);
  desk_.Click(kExport, u"cmdOk"_s);
  desk_.PictureBox(u"10-vraag"_s);
  desk_.Answer(u"Heeft U de vorige export-files reeds verwerkt"_s, u"Ja"_s);
  desk_.Answer(u"export"_s, u"OK"_s);
  desk_.WaitUntilGone(kExport);
  desk_.Expect(desk_.Text(kMain, u"pnlLog"_s) == u"0 opdrachten nog niet geëxporteerd"_s,
               u"het logboek werd niet geledigd"_s);
  desk_.Expect(QFile::exists(folder_ + u"/11-export-bezig.png"_s), u"de export was niet te zien"_s);
}

void Tour::CheckExportFile() {
  const QDir exports(folder_ + u"/zender/export"_s);
  const QStringList files = exports.entryList({u"*.tql"_s}, QDir::Files);
  desk_.Expect(files.size() == 1, u"er is niet precies één exportbestand"_s);
  QFile file(exports.filePath(files.first()));
  desk_.Expect(file.open(QIODevice::ReadOnly), u"het exportbestand kan niet gelezen worden"_s);
  const QByteArray content = file.readAll();
  const QList<QByteArray> lines = content.split('\n');
  desk_.Expect(lines.size() == 4 && content.endsWith(";\r\n"), u"het exportbestand heeft geen drie regels"_s);
  desk_.Expect(lines[0].startsWith("INSERT INTO tblItemSpots (ID, ") && lines[0].contains(kNewSpot.toLatin1()),
               u"de nieuwe spot staat niet in het exportbestand"_s);
  desk_.Expect(lines[1].startsWith("UPDATE tblItemSpots SET Path = "), u"de wijziging staat niet in het exportbestand"_s);
  desk_.Expect(lines[2].startsWith("UPDATE tblItemSpots SET Aktief = 0 WHERE ID = "),
               u"het desaktiveren staat niet in het exportbestand"_s);
  desk_.Expect(QFile::copy(file.fileName(), folder_ + u'/' + files.first()), u"kan het exportbestand niet kopiëren"_s);
  Done(u"geëxporteerd: "_s + files.first() + u", 3 opdrachten"_s);
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
  desk_.Expect(desk_.Text(kMain, u"pnlModus"_s) == u"Online"_s, u"de zender werkt niet online"_s);
  Done(u"weer online gegaan"_s);
}

void Tour::Leave() {
  desk_.ClickTool(kMain, u"actAfsluiten"_s);
  desk_.WaitUntilGone(kMain);
  Done(u"afgesloten"_s);
}
