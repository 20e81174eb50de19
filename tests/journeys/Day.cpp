// SPDX-License-Identifier: MIT
#include "tests/journeys/Day.h"

#include "data/Globals.h"
#include "platform/runtime/HostPath.h"
#include "tests/journeys/Journey.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace window;
using Row = CatalogueModel::Row;

namespace {

const QDate kToday(2025, 3, 11);
const QDate kLast(2025, 4, 30);

QString Iso(QDate date) {
  return date.toString(Qt::ISODate);
}

}  // namespace

Day::Day(const QString& folder)
    : folder_(folder),
      clock_([this] { return QDateTime(kToday, QTime(14, 32)).addSecs(seconds_); }),
      desk_(folder, files_),
      planner_(desk_) {
  MakeStation(Station());
  model_ = CatalogueModel::Of(Server());
}

Day::~Day() {
  global = Globals();
  runtime::SetDrives({});
}

QString Day::Station() const {
  return folder_ + u"/zender"_s;
}
QString Day::Server() const {
  return Station() + u"/server/OvalistoServer.mdb"_s;
}
QString Day::ServerAsItWas() const {
  return folder_ + u"/zoals-het-was.mdb"_s;
}

Row& Day::Spot(const QString& naam) {
  return model_.Find(u"tblItemSpots"_s, u"Naam"_s, naam);
}
Row& Day::Jingle(const QString& naam) {
  return model_.Find(u"tblItemPingles"_s, u"Naam"_s, naam);
}
Row& Day::Item(const QString& naam) {
  return model_.Find(u"tblItems"_s, u"Naam"_s, naam);
}

void Day::Live() {
  RunJourney(Station(), [this] { Walk(); });
}

void Day::Walk() {
  planner_.ChooseStation(u"Radio Demo"_s);
  WorkOnline();
  Desk::InWindows([this] { EXPECT_EQ(CatalogueModel::Of(Server()).Lines(), model_.Lines()); });
  ASSERT_TRUE(QFile::copy(Server(), ServerAsItWas()));
  planner_.GoOffline();
  FirstSpotsOffline();
  SecondSpotOffline();
  JinglesOffline();
  ItemsOffline();
  ExportOffline();
  ReturnOnline();
  planner_.Leave();
}

void Day::MakeSpot(const QString& naam, const QString& sound, int id) {
  planner_.MakeSpot({Station() + u"/audio/Spots/"_s + sound, naam, kToday, kLast});
  const QString path = u"D:\\audio\\Spots\\"_s + sound;
  const QString seconds = model_.Find(u"tblItemSpots"_s, u"Path"_s, path)[u"LengteSec"_s];
  model_.Add(u"tblItemSpots"_s, {{u"ID"_s, QString::number(id)},
                                 {u"Path"_s, path},
                                 {u"Naam"_s, naam},
                                 {u"LengteSec"_s, seconds},
                                 {u"StartPunt"_s, u"0"_s},
                                 {u"Mixpunt"_s, u"0"_s},
                                 {u"StartDatum"_s, Iso(kToday)},
                                 {u"StartUur"_s, u"0"_s},
                                 {u"EindDatum"_s, Iso(kLast)},
                                 {u"EindUur"_s, u"23"_s},
                                 {u"AantalGedraaid"_s, u"0"_s},
                                 {u"Aktief"_s, u"1"_s}});
}

void Day::MakeJingle(const QString& naam, const QString& sound) {
  planner_.MakeJingle({Station() + u"/audio/Jingles/"_s + sound, naam});
  const QString path = u"D:\\audio\\Jingles\\"_s + sound;
  const QString seconds = model_.Find(u"tblItemPingles"_s, u"Path"_s, path)[u"LengteSec"_s];
  model_.Add(u"tblItemPingles"_s, {{u"ID"_s, QString::number(model_.NextID(u"tblItemPingles"_s))},
                                   {u"Naam"_s, naam},
                                   {u"Path"_s, path},
                                   {u"LengteSec"_s, seconds},
                                   {u"StartPunt"_s, u"0"_s},
                                   {u"Mixpunt"_s, u"0"_s},
                                   {u"Aktief"_s, u"1"_s}});
}

