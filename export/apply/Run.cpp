// SPDX-License-Identifier: MIT
#include "export/apply/Run.h"

#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

constexpr std::size_t kBetweenProgress = 200;  // statements

QString MomentText(const QDateTime& moment) {
  return moment.toString(u"dd-MM-yyyy HH:mm:ss"_s);
}

}  // namespace

Run::Run(dao::StatementTransaction& transaction, const ExportFile& file, const Options& options)
    : transaction_(transaction), file_(file), options_(options), target_(transaction) {}

Result Run::Do() {
  MakeLedgerTables(transaction_);
  const QList<Processed> ledger = ReadLedger(transaction_);
  if (const auto processed = FindProcessed(ledger, file_, options_.source)) return DoneBefore(file_, *processed);
  RequireOrder(ledger);
  numbers_.emplace(transaction_, options_.source);
  for (Conflict& conflict : ReadConflicts(transaction_, false)) {
    if (conflict.source.compare(options_.source, Qt::CaseInsensitive) == 0) conflicts_ += std::move(conflict);
  }
  changedConflicts_.resize(static_cast<std::size_t>(conflicts_.size()));
  fileID_ = ledger.isEmpty() ? 1 : ledger.last().id + 1;
  for (const Table table : {Table::Items, Table::Spots, Table::Jingles}) {
    seen_[At(table)] = target_.Highest(table);
    for (const Processed& row : ledger)
      seen_[At(table)] = std::max(seen_[At(table)], row.highest[At(table)]);
  }
  highest_ = seen_;
  for (const ExportStatement& statement : file_.statements) {
    if (statement.verb == Verb::Insert && statement.table != Table::Links)
      wanted_[At(statement.table)] = std::max(wanted_[At(statement.table)], statement.key);
  }
  result_.path = file_.path;
  result_.hasBasis = file_.basis.has_value();
  result_.statements = static_cast<int>(file_.statements.size());
  result_.processed = runtime::Now();
  result_.processedName = file_.name;
  if (!result_.hasBasis && result_.statements > 0) {
    Note(0, u"dit bestand heeft geen basis: waar ook op de server iets gewijzigd is, wint dit bestand"_s);
  }
  std::size_t reported = 0;
  for (std::size_t place = 0; place < file_.statements.size();) {
    Unit unit;
    place += TakeUnit(place, unit);
    Handle(unit);
    if (!options_.progress || place < reported + kBetweenProgress) continue;
    reported = place;
    options_.progress(static_cast<int>(place), result_.statements);
  }
  numbers_->Store();
  for (std::size_t i = 0; i < changedConflicts_.size(); ++i) {
    if (changedConflicts_[i]) StoreConflict(transaction_, conflicts_[static_cast<qsizetype>(i)]);
  }
  AddToLedger(transaction_, {fileID_, file_.basis ? file_.basis->exportID : QString(), options_.source, file_.name,
                             file_.stamp, QString::fromLatin1(file_.digest), result_.processed, options_.who,
                             result_.statements, result_.Summary(), highest_});
  return result_;
}

void Run::RequireOrder(const QList<Processed>& ledger) const {
  if (options_.outOfOrder) return;
  if (file_.stamp.isEmpty()) {
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: de naam van een export is jjjjmmdduummss.tql, en daaruit "
        "blijkt de volgorde. Geef het zijn naam terug, of kies ervoor om het buiten de volgorde te "
        "verwerken."_s.arg(file_.path));
  }
  for (const Processed& row : ledger) {
    if (row.source.compare(options_.source, Qt::CaseInsensitive) != 0 || row.stamp <= file_.stamp) continue;
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: van '%2' is '%3' al verwerkt (%4), en dat is van later. "
        "Kies ervoor om het buiten de volgorde te verwerken als dat zo moet."_s.arg(file_.path, row.source, row.name,
                                                                                    MomentText(row.moment)));
  }
}

bool Run::IsDeleteOfItem(std::size_t place, qint64 key) const {
  if (place >= file_.statements.size()) return false;
  const ExportStatement& statement = file_.statements[place];
  return statement.verb == Verb::Delete && statement.table == Table::Items && statement.key == key;
}

