// SPDX-License-Identifier: MIT
// Records that come, change and go.
#include "export/apply/Run.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {

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
  // Links of a deleted spot may be left: they must not become links of this one.
  const bool wasUsed = !found && (change.key <= seen_[At(change.table)] || insertedHere_.contains(key));
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
  Change change = ChangeOf(unit);
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
  Change change = ChangeOf(unit);
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

}  // namespace apply
