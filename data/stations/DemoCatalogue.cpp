// SPDX-License-Identifier: MIT
#include "data/stations/DemoCatalogue.h"

#include "platform/runtime/Dates.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

const QStringList& SpotNames() {
  static const QStringList names = {u"Autobedrijf De Smet - opendeurdagen"_s,
                                    u"Bakkerij Van Damme - paasbrood"_s,
                                    u"Boekhandel Lezenswaard"_s,
                                    u"Bouwmarkt Vermeulen - gereedschap"_s,
                                    u"Brillen Claes - tweede glas gratis"_s,
                                    u"Café De Zwaan - quizavond"_s,
                                    u"Fietsen Janssens - voorjaarsactie"_s,
                                    u"Gemeente Wielmeer - wegwerkzaamheden"_s,
                                    u"Kaasboerderij Ter Linde"_s,
                                    u"Kringwinkel Het Rad - inzameldag"_s,
                                    u"Meubelhuis Peeters - slaapweken"_s,
                                    u"Schouwburg De Kaai - seizoen"_s,
                                    u"Tuincentrum De Linde - lente"_s,
                                    u"Verzekeringen Maes & Zoon"_s,
                                    u"Vishandel De Steur - mosselweken"_s,
                                    u"Apotheek Centrum - griepprik"_s,
                                    u"Bioscoop Lumière - familiefilm"_s,
                                    u"Brasserie Het Sluisje - menu"_s,
                                    u"Camping De Duinen - vroegboeken"_s,
                                    u"Carwash Blinkend"_s,
                                    u"Dierenarts Hermans - vaccinatiedag"_s,
                                    u"Drankenhandel Goossens - bierweken"_s,
                                    u"Elektro Wouters - wasmachines"_s,
                                    u"Fitness Kracht & Balans"_s,
                                    u"Frituur 't Hoekje"_s,
                                    u"Garage Lambrecht - bandenwissel"_s,
                                    u"Golfclub Polderzicht - initiatie"_s,
                                    u"Hengelsport Van den Berg"_s,
                                    u"Hotel Zeezicht - arrangement"_s,
                                    u"Huisarts in opleiding - oproep"_s,
                                    u"IJssalon Vanille - opening"_s,
                                    u"Immo Polder - kijkdagen"_s,
                                    u"Jeugdhuis De Schuur - fuif"_s,
                                    u"Juwelier Diamant - trouwringen"_s,
                                    u"Kapsalon Knip & Krul"_s,
                                    u"Keukens Mertens - toonzaal"_s,
                                    u"Kinderboerderij Het Veulen"_s,
                                    u"Koffiebranderij Mokka"_s,
                                    u"Maaltijddienst Lekker Thuis"_s,
                                    u"Markt Wielmeer - elke woensdag"_s,
                                    u"Muziekschool Da Capo - inschrijven"_s,
                                    u"Natuurpunt - wandeling"_s,
                                    u"Notariskantoor Devos"_s,
                                    u"Ombudsdienst - uw rechten"_s,
                                    u"Optiek Zicht - zonnebrillen"_s,
                                    u"Papierhandel Schrift - schooltassen"_s,
                                    u"Parketvloeren Eik"_s,
                                    u"Pizzeria Napoli - afhalen"_s,
                                    u"Politiezone - BOB-campagne"_s,
                                    u"Reisbureau Horizon - last minutes"_s,
                                    u"Rode Kruis - bloedinzameling"_s,
                                    u"Schoenen Verbeke - koopjes"_s,
                                    u"Slagerij Aerts - barbecue"_s,
                                    u"Speelgoed De Tol - sinterklaas"_s,
                                    u"Sportwinkel Sprint - loopschoenen"_s,
                                    u"Taxi Polder - dag en nacht"_s,
                                    u"Theater De Vlieger - première"_s,
                                    u"Zonnepanelen Helder"_s,
                                    u"Zorgpunt - mantelzorg"_s,
                                    u"Zwembad De Dolfijn - zwemlessen"_s};
  return names;
}

// Removes the characters that some file systems reject.
QString FileName(QString name) {
  static const QString kRejected = u"'\"&/:?*<>|"_s;
  for (const QChar c : kRejected)
    name.remove(c);
  return name;
}

// Validity around today, in a fixed pattern with every state: running, not begun, ending soon, ended.
void SetValidity(ItemSpotRow& row, int n, QDate today) {
  QDate start = today.addDays(-5 - (n * 7) % 60);
  QDate end = today.addDays(12 + (n * 11) % 200);
  if (n % 9 == 1) {
    start = today.addDays(3 + n % 20);
    end = start.addDays(30);
  } else if (n % 13 == 3) {
    end = today.addDays(n % 7);
  } else if (n % 11 == 9) {
    end = today.addDays(-2 - n % 12);
    start = end.addDays(-40);
  }
  row.startDatum = runtime::DayNumber(start);
  row.eindDatum = runtime::DayNumber(end);
  row.startUur = n % 10 == 4 ? 6 : 0;
  row.eindUur = n % 10 == 4 ? 22 : 23;
}

