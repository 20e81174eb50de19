// SPDX-License-Identifier: MIT
// What waits for a person.
#include "export/apply/Run.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {

// The conflict that the change continues: its row before is the one that waits.
Conflict* Run::WaitingOn(Change& change) {
  for (qsizetype i = 0; i < conflicts_.size(); ++i) {
    Conflict& conflict = conflicts_[i];
    if (!conflict.IsWaiting() || conflict.table != change.table || conflict.number != change.number) continue;
    if (change.base && change.before.isEmpty()) change.before = basis::Fingerprint(change.entry->before.first());
    if (change.base && change.after) change.fingerprint = basis::Fingerprint(change.entry->after.first());
    if (!change.before.isEmpty() && !conflict.fingerprint.isEmpty() && change.before != conflict.fingerprint) continue;
    changedConflicts_[static_cast<std::size_t>(i)] = true;
    return &conflict;
  }
  return nullptr;
}

void Run::Extend(Conflict& conflict, const Change& change) {
  const auto only = [&](const Row& row) {
    Row values;
    for (const QString& field : conflict.fields)
      values.push_back(row[target_.Place(change.table, field)]);
    return values;
  };
  if (change.deletes) conflict.offline.reset();
  if (change.after && conflict.offline) {
    for (const QString& field : change.fields) {
      if (!conflict.fields.contains(field)) continue;
      (*conflict.offline)[static_cast<std::size_t>(conflict.fields.indexOf(field))] =
          (*change.after)[target_.Place(change.table, field)];
    }
  } else if (change.after) {
    conflict.offline = only(*change.after);
  }
  if (change.hasList || (change.deletes && conflict.table == Table::Items)) {
    if (!conflict.hasLists) {
      conflict.serverList = target_.SpotsOf(conflict.number);
      conflict.baseList = change.baseList.value_or(conflict.serverList);
    }
    conflict.hasLists = true;
    conflict.offlineList = change.list;
  }
  conflict.fingerprint = change.deletes ? OwnNumbers::kDeleted : change.fingerprint;
  Add(What::Conflict, change, u"%1 hoort bij een botsing die nog wacht"_s.arg(Shown(change)));
}

void Run::Wait(const Change& change, Reason reason, const std::optional<Row>& server, const SpotList& serverList) {
  Conflict conflict;
  conflict.fileID = fileID_;
  conflict.source = options_.source;
  conflict.table = change.table;
  conflict.number = change.number;
  conflict.reason = reason;
  conflict.fields = change.fields;
  if (change.after || change.base) conflict.fields = change.base ? target_.FieldNames(change.table) : change.fields;
  const auto only = [&](const std::optional<Row>& row) {
    std::optional<Row> values;
    if (!row) return values;
    values.emplace();
    for (const QString& field : std::as_const(conflict.fields))
      values->push_back((*row)[target_.Place(change.table, field)]);
    return values;
  };
  conflict.base = only(change.base);
  conflict.offline = only(change.after);
  conflict.server = only(server);
  conflict.hasLists = change.hasList;
  if (change.hasList) {
    conflict.baseList = change.baseList.value_or(serverList);
    conflict.offlineList = change.list;
    conflict.serverList = serverList;
  }
  conflict.fingerprint = change.deletes ? OwnNumbers::kDeleted : change.fingerprint;
  if (change.after && change.entry != nullptr) conflict.fingerprint = basis::Fingerprint(change.entry->after.first());
  StoreConflict(transaction_, conflict);
  Add(What::Conflict, change,
      u"%1 botst: %2 (botsing %3)"_s.arg(Shown(change), TextFor(reason), QString::number(conflict.id)));
  conflicts_ += std::move(conflict);
  changedConflicts_.push_back(false);
}

}  // namespace apply
