// SPDX-License-Identifier: MIT
#include "export/playout/AirLedger.h"

#include "platform/dao/Database.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString kSettings = u"cdeInstellingen"_s;
const QString kSwitch = u"UitzendingenYn"_s;

dao::FieldDef Field(const QString& name, dao::FieldType type, int size = 0) {
  dao::FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

dao::IndexDef PrimaryKey(const QStringList& fields) {
  dao::IndexDef index;
  index.name = u"PrimaryKey"_s;
  for (const QString& field : fields)
    index.fields.append({field, dao::Direction::Ascending});
  index.primary = index.unique = index.required = true;
  return index;
}

dao::TableDef LedgerDef() {
  return {kLedgerTable,
          {Field(u"ItemSpotID"_s, dao::FieldType::Long), Field(u"Moment"_s, dao::FieldType::Date),
           Field(u"ItemID"_s, dao::FieldType::Long)},
          {PrimaryKey({u"ItemSpotID"_s, u"Moment"_s})}};
}

dao::TableDef SettingsDef() {
  return {kSettings,
          {Field(u"InitCode"_s, dao::FieldType::Text, 50), Field(u"InitValue"_s, dao::FieldType::Text, 255)},
          {PrimaryKey({u"InitCode"_s})}};
}

bool Has(dao::Database& database, const QString& table) {
  return database.TableNames().contains(table, Qt::CaseInsensitive);
}

bool IsOn(dao::Database& database) {
  if (!Has(database, kSettings) || !Has(database, kLedgerTable)) return false;
  const dao::Recordset row =
      database.OpenRecordset(u"SELECT InitValue FROM %1 WHERE InitCode = \"%2\""_s.arg(kSettings, kSwitch));
  return !row.Eof() && row.Field(0).toString() == u"-1"_s;
}

// The item-spot table of this file: that of the shared database, else the local copy.
std::unique_ptr<dao::Table> SpotTable(dao::Storage& storage) {
  for (const QString& name : {u"tblItemSpots"_s, u"tblCopie_ItemSpots"_s}) {
    if (auto table = storage.OpenTable(name)) return table;
  }
  throw runtime::Error(u"In '%1' staan geen item-spots."_s.arg(storage.PathText()));
}

std::size_t FieldPlace(const dao::Table& table, const QString& field) {
  const int place = table.Definition().FieldIndex(field);
  if (place < 0) throw runtime::Error(u"De tabel '%1' heeft geen veld '%2'."_s.arg(table.Definition().name, field));
  return static_cast<std::size_t>(place);
}

double NumberOf(const dao::ValueView& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* number = std::get_if<double>(&value)) return *number;
  return 0;
}

// Old and new values of a spot's row.
struct Spot {
  dao::RowId row = 0;
  std::int64_t count = 0;
  double last = 0;  // day number
  bool changed = false;
};

class Counting {
 public:
  explicit Counting(dao::Storage& storage)
      : ledger_(storage.OpenTable(kLedgerTable)),
        spots_(SpotTable(storage)),
        id_(FieldPlace(*spots_, u"ID"_s)),
        count_(FieldPlace(*spots_, u"AantalGedraaid"_s)),
        last_(FieldPlace(*spots_, u"LaatstGedraaid"_s)) {
    dao::FieldMask wanted;
    wanted.set(id_).set(count_).set(last_);
    for (const auto rows = spots_->Scan(wanted); rows->Next();) {
      known_.insert(
          static_cast<qint32>(NumberOf(rows->Field(id_))),
          {rows->Id(), static_cast<std::int64_t>(NumberOf(rows->Field(count_))), NumberOf(rows->Field(last_))});
    }
  }

  void Take(const Airing& airing) {
    const double moment = runtime::DayNumber(airing.moment);
    const std::vector<dao::Value> key{std::int64_t{airing.spotID}, moment};
    if (ledger_->Lookup(0, key, {})->Next()) {
      ++result_.known;
      return;
    }
    const dao::Value item = airing.itemID > 0 ? dao::Value(std::int64_t{airing.itemID}) : dao::Value();
    ledger_->Insert({key[0], key[1], item});
    ++result_.added;
    const auto spot = known_.find(airing.spotID);
    if (spot == known_.end()) {
      ++result_.unknown;
      return;
    }
    ++spot->count;
    // In whole seconds, as existing databases store this field.
    constexpr double kSeconds = 86'400;
    spot->last = std::max(spot->last, std::floor(moment * kSeconds + 1e-4) / kSeconds);
    spot->changed = true;
  }

  AiringCount Write() {
    for (const Spot& spot : std::as_const(known_)) {
      if (!spot.changed) continue;
      const std::vector<dao::FieldValue> changes{{count_, spot.count}, {last_, spot.last}};
      spots_->Update(spot.row, changes);
    }
    return result_;
  }

 private:
  std::unique_ptr<dao::Table> ledger_;
  std::unique_ptr<dao::Table> spots_;
  std::size_t id_;
  std::size_t count_;
  std::size_t last_;
  QHash<qint32, Spot> known_;
  AiringCount result_;
};

}  // namespace

bool IsCountingOn(const QString& databasePath, const QString& password) {
  dao::Database database = dao::OpenDatabase(databasePath, {password, true});
  return IsOn(database);
}

void SwitchCounting(const QString& databasePath, bool on, const QString& password) {
  dao::Database database = dao::OpenDatabase(databasePath, {password});
  if (!Has(database, kSettings)) database.CreateTable(SettingsDef());
  if (!Has(database, kLedgerTable)) database.CreateTable(LedgerDef());
  const QString value = on ? u"-1"_s : u"0"_s;
  const QString change = u"UPDATE %1 SET InitValue = \"%2\" WHERE InitCode = \"%3\""_s.arg(kSettings, value, kSwitch);
  if (database.Execute(change) > 0) return;
  database.Execute(u"INSERT INTO %1 (InitCode, InitValue) VALUES (\"%2\", \"%3\")"_s.arg(kSettings, kSwitch, value));
}

AiringCount CountAirings(const QString& databasePath, const std::vector<Airing>& airings, const QString& password) {
  if (!IsCountingOn(databasePath, password)) {
    throw runtime::Error(
        u"In '%1' staat het tellen van uitzendingen uit. Zet het aan met --aan, als geen ander programma dat doet."_s
            .arg(databasePath));
  }
  const auto storage = dao::OpenStorage(databasePath, {password});
  const auto writing = storage->Begin(dao::Access::Write);
  AiringCount result;
  {
    Counting counting(*storage);
    for (const Airing& airing : airings)
      counting.Take(airing);
    result = counting.Write();
  }
  writing->Commit();
  return result;
}