// The statements from `first` on that belong together; how many.
std::size_t Run::TakeUnit(std::size_t first, Unit& unit) const {
  const auto& statements = file_.statements;
  const auto isLink = [&](std::size_t place, Verb verb) {
    return place < statements.size() && statements[place].table == Table::Links && statements[place].verb == verb &&
           statements[place].key == statements[first].key;
  };
  unit.table = statements[first].table == Table::Links ? Table::Items : statements[first].table;
  unit.key = statements[first].key;
  std::size_t place = first;
  if (statements[first].table != Table::Links) unit.record = place++;
  if (unit.table != Table::Items || IsDeleteOfItem(first, unit.key)) return place - first;
  const bool endsInDelete = isLink(place, Verb::Delete) && IsDeleteOfItem(place + 1, unit.key);
  if (endsInDelete && unit.record) return place - first;  // a cleanup follows
  if (isLink(place, Verb::Delete)) unit.clear = place++;
  if (endsInDelete) {
    unit.record = place++;
    return place - first;
  }
  while ((unit.clear || !unit.record) && isLink(place, Verb::Insert))
    unit.links.push_back(place++);
  return place - first;
}

void Run::Handle(const Unit& unit) {
  if (!unit.record) return ChangeList(unit);
  switch (file_.statements[*unit.record].verb) {
    case Verb::Insert:
      return InsertRecord(unit);
    case Verb::Update:
      return UpdateRecord(unit);
    case Verb::Delete:
      return DeleteRecord(unit);
  }
}

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

// With a basis the rows are exact; without one `after` has only the fields of the statement.
Run::Change Run::ChangeOf(const Unit& unit) {
  Change change;
  change.table = unit.table;
  change.key = unit.key;
  const std::size_t place = *unit.record;
  const ExportStatement& statement = file_.statements[place];
  change.line = statement.line;
  change.deletes = statement.verb == Verb::Delete;
  change.entry = file_.EntryOf(place);
  const auto take = [&](const QList<basis::Row>& rows, std::optional<Row>& row, QString& fingerprint) {
    if (rows.isEmpty()) return;
    row = target_.RowOf(unit.table, change.entry->fields, rows.first());
    if (unit.table == Table::Items) FollowReferences(*row, change.entry);
    const bool isOwn = statement.verb == Verb::Insert || numbers_->Find(unit.table, unit.key) != nullptr;
    if (isOwn || !conflicts_.isEmpty()) fingerprint = basis::Fingerprint(rows.first());
  };
  const OwnNumbers::Own* own = nullptr;
  if (change.entry != nullptr) {
    take(change.entry->before, change.base, change.before);
    take(change.entry->after, change.after, change.fingerprint);
    change.fields = target_.FieldNames(unit.table);
    own = numbers_->FindAs(unit.table, unit.key, change.before);
  } else {
    if (statement.verb != Verb::Delete) change.after = RowOfStatement(place);
    if (change.after && unit.table == Table::Items) FollowReferences(*change.after, nullptr);
    change.fields += u"ID"_s;
    for (const auto& [field, value] : statement.values) {
      if (field != u"ID"_s) change.fields += field;
    }
    own = numbers_->Find(unit.table, unit.key);
  }
  change.number = own != nullptr && statement.verb != Verb::Insert ? own->server : unit.key;
  for (std::optional<Row>* row : {&change.base, &change.after}) {
    if (*row) (**row)[target_.Place(unit.table, u"ID"_s)] = std::int64_t{change.number};
  }
  if (own != nullptr && statement.verb != Verb::Insert && (change.entry == nullptr || change.base))
    numbers_->SetFingerprint(unit.table, unit.key, change.deletes ? OwnNumbers::kDeleted : change.fingerprint);
  TakeList(unit, change);
  return change;
}

bool Run::SameRecord(Table table, const Row& left, const Row& right) const {
  const QList<dao::FieldDef>& fields = target_.Definition(table).fields;
  for (std::size_t place = 0; place < left.size(); ++place) {
    if (!basis::Same(left[place], right[place]) && !IsPlayCount(fields[static_cast<qsizetype>(place)].name))
      return false;
  }
  return true;
}