Row Day::BlockRow(const BlockWork& work) {
  return {{u"ID"_s, QString::number(model_.NextID(u"tblItems"_s))},
          {u"Naam"_s, work.naam},
          {u"OptMeerdereSpots"_s, u"-1"_s},
          {u"AantalSpots"_s, QString::number(work.count)},
          {u"ChkRandomizeMeerdereSpots"_s, u"0"_s},
          {u"Opener"_s, Jingle(work.opener)[u"ID"_s]},
          {u"Midden"_s, Jingle(work.middle)[u"ID"_s]},
          {u"Sluiter"_s, Jingle(work.closer)[u"ID"_s]},
          {u"Aktief"_s, u"1"_s},
          {u"Locked"_s, u"0"_s}};
}

void Day::MakeListItem(const BlockWork& work, const QStringList& spots) {
  planner_.MakeListItem(work, spots);
  Row row = BlockRow(work);
  row[u"ItemSpotsOptID"_s] = u"1"_s;
  row[u"MaxAantalSpots"_s] = QString::number(spots.size());
  int order = 0;
  for (const QString& spot : spots) {
    model_.Add(u"tblItemsItemSpots"_s, {{u"ItemID"_s, row[u"ID"_s]},
                                        {u"ItemSpotOrder"_s, QString::number(++order)},
                                        {u"ItemSpotID"_s, Spot(spot)[u"ID"_s]}});
  }
  model_.Add(u"tblItems"_s, row);
}

void Day::MakePatternItem(const BlockWork& work) {
  planner_.MakePatternItem(work, {{u"audio"_s, u"Blokken"_s}, u"verkeer"_s, u"ww"_s, u"Maandag"_s, u"wav"_s, 1500, 9});
  Row row = BlockRow(work);
  row[u"ItemSpotsOptID"_s] = u"2"_s;
  row[u"MaxAantalSpots"_s] = u"9"_s;
  row[u"Opt2Directory"_s] = u"D:\\audio\\Blokken"_s;
  row[u"Opt2VastNaamGedeelte"_s] = u"verkeer"_s;
  row[u"Opt2VariabelNaamGedeelte"_s] = u"3"_s;
  row[u"Opt2FormatGedeelte"_s] = u"ww"_s;
  row[u"Opt2Eerstedagvanweek"_s] = u"2"_s;
  row[u"Opt2FileExtensie"_s] = u"wav"_s;
  row[u"Opt2MixPunt"_s] = u"1500"_s;
  model_.Add(u"tblItems"_s, row);
}

void Day::CleanUpItem(const QString& naam) {
  planner_.CleanUp(kItems, naam, {u"chkVerwijderID"_s});
  const QString id = Item(naam)[u"ID"_s];
  model_.Remove(u"tblItemsItemSpots"_s, u"ItemID"_s, id);
  model_.Remove(u"tblItems"_s, u"ID"_s, id);
}

void Day::WorkOnline() {
  planner_.Open(u"actItemSpots"_s, kSpots);
  MakeSpot(u"Bakker 't Online"_s, u"Brasserie Het Sluisje - menu.wav"_s, model_.NextID(u"tblItemSpots"_s));
  planner_.Close(kSpots);
  planner_.Open(u"actItems"_s, kItems);
  MakeListItem({u"Online lijst"_s, 1, u"Opener reclame avond"_s, u"Tussenstuk kort"_s, u"Sluiter Polderstem"_s},
               {u"Bakker 't Online"_s, u"Bakkerij Van Damme - paasbrood"_s});
  MakePatternItem(
      {u"Online patroon"_s, 2, u"Opener reclame ochtend"_s, u"Tussenstuk nieuws"_s, u"Sluiter Polderstem"_s});
  planner_.Close(kItems);
}

void Day::FirstSpotsOffline() {
  planner_.Open(u"actItemSpots"_s, kSpots);
  MakeSpot(u"Offline eerste"_s, u"Apotheek Centrum - griepprik.mp3"_s, model_.NextID(u"tblItemSpots"_s));
  const QString changed = u"Bakkerij Van Damme - paasbrood"_s;
  planner_.ChangeSpotEnd(changed, kLast);
  Spot(changed)[u"EindDatum"_s] = Iso(kLast);
  const QString old = u"Autobedrijf De Smet - opendeurdagen"_s;
  planner_.Deactivate(kSpots, old);
  Spot(old)[u"Aktief"_s] = u"0"_s;
  const QString gone = u"Koffiebranderij Mokka"_s;
  planner_.CleanUp(kSpots, gone, {u"chkVerwijderID"_s, u"chkVerwijderBestand"_s});
  const QString file = runtime::HostPath(Spot(gone)[u"Path"_s]);
  EXPECT_FALSE(QFile::exists(file)) << file.toStdString();
  model_.Remove(u"tblItemSpots"_s, u"Naam"_s, gone);
  planner_.Close(kSpots);
}

