// SPDX-License-Identifier: MIT
#include "tools/MissingAudio.h"

#include "data/AudioList.h"
#include "data/Catalogue.h"
#include "data/KeptStatements.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

std::optional<qint32> NumberIn(const dao::Recordset& row, const QString& field) {
  const QVariant value = row.Field(field);
  if (!runtime::IsNumeric(value)) return std::nullopt;
  return runtime::ToLong(value);
}

std::optional<qint32> DayIn(const dao::Recordset& row, const QString& field) {
  const QVariant value = row.Field(field);
  if (!value.isValid()) return std::nullopt;
  return runtime::DayNumber(value.toDate());
}

// The fields that both kinds of record have.
template <class Row>
Row CommonRow(const dao::Recordset& row) {
  Row common;
  common.id = NumberIn(row, u"ID"_s).value_or(0);
  common.path = runtime::TrimBlanks(row.Field(u"Path"_s).toString());
  common.naam = row.Field(u"Naam"_s).toString();
  common.lengteSec = NumberIn(row, u"LengteSec"_s);
  common.startPunt = NumberIn(row, u"StartPunt"_s);
  common.aktief = NumberIn(row, u"Aktief"_s).value_or(0);
  return common;
}

ItemSpotRow SpotRow(const dao::Recordset& row) {
  auto spot = CommonRow<ItemSpotRow>(row);
  spot.mixpunt = NumberIn(row, u"Mixpunt"_s);
  spot.startDatum = DayIn(row, u"StartDatum"_s);
  spot.startUur = NumberIn(row, u"StartUur"_s);
  spot.eindDatum = DayIn(row, u"EindDatum"_s);
  spot.eindUur = NumberIn(row, u"EindUur"_s);
  return spot;
}

ItemPingleRow PingleRow(const dao::Recordset& row) {
  auto pingle = CommonRow<ItemPingleRow>(row);
  pingle.mixPunt = NumberIn(row, u"Mixpunt"_s);
  return pingle;
}

template <class Read>
void AddMissing(QList<MissingAudio>& missing, dao::Database& database, const QString& table, Read read) {
  dao::Recordset rows = database.OpenRecordset(u"SELECT * FROM "_s + table + u" ORDER BY ID"_s);
  for (; !rows.Eof(); rows.MoveNext()) {
    MissingAudio sound{read(rows)};
    if (sound.Path().isEmpty()) continue;
    sound.presence = runtime::Probe(sound.Path());
    if (sound.presence != runtime::Presence::There) missing += sound;
  }
}

}  // namespace

qint32 MissingAudio::Id() const {
  return std::visit([](const auto& one) { return one.id; }, row);
}

const QString& MissingAudio::Naam() const {
  return std::visit([](const auto& one) -> const QString& { return one.naam; }, row);
}

const QString& MissingAudio::Path() const {
  return std::visit([](const auto& one) -> const QString& { return one.path; }, row);
}

const std::optional<qint32>& MissingAudio::LengteSec() const {
  return std::visit([](const auto& one) -> const std::optional<qint32>& { return one.lengteSec; }, row);
}

QList<MissingAudio> FindMissingAudio() {
  const Catalogue catalogue = CurrentCatalogue();
  dao::Database database = dao::OpenDatabase(catalogue.databasePath, {.readOnly = true});
  QList<MissingAudio> missing;
  AddMissing(missing, database, catalogue.itemSpots, SpotRow);
  AddMissing(missing, database, catalogue.itemPingles, PingleRow);
  return missing;
}

bool UpdatePath(MissingAudio& sound, const QString& path) {
  const Catalogue catalogue = CurrentCatalogue();
  std::visit([&path](auto& row) { row.path = path; }, sound.row);
  const bool written =
      sound.IsSpot()
          ? Update_tblItemSpots(std::get<ItemSpotRow>(sound.row), catalogue.databasePath, catalogue.itemSpots)
          : Update_tblItemPingles(std::get<ItemPingleRow>(sound.row), catalogue.databasePath, catalogue.itemPingles);
  if (WaitsForLog()) {
    KeepAudioPath(path);
  } else if (WasCarriedOut()) {
    AppendToAudioList(path);
  }
  return written;
}