void Run::InsertRecord(const Unit& unit) {
  Change change = ChangeOf(unit);
  if (!change.after) return;
  const auto found = target_.Find(change.table, change.key);
  const std::pair key{static_cast<int>(change.table), change.key};
  if (found && !insertedHere_.contains(key) &&
      (change.entry == nullptr || !numbers_->IsMadeByExport(change.table, change.key)) &&
      SameRecord(change.table, found->row, *change.after) &&
      (!change.hasList || target_.SpotsOf(change.key) == change.list)) {
    numbers_->Add(change.table, change.key, {change.key, change.fingerprint});
    return Add(What::Unchanged, change, u"%1 staat er al"_s.arg(Shown(change)));
  }
  const bool wasUsed = !found && change.key <= seen_[At(change.table)];
  if (found || wasUsed) change.number = NextNumber(change.table);
  highest_[At(change.table)] = std::max(highest_[At(change.table)], change.number);
  (*change.after)[target_.Place(change.table, u"ID"_s)] = std::int64_t{change.number};
  target_.Insert(change.table, *change.after);
  if (!change.list.empty()) target_.ReplaceSpotsOf(change.number, change.list);
  numbers_->Add(change.table, change.key, {change.number, change.fingerprint});
  insertedHere_.insert({static_cast<int>(change.table), change.number});
  if (change.number == change.key) return Add(What::New, change, u"%1 is nieuw"_s.arg(Shown(change)));
  const QString why = wasUsed ? u"%1 was eerder van een andere opname"_s : u"%1 was al in gebruik"_s;
  Add(What::Renumbered, change,
      u"%1 is nieuw en kreeg nummer %2: %3"_s.arg(Shown(change), QString::number(change.number),
                                                  why.arg(QString::number(change.key))));
}

void Run::UpdateRecord(const Unit& unit) {
  const Change change = ChangeOf(unit);
  if (change.entry != nullptr && !change.base) return;  // it met no row on the workstation either
  if (Conflict* waiting = WaitingOn(change)) return Extend(*waiting, change);
  const auto found = target_.Find(change.table, change.number);
  const SpotList list = change.hasList ? target_.SpotsOf(change.number) : SpotList();
  if (!found) return Wait(change, Reason::Gone, std::nullopt, list);
  const Merge merge = MergeOf(change, found->row, list);
  if (merge.conflict) return Wait(change, *merge.conflict, found->row, list);
  target_.Update(change.table, found->id, merge.fields);
  if (merge.replacesList) target_.ReplaceSpotsOf(change.number, change.list);
  if (!merge.fields.empty() || merge.replacesList)
    return Add(What::Changed, change, u"%1 is gewijzigd"_s.arg(Shown(change)));
  const bool meantNothing = change.base && SameRecord(change.table, *change.base, *change.after) &&
                            (!change.hasList || change.baseList == change.list);
  if (!meantNothing) Add(What::Unchanged, change, u"%1 stond er al zo"_s.arg(Shown(change)));
}

Run::Merge Run::MergeOf(const Change& change, const Row& found, const SpotList& list) const {
  Merge merge;
  MergeFields(change, found, merge);
  if (!change.hasList || change.baseList == change.list || list == change.list) return merge;
  merge.replacesList = !change.baseList || list == *change.baseList;
  if (!merge.replacesList && !merge.conflict) merge.conflict = Reason::ListsDiffer;
  return merge;
}

void Run::MergeFields(const Change& change, const Row& found, Merge& merge) const {
  for (const QString& field : change.fields) {
    const std::size_t place = target_.Place(change.table, field);
    const dao::Value& after = (*change.after)[place];
    if (field == u"ID"_s || basis::Same(found[place], after)) continue;
    if (change.base && basis::Same((*change.base)[place], after)) continue;
    // Setting the play count to 0 is a wish of its own, whatever was aired meanwhile.
    const bool goes = !change.base || IsPlayCount(field) || basis::Same((*change.base)[place], found[place]);
    if (goes) merge.fields.emplace_back(place, after);
    if (!goes) merge.conflict = Reason::BothChanged;
  }
  if ((!merge.fields.empty() || merge.conflict) && IsOtherRecord(change, found)) merge.conflict = Reason::OtherRecord;
}