// Closing the list refreshed the local copy from the server, which also reset the highest number.
void Day::SecondSpotOffline() {
  planner_.Open(u"actItemSpots"_s, kSpots);
  EXPECT_FALSE(desk_.Lines(kSpots, u"lstOverzicht"_s).contains(u"Offline eerste"_s));
  MakeSpot(u"Offline tweede"_s, u"Apotheek Centrum - griepprik.mp3"_s, Spot(u"Offline eerste"_s)[u"ID"_s].toInt());
  planner_.Close(kSpots);
}

void Day::JinglesOffline() {
  planner_.Open(u"actItemPingles"_s, kJingles);
  MakeJingle(u"Opener 't Uur"_s, u"Sluiter Polderstem.wav"_s);
  planner_.RenameJingle(u"Tussenstuk kort"_s, u"Tussenstuk lang"_s);
  Jingle(u"Tussenstuk kort"_s)[u"Naam"_s] = u"Tussenstuk lang"_s;
  planner_.RemoveJingle(u"Sluiter weekend"_s);
  model_.Remove(u"tblItemPingles"_s, u"Naam"_s, u"Sluiter weekend"_s);
  planner_.Close(kJingles);
}

void Day::ItemsOffline() {
  planner_.Open(u"actItems"_s, kItems);
  MakeListItem({u"Offline lijst"_s, 2, u"Opener 't Uur"_s, u"Tussenstuk lang"_s, u"Sluiter Polderstem"_s},
               {u"Bakker 't Online"_s, u"Kaasboerderij Ter Linde"_s, u"Taxi Polder - dag en nacht"_s});
  MakePatternItem({u"Offline patroon"_s, 3, u"Opener 't Uur"_s, u"Tussenstuk lang"_s, u"Sluiter Polderstem"_s});
  const QString changed = u"Gemeentelijke mededelingen"_s;
  planner_.RemoveEntry(changed, u"Gemeente Wielmeer - wegwerkzaamheden"_s);
  const QString id = Item(changed)[u"ID"_s];
  model_.Remove(u"tblItemsItemSpots"_s, u"ItemID"_s, id);
  model_.Add(u"tblItemsItemSpots"_s, {{u"ItemID"_s, id}, {u"ItemSpotOrder"_s, u"1"_s}, {u"ItemSpotID"_s, u"30"_s}});
  model_.Add(u"tblItemsItemSpots"_s, {{u"ItemID"_s, id}, {u"ItemSpotOrder"_s, u"2"_s}, {u"ItemSpotID"_s, u"44"_s}});
  CleanUpItem(u"Blok voor het nieuws"_s);
  planner_.Close(kItems);
}

void Day::ExportOffline() {
  planner_.Open(u"actExporteren"_s, kExport);
  planner_.StartExport();
  desk_.Answer(u"Heeft U de vorige export-files reeds verwerkt met Kadrovia ?"_s, u"Ja"_s);
  planner_.EndExport();
  desk_.WaitForText(kMain, u"pnlLog"_s, u"0 wijzigingen nog niet geëxporteerd"_s);
  seconds_ += 10;  // the next file gets another name
}

// One more change, and the return to online mode with the export that it requires.
void Day::ReturnOnline() {
  planner_.Open(u"actItems"_s, kItems);
  planner_.Deactivate(kItems, u"Weekblok verkeer"_s);
  Item(u"Weekblok verkeer"_s)[u"Aktief"_s] = u"0"_s;
  planner_.Close(kItems);
  planner_.GoOnline();
  planner_.StartExport();
  planner_.EndExport();
  desk_.WaitUntilGone(kSettings);
  desk_.WaitForText(kMain, u"pnlModus"_s, u"Online"_s);
}