Item ListItem(qint32 id, const QString& naam, QList<qint32> spots) {
  Item item;
  item.row.id = id;
  item.row.naam = naam;
  item.row.aktief = 1;
  item.row.itemSpotsOptID = 1;
  item.spots = std::move(spots);
  return item;
}

Item Several(Item item, qint32 count) {
  item.row.optMeerdereSpots = -1;
  item.row.aantalSpots = count;
  item.row.maxAantalSpots = static_cast<qint32>(item.spots.size());
  item.row.chkRandomizeMeerdereSpots = 1;
  return item;
}

Item Framed(Item item, qint32 opener, std::optional<qint32> middle, qint32 closer) {
  item.row.opener = opener;
  item.row.midden = middle;
  item.row.sluiter = closer;
  return item;
}

Item PatternItem(qint32 id, const QString& naam, const QString& fixedPart, int code, const QString& format) {
  Item item = ListItem(id, naam, {});
  item.row.itemSpotsOptID = 2;
  item.row.opt2Directory = u"D:\\audio\\Blokken"_s;
  item.row.opt2VastNaamGedeelte = fixedPart;
  item.row.opt2VariabelNaamGedeelte = code;
  item.row.opt2FormatGedeelte = format;
  item.row.opt2Eerstedagvanweek = code == 3 ? 2 : 0;
  item.row.opt2FileExtensie = u"wav"_s;
  item.row.opt2MixPunt = 1500;
  return item;
}

}  // namespace

QList<Spot> Spots(QDate today) {
  QList<Spot> spots;
  const QStringList& names = SpotNames();
  for (int n = 0; n < names.size(); ++n) {
    Spot spot;
    spot.row.id = n + 1;
    spot.row.naam = names[n];
    spot.row.aktief = n % 15 == 13 ? 0 : 1;
    spot.row.startPunt = 0;
    spot.row.mixpunt = 800 + (n * 370) % 2600;
    SetValidity(spot.row, n, today);
    spot.seconds = 12 + (n * 7) % 22;
    spot.file = u"Spots\\"_s + FileName(names[n]) + (n % 5 == 2 ? u".wav"_s : u".mp3"_s);
    spot.missing = n == 5;
    if (n % 9 != 1) {
      spot.playCount = (n * 37) % 160;
      if (spot.playCount > 0) {
        spot.lastPlayed = QDateTime(today.addDays(-1 - n % 3), QTime(7 + n % 14, (n * 17) % 60, (n * 29) % 60));
      }
    }
    spots += spot;
  }
  return spots;
}

QList<Jingle> Jingles() {
  const QStringList names = {u"Opener reclame ochtend"_s, u"Opener reclame avond"_s, u"Tussenstuk kort"_s,
                             u"Tussenstuk nieuws"_s,      u"Sluiter Polderstem"_s,   u"Sluiter weekend"_s};
  QList<Jingle> jingles;
  for (int n = 0; n < names.size(); ++n) {
    Jingle jingle;
    jingle.row.id = n + 1;
    jingle.row.naam = names[n];
    jingle.row.aktief = 1;
    jingle.row.startPunt = 0;
    jingle.row.mixPunt = 250 + 50 * n;
    jingle.seconds = 3 + n % 4;
    jingle.file = u"Jingles\\"_s + names[n] + (n % 2 == 0 ? u".wav"_s : u".mp3"_s);
    jingles += jingle;
  }
  return jingles;
}

QList<Item> Items() {
  return {Framed(Several(ListItem(1, u"Reclameblok ochtend 07.20"_s, {1, 7, 9, 11, 13}), 3), 1, std::nullopt, 5),
          Framed(Several(ListItem(2, u"Reclameblok ochtend 08.20"_s, {3, 5, 8, 15, 20, 22}), 4), 1, 3, 5),
          Framed(ListItem(3, u"Reclameblok middag 12.05"_s, {4, 12, 16}), 1, std::nullopt, 5),
          Framed(Several(ListItem(4, u"Reclameblok middag 13.05"_s, {17, 18, 23, 24}), 2), 1, 4, 5),
          Framed(Several(ListItem(5, u"Reclameblok avond 17.20"_s, {26, 29, 32, 33, 35}), 3), 2, std::nullopt, 6),
          Framed(Several(ListItem(6, u"Reclameblok avond 18.20"_s, {36, 38, 40, 41, 42, 44}), 5), 2, 3, 6),
          Framed(ListItem(7, u"Blok voor het nieuws"_s, {8, 49}), 1, std::nullopt, 5),
          ListItem(8, u"Gemeentelijke mededelingen"_s, {8, 30, 44}),
          PatternItem(9, u"Weekblok verkeer"_s, u"verkeer"_s, 3, u"ww"_s),
          PatternItem(10, u"Dagblok weer"_s, u"weer"_s, 1, u"ddmmyyyy"_s),
          PatternItem(11, u"Uurblok partners"_s, u"partner"_s, 2, u"ddmmyyyyhh"_s),
          PatternItem(12, u"Maandblok cultuur"_s, u"cultuur"_s, 4, u"mm"_s)};
}

}  // namespace demo