// A number may have been given again after a delete. Name and file both unknown to the workstation: another record.
bool Run::IsOtherRecord(const Change& change, const Row& found) const {
  if (!change.base) return false;
  const auto isUnknown = [&](const QString& field) {
    const std::size_t place = target_.Place(change.table, field);
    return !basis::Same(found[place], (*change.base)[place]) && !basis::Same(found[place], (*change.after)[place]);
  };
  if (!isUnknown(u"Naam"_s)) return false;
  if (change.table != Table::Items) return isUnknown(u"Path"_s);
  return std::ranges::any_of(change.fields,
                             [&](const QString& field) { return field != u"Naam"_s && isUnknown(field); });
}

void Run::DeleteRecord(const Unit& unit) {
  const Change change = ChangeOf(unit);
  if (change.entry != nullptr && !change.base) return;
  const auto found = target_.Find(change.table, change.number);
  if (Conflict* waiting = WaitingOn(change)) {
    Extend(*waiting, change);
    if (found) return;
    waiting->choice = Side::Server;
    waiting->chosen = result_.processed;
    waiting->who = options_.who;
    return;
  }
  if (!found) return Add(What::Unchanged, change, u"%1 was al verwijderd"_s.arg(Shown(change)));
  const SpotList list = change.hasList ? target_.SpotsOf(change.number) : SpotList();
  const bool isSame = !change.base || (SameRecord(change.table, found->row, *change.base) &&
                                       (!change.baseList || *change.baseList == list));
  if (!isSame) return Wait(change, Reason::Deleted, found->row, list);
  target_.Delete(change.table, found->id);
  if (change.hasList) target_.ReplaceSpotsOf(change.number, {});
  Add(What::Deleted, change, u"%1 is verwijderd"_s.arg(Shown(change)));
}

// Links without their item: the program was ended between the two, or an item lost its list.
void Run::ChangeList(const Unit& unit) {
  Change change;
  change.table = Table::Items;
  change.key = unit.key;
  const std::size_t first = unit.clear ? *unit.clear : unit.links.front();
  change.line = file_.statements[first].line;
  change.entry = file_.EntryOf(first);
  change.number = ServerNumber(Table::Items, unit.key, change.entry);
  TakeList(unit, change);
  const auto found = target_.Find(Table::Items, change.number);
  const SpotList list = target_.SpotsOf(change.number);
  if (!unit.clear) {
    SpotList all = list;
    for (const auto& link : change.list) {
      if (std::ranges::find(list, link.first, &SpotList::value_type::first) == list.end()) all.push_back(link);
    }
    std::ranges::sort(all);
    const bool isTaken = !std::ranges::includes(all, change.list);
    change.baseList = isTaken ? SpotList() : list;
    if (!isTaken) change.list = all;
  }
  if (change.baseList && *change.baseList == change.list) return;
  change.fields = {u"ID"_s};
  if (Conflict* waiting = WaitingOn(change)) return Extend(*waiting, change);
  if (list == change.list) return Add(What::Unchanged, change, u"%1 stond er al zo"_s.arg(Shown(change)));
  if (!found && !change.list.empty()) return Wait(change, Reason::Gone, std::nullopt, list);
  if (change.baseList && list != *change.baseList) return Wait(change, Reason::ListsDiffer, found->row, list);
  target_.ReplaceSpotsOf(change.number, change.list);
  Add(What::Changed, change, u"de spotlijst van %1 is gewijzigd"_s.arg(Shown(change)));
}

// The conflict that the change continues: its row before is the one that waits.
Conflict* Run::WaitingOn(const Change& change) {
  for (qsizetype i = 0; i < conflicts_.size(); ++i) {
    Conflict& conflict = conflicts_[i];
    if (!conflict.IsWaiting() || conflict.table != change.table || conflict.number != change.number) continue;
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

QString Run::Shown(const Change& change) const {
  const std::optional<Row>& row = change.after ? change.after : change.base;
  return RecordText(change.table, change.key, row ? target_.NaamOf(change.table, *row) : QString());
}

void Run::Add(What what, const Change& change, const QString& text) {
  const std::optional<Row>& row = change.after ? change.after : change.base;
  result_.lines +=
      {what, change.line, change.table, change.key, change.number, row ? target_.NaamOf(change.table, *row) : QString(),
       text};
}

void Run::Note(int line, const QString& text) {
  result_.lines += {What::Note, line, Table::Items, 0, 0, {}, text};
}

}  // namespace apply
