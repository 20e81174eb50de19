// SPDX-License-Identifier: MIT
#include "data/stations/DemoCatalogue.h"

#include "platform/runtime/Dates.h"

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

constexpr auto kSpotNames = std::to_array<QStringView>({u"Autobedrijf De Smet - opendeurdagen",
                                                        u"Bakkerij Van Damme - paasbrood",
                                                        u"Boekhandel Lezenswaard",
                                                        u"Bouwmarkt Vermeulen - gereedschap",
                                                        u"Brillen Claes - tweede glas gratis",
                                                        u"Café De Zwaan - quizavond",
                                                        u"Fietsen Janssens - voorjaarsactie",
                                                        u"Gemeente Wielmeer - wegwerkzaamheden",
                                                        u"Kaasboerderij Ter Linde",
                                                        u"Kringwinkel Het Rad - inzameldag",
                                                        u"Meubelhuis Peeters - slaapweken",
                                                        u"Schouwburg De Kaai - seizoen",
                                                        u"Tuincentrum De Linde - lente",
                                                        u"Verzekeringen Maes & Zoon",
                                                        u"Vishandel De Steur - mosselweken",
                                                        u"Apotheek Centrum - griepprik",
                                                        u"Bioscoop Lumière - familiefilm",
                                                        u"Brasserie Het Sluisje - menu",
                                                        u"Camping De Duinen - vroegboeken",
                                                        u"Carwash Blinkend",
                                                        u"Dierenarts Hermans - vaccinatiedag",
                                                        u"Drankenhandel Goossens - bierweken",
                                                        u"Elektro Wouters - wasmachines",
                                                        u"Fitness Kracht & Balans",
                                                        u"Frituur 't Hoekje",
                                                        u"Garage Lambrecht - bandenwissel",
                                                        u"Golfclub Polderzicht - initiatie",
                                                        u"Hengelsport Van den Berg",
                                                        u"Hotel Zeezicht - arrangement",
                                                        u"Huisarts in opleiding - oproep",
                                                        u"IJssalon Vanille - opening",
                                                        u"Immo Polder - kijkdagen",
                                                        u"Jeugdhuis De Schuur - fuif",
                                                        u"Juwelier Diamant - trouwringen",
                                                        u"Kapsalon Knip & Krul",
                                                        u"Keukens Mertens - toonzaal",
                                                        u"Kinderboerderij Het Veulen",
                                                        u"Koffiebranderij Mokka",
                                                        u"Maaltijddienst Lekker Thuis",
                                                        u"Markt Wielmeer - elke woensdag",
                                                        u"Muziekschool Da Capo - inschrijven",
                                                        u"Natuurpunt - wandeling",
                                                        u"Notariskantoor Devos",
                                                        u"Ombudsdienst - uw rechten",
                                                        u"Optiek Zicht - zonnebrillen",
                                                        u"Papierhandel Schrift - schooltassen",
                                                        u"Parketvloeren Eik",
                                                        u"Pizzeria Napoli - afhalen",
                                                        u"Politiezone - BOB-campagne",
                                                        u"Reisbureau Horizon - last minutes",
                                                        u"Rode Kruis - bloedinzameling",
                                                        u"Schoenen Verbeke - koopjes",
                                                        u"Slagerij Aerts - barbecue",
                                                        u"Speelgoed De Tol - sinterklaas",
                                                        u"Sportwinkel Sprint - loopschoenen",
                                                        u"Taxi Polder - dag en nacht",
                                                        u"Theater De Vlieger - première",
                                                        u"Zonnepanelen Helder",
                                                        u"Zorgpunt - mantelzorg",
                                                        u"Zwembad De Dolfijn - zwemlessen"});

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
  for (int n = 0; n < std::ssize(kSpotNames); ++n) {
    const QString name = kSpotNames[static_cast<std::size_t>(n)].toString();
    Spot spot;
    spot.row.id = n + 1;
    spot.row.naam = name;
    spot.row.aktief = n % 15 == 13 ? 0 : 1;
    spot.row.startPunt = 0;
    spot.row.mixpunt = 800 + (n * 370) % 2600;
    SetValidity(spot.row, n, today);
    spot.seconds = 12 + (n * 7) % 22;
    spot.file = u"Spots\\"_s + FileName(name) + (n % 5 == 2 ? u".wav"_s : u".mp3"_s);
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
