// SPDX-License-Identifier: MIT
#include "tools/MissingAudio.h"

#include "data/AudioList.h"
#include "data/Catalogue.h"
#include "data/LogQueue.h"
#include "data/ReadRows.h"
#include "data/Writes.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Probe.h"

using namespace Qt::StringLiterals;

namespace {

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
  AddMissing(missing, database, catalogue.itemSpots, ItemSpotRowOf);
  AddMissing(missing, database, catalogue.itemPingles, ItemPingleRowOf);
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
    QueueAudioPath(path);
  } else if (WasExecuted()) {
    AppendToAudioList(path);
  }
  return written;
}
