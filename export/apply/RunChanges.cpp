// SPDX-License-Identifier: MIT
// What a statement of an export does, in the numbers of the shared database.
#include "export/apply/Run.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {

qint64 Run::NextNumber(Table table) {
  qint64& highest = highest_[At(table)];
  highest = std::max(highest, wanted_[At(table)]) + 1;
  return highest;
}

qint64 Run::ServerNumber(Table table, qint64 number, const basis::Entry* entry) const {
  const OwnNumbers::Own* own = numbers_->Find(table, number);
  if (own == nullptr) return number;
  if (entry != nullptr) {
    for (const basis::Reference& reference : entry->references) {
      if (reference.table != NameOf(table) || reference.id != number) continue;
      return numbers_->FindAs(table, number, reference.fingerprint) != nullptr ? own->server : number;
    }
  }
  return own->server;
}

void Run::FollowReferences(Row& row, const basis::Entry* entry) {
  for (const QString& field : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
    dao::Value& value = row[target_.Place(Table::Items, field)];
    if (const auto* number = std::get_if<std::int64_t>(&value))
      value = std::int64_t{ServerNumber(Table::Jingles, *number, entry)};
  }
}

// The log has "*" for an apostrophe, and no way to tell which of the two was meant.
QString Run::WithApostrophes(const ExportStatement& statement, const QString& field, const QString& text) {
  QString restored = text;
  restored.replace(u'*', u'\'');
  Note(statement.line, u"%1: \"*\" in %2 is gelezen als een apostrof: \"%3\""_s.arg(
                           RecordText(statement.table, statement.key, {}), field, restored));
  return restored;
}

Row Run::RowOfStatement(std::size_t place) {
  ExportStatement statement = file_.statements[place];
  for (auto& [field, value] : statement.values) {
    const auto* text = std::get_if<std::u16string>(&value);
    if (text == nullptr || text->find(u'*') == std::u16string::npos) continue;
    value = WithApostrophes(statement, field, QString::fromStdU16String(*text)).toStdU16String();
  }
  return target_.RowOf(statement);
}

void Run::TakeList(const Unit& unit, Change& change) {
  change.hasList = unit.HasList();
  for (const std::size_t place : unit.links) {
    qint64 order = 0;
    qint64 spot = 0;
    for (const auto& [field, value] : file_.statements[place].values) {
      const auto* number = std::get_if<std::int64_t>(&value);
      if (number == nullptr) continue;
      if (field == u"ItemSpotOrder"_s) order = *number;
      if (field == u"ItemSpotID"_s) spot = *number;
    }
    change.list.emplace_back(order, ServerNumber(Table::Spots, spot, file_.EntryOf(place)));
  }
  std::ranges::sort(change.list);
  const basis::Entry* entry = unit.clear ? file_.EntryOf(*unit.clear) : nullptr;
  if (entry == nullptr) return;
  change.baseList.emplace();
  const qsizetype order = entry->fields.indexOf(u"ItemSpotOrder"_s);
  const qsizetype spot = entry->fields.indexOf(u"ItemSpotID"_s);
  if (order < 0 || spot < 0) return;
  const auto numberIn = [](const basis::Row& row, qsizetype field) {
    const auto* number = std::get_if<std::int64_t>(&row[static_cast<std::size_t>(field)]);
    return number != nullptr ? qint64{*number} : 0;
  };
  for (const basis::Row& row : entry->before)
    change.baseList->emplace_back(numberIn(row, order), ServerNumber(Table::Spots, numberIn(row, spot), entry));
  std::ranges::sort(*change.baseList);
}

const OwnNumbers::Own* Run::TakeBasis(const Unit& unit, const ExportStatement& statement, Change& change) {
  const auto take = [&](const QList<basis::Row>& rows, std::optional<Row>& row, QString& fingerprint) {
    if (rows.isEmpty()) return;
    row = target_.RowOf(unit.table, change.entry->fields, rows.first());
    if (unit.table == Table::Items) FollowReferences(*row, change.entry);
    if (statement.verb == Verb::Insert || numbers_->Find(unit.table, unit.key) != nullptr)
      fingerprint = basis::Fingerprint(rows.first());
  };
  take(change.entry->before, change.base, change.before);
  take(change.entry->after, change.after, change.fingerprint);
  change.fields = target_.FieldNames(unit.table);
  return numbers_->FindAs(unit.table, unit.key, change.before);
}

const OwnNumbers::Own* Run::TakeStatement(const Unit& unit, const ExportStatement& statement, Change& change) {
  if (!change.deletes) change.after = RowOfStatement(*unit.record);
  if (change.after && unit.table == Table::Items) FollowReferences(*change.after, nullptr);
  change.fields += u"ID"_s;
  for (const auto& [field, value] : statement.values) {
    if (field != u"ID"_s) change.fields += field;
  }
  return numbers_->Find(unit.table, unit.key);
}

Run::Change Run::ChangeOf(const Unit& unit) {
  Change change;
  change.table = unit.table;
  change.key = unit.key;
  const ExportStatement& statement = file_.statements[*unit.record];
  change.line = statement.line;
  change.deletes = statement.verb == Verb::Delete;
  change.entry = file_.EntryOf(*unit.record);
  const OwnNumbers::Own* own =
      change.entry != nullptr ? TakeBasis(unit, statement, change) : TakeStatement(unit, statement, change);
  change.number = own != nullptr && statement.verb != Verb::Insert ? own->server : unit.key;
  for (std::optional<Row>* row : {&change.base, &change.after}) {
    if (*row) (**row)[target_.Place(unit.table, u"ID"_s)] = std::int64_t{change.number};
  }
  if (own != nullptr && statement.verb != Verb::Insert && (change.entry == nullptr || change.base))
    numbers_->SetFingerprint(unit.table, unit.key, change.deletes ? OwnNumbers::kDeleted : change.fingerprint);
  TakeList(unit, change);
  return change;
}

}  // namespace apply
