// SPDX-License-Identifier: MIT
#include "export/apply/Conflicts.h"
#include "export/apply/Ledger.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

bool IsWritten(const QString& field) {
  return field != u"ID"_s && !IsPlayCount(field);
}

const dao::Value& ValueIn(const Conflict& conflict, const Row& row, const QString& field) {
  return row[static_cast<std::size_t>(conflict.fields.indexOf(field))];
}

bool HasValues(const Conflict& conflict, const std::optional<Row>& row) {
  return row && row->size() == static_cast<std::size_t>(conflict.fields.size());
}

// Whether the workstation changed the field.
bool IsChanged(const Conflict& conflict, const QString& field) {
  if (!HasValues(conflict, conflict.base) || !HasValues(conflict, conflict.offline)) return true;
  return !basis::Same(ValueIn(conflict, *conflict.base, field), ValueIn(conflict, *conflict.offline, field));
}

class Settling {
 public:
  explicit Settling(dao::StatementTransaction& transaction) : transaction_(transaction), target_(transaction) {}

  void Take(Conflict& conflict, Side side) {
    if (conflict.choice == side) return;
    const bool wasOffline = conflict.choice == Side::Offline;
    if (side == Side::Offline) {
      KeepServer(conflict);
      Write(conflict, conflict.offline, conflict.offlineList);
    } else if (wasOffline) {
      Write(conflict, conflict.server, conflict.serverList);
    } else {
      KeepServer(conflict);
    }
  }

 private:
  // What the server has now comes back when its side is taken later.
  void KeepServer(Conflict& conflict) {
    conflict.server.reset();
    if (const auto found = target_.Find(conflict.table, conflict.number)) {
      conflict.server.emplace();
      for (const QString& field : std::as_const(conflict.fields))
        conflict.server->push_back(found->row[target_.Place(conflict.table, field)]);
    }
    if (conflict.hasLists) conflict.serverList = target_.SpotsOf(conflict.number);
    // The other record keeps its number and stays as it is.
    if (conflict.reason != Reason::OtherRecord || !conflict.offline) return;
    conflict.number = NewNumber(conflict.table);
    conflict.server.reset();
    conflict.serverList.clear();
  }

  void Write(const Conflict& conflict, const std::optional<Row>& version, const SpotList& list) {
    const auto found = target_.Find(conflict.table, conflict.number);
    if (!version) {
      if (found) target_.Delete(conflict.table, found->id);
    } else if (found) {
      std::vector<dao::FieldValue> changes;
      for (const QString& field : conflict.fields) {
        if (!IsWritten(field) || !IsChanged(conflict, field)) continue;
        changes.emplace_back(target_.Place(conflict.table, field), ValueIn(conflict, *version, field));
      }
      target_.Update(conflict.table, found->id, changes);
    } else {
      Row row = target_.RowOf(conflict.table, conflict.fields, *version);
      row[target_.Place(conflict.table, u"ID"_s)] = std::int64_t{conflict.number};
      target_.Insert(conflict.table, row);
    }
    if (conflict.hasLists && conflict.baseList != conflict.offlineList) target_.ReplaceSpotsOf(conflict.number, list);
  }

  qint64 NewNumber(Table table) {
    qint64 highest = target_.Highest(table);
    for (const Processed& row : ReadLedger(transaction_))
      highest = std::max(highest, row.highest[static_cast<std::size_t>(table)]);
    return highest + 1;
  }

  dao::StatementTransaction& transaction_;
  TargetTables target_;
};

QString ShownValue(const QString& field, const dao::Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return QString::fromStdU16String(*text);
  const bool isDate = field.endsWith(u"Datum"_s);
  const auto number = [&](double day) {
    return isDate ? runtime::FormatDate(runtime::MomentOfDayNumber(day), u"dd-mm-yyyy"_s) : QString::number(day);
  };
  if (const auto* whole = std::get_if<std::int64_t>(&value))
    return isDate ? number(static_cast<double>(*whole)) : QString::number(*whole);
  if (const auto* day = std::get_if<double>(&value)) return number(*day);
  return {};
}

QString ShownList(const SpotList& list) {
  QStringList spots;
  for (const auto& [order, spot] : list)
    spots += QString::number(spot);
  return spots.join(u", "_s);
}

QString ShownField(const Conflict& conflict, const std::optional<Row>& row, const QString& field) {
  return HasValues(conflict, row) ? ShownValue(field, ValueIn(conflict, *row, field)) : QString();
}

}  // namespace

QList<FieldDifference> DifferencesOf(const Conflict& conflict) {
  QList<FieldDifference> differences;
  for (const QString& field : conflict.fields) {
    if (!IsWritten(field)) continue;
    const FieldDifference difference{field, ShownField(conflict, conflict.base, field),
                                     ShownField(conflict, conflict.offline, field),
                                     ShownField(conflict, conflict.server, field), false};
    if (difference.offline == difference.server && difference.before == difference.offline) continue;
    differences += difference;
    differences.last().isConflict = difference.offline != difference.before && difference.server != difference.before &&
                                    difference.offline != difference.server;
  }
  if (conflict.hasLists && (conflict.baseList != conflict.offlineList || conflict.baseList != conflict.serverList)) {
    differences +=
        {u"Spots"_s, ShownList(conflict.baseList), ShownList(conflict.offlineList), ShownList(conflict.serverList),
         conflict.baseList != conflict.offlineList && conflict.baseList != conflict.serverList};
  }
  return differences;
}

void Settle(const QString& database, const QList<qint64>& ids, Side side, const QString& who) {
  dao::StatementTransaction transaction(dao::OpenDatabase(database));
  QList<Conflict> conflicts = ReadConflicts(transaction, true);
  Settling settling(transaction);
  for (const qint64 id : ids) {
    const auto conflict = std::ranges::find(conflicts, id, &Conflict::id);
    if (conflict == conflicts.end()) {
      throw runtime::Error(
          u"Er is geen botsing met nummer %1 in '%2'. Er is niets gewijzigd."_s.arg(QString::number(id), database));
    }
    settling.Take(*conflict, side);
    conflict->choice = side;
    conflict->chosen = runtime::Now();
    conflict->who = who;
    StoreConflict(transaction, *conflict);
  }
  if (!ids.isEmpty()) transaction.Commit();
}

}  // namespace apply
