// SPDX-License-Identifier: MIT
#include "data/ReadRows.h"

#include "platform/dao/Database.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

using namespace Qt::StringLiterals;

namespace {

std::optional<qint32> NumberField(const dao::Recordset& row, const QString& field) {
  const QVariant value = row.Field(field);
  if (!runtime::IsNumeric(value)) return std::nullopt;
  return runtime::ToLong(value);
}

qint32 NumberOrZero(const dao::Recordset& row, const QString& field) {
  return NumberField(row, field).value_or(0);
}

std::optional<qint32> DayField(const dao::Recordset& row, const QString& field) {
  const QVariant value = row.Field(field);
  if (!value.isValid()) return std::nullopt;
  return runtime::DayNumber(value.toDate());
}

// The fields that both kinds of audio record have.
template <class Row>
Row AudioRowOf(const dao::Recordset& row) {
  Row audio;
  audio.id = NumberOrZero(row, u"ID"_s);
  audio.path = runtime::TrimBlanks(row.Field(u"Path"_s).toString());
  audio.naam = row.Field(u"Naam"_s).toString();
  audio.lengteSec = NumberField(row, u"LengteSec"_s);
  audio.startPunt = NumberField(row, u"StartPunt"_s);
  audio.aktief = NumberOrZero(row, u"Aktief"_s);
  return audio;
}

template <class Read>
auto ReadOne(const Catalogue& catalogue, const QString& table, qint32 id, Read read)
    -> std::optional<decltype(read(std::declval<dao::Recordset>()))> {
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  const dao::Recordset row = database.OpenRecordset(u"SELECT "_s + table + u".* From " + table + u" WHERE " + table +
                                                    u".ID = " + QString::number(id));
  if (row.Eof()) return std::nullopt;
  return read(row);
}

}  // namespace

ItemSpotRow ItemSpotRowOf(const dao::Recordset& row) {
  auto spot = AudioRowOf<ItemSpotRow>(row);
  spot.mixpunt = NumberField(row, u"Mixpunt"_s);
  spot.startDatum = DayField(row, u"StartDatum"_s);
  spot.startUur = NumberField(row, u"StartUur"_s);
  spot.eindDatum = DayField(row, u"EindDatum"_s);
  spot.eindUur = NumberField(row, u"EindUur"_s);
  return spot;
}

ItemPingleRow ItemPingleRowOf(const dao::Recordset& row) {
  auto pingle = AudioRowOf<ItemPingleRow>(row);
  pingle.mixPunt = NumberField(row, u"Mixpunt"_s);
  return pingle;
}

ItemRow ItemRowOf(const dao::Recordset& row) {
  ItemRow item;
  item.id = NumberOrZero(row, u"ID"_s);
  item.naam = row.Field(u"Naam"_s).toString();
  item.aktief = NumberOrZero(row, u"Aktief"_s);
  item.locked = NumberOrZero(row, u"Locked"_s);
  item.itemSpotsOptID = NumberOrZero(row, u"ItemSpotsOptID"_s);
  item.opt2Directory = row.Field(u"Opt2Directory"_s).toString();
  item.opt2VastNaamGedeelte = row.Field(u"Opt2VastNaamGedeelte"_s).toString();
  item.opt2VariabelNaamGedeelte = NumberOrZero(row, u"Opt2VariabelNaamGedeelte"_s);
  item.opt2FormatGedeelte = row.Field(u"Opt2FormatGedeelte"_s).toString();
  item.opt2Eerstedagvanweek = NumberOrZero(row, u"Opt2Eerstedagvanweek"_s);
  item.opt2FileExtensie = row.Field(u"Opt2FileExtensie"_s).toString();
  item.opt2MixPunt = NumberOrZero(row, u"Opt2MixPunt"_s);
  item.optMeerdereSpots = NumberOrZero(row, u"OptMeerdereSpots"_s);
  item.aantalSpots = NumberOrZero(row, u"AantalSpots"_s);
  item.maxAantalSpots = NumberOrZero(row, u"MaxAantalSpots"_s);
  item.chkRandomizeMeerdereSpots = NumberOrZero(row, u"ChkRandomizeMeerdereSpots"_s);
  item.opener = NumberField(row, u"Opener"_s);
  item.midden = NumberField(row, u"Midden"_s);
  item.sluiter = NumberField(row, u"Sluiter"_s);
  return item;
}

std::optional<ItemSpotRow> ReadItemSpot(const Catalogue& catalogue, qint32 id) {
  return ReadOne(catalogue, catalogue.itemSpots, id, ItemSpotRowOf);
}

std::optional<ItemPingleRow> ReadItemPingle(const Catalogue& catalogue, qint32 id) {
  return ReadOne(catalogue, catalogue.itemPingles, id, ItemPingleRowOf);
}

std::optional<ItemRow> ReadItem(const Catalogue& catalogue, qint32 id) {
  return ReadOne(catalogue, catalogue.items, id, ItemRowOf);
}

std::vector<qint32> ReadSpotsOfItem(const Catalogue& catalogue, qint32 itemID) {
  const QString& link = catalogue.itemsItemSpots;
  dao::Recordset rows =
      dao::OpenDatabase(catalogue.databasePath)
          .OpenRecordset(u"SELECT "_s + link + u".ItemSpotOrder, " + link + u".ItemSpotID From " + link + u" WHERE " +
                         link + u".ItemID = " + QString::number(itemID) + u" ORDER BY " + link + u".ItemSpotOrder");
  std::vector<qint32> spots;
  for (; !rows.Eof(); rows.MoveNext()) {
    const std::optional<qint32> spot = NumberField(rows, u"ItemSpotID"_s);
    if (spot && ReadItemSpot(catalogue, *spot)) spots.push_back(*spot);
  }
  return spots;
}
