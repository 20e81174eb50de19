// SPDX-License-Identifier: MIT
#include "export/apply/Conflicts.h"

#include "export/apply/Ledger.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

// The fields of tblVerwerktBotsingen.
enum ConflictField : std::size_t {
  kConflictID,
  kVerwerkt,
  kConflictBron,
  kConflictTabel,
  kConflictNummer,
  kReden,
  kVersies,
  kKeuze,
  kGekozen,
  kDoor,
  kConflictFields
};

constexpr std::array kReasons{std::pair{Reason::BothChanged, "beide"}, std::pair{Reason::Gone, "weg"},
                              std::pair{Reason::Deleted, "verwijderd"}, std::pair{Reason::OtherRecord, "ander"},
                              std::pair{Reason::ListsDiffer, "lijst"}};

QString WordOf(Reason reason) {
  for (const auto& [known, word] : kReasons) {
    if (known == reason) return QString::fromLatin1(word);
  }
  return {};
}

basis::Entry EntryOf(const Conflict& conflict, const std::optional<Row>& before, const std::optional<Row>& after) {
  basis::Entry entry{NameOf(conflict.table), u"ID"_s, conflict.number, conflict.fields, {}, {}, {}};
  if (before) entry.before.append(*before);
  if (after) entry.after.append(*after);
  return entry;
}

QList<basis::Row> RowsOfList(const SpotList& list) {
  QList<basis::Row> rows;
  for (const auto& [order, spot] : list)
    rows.append(basis::Row{std::int64_t{order}, std::int64_t{spot}});
  return rows;
}

SpotList ListOfRows(const QList<basis::Row>& rows) {
  SpotList list;
  for (const basis::Row& row : rows)
    list.emplace_back(std::get<std::int64_t>(row[0]), std::get<std::int64_t>(row[1]));
  return list;
}

// The versions as lines of text, in the form of a basis: the record, the server's record, and likewise the lists.
QString VersionsText(const Conflict& conflict) {
  basis::Entry record = EntryOf(conflict, conflict.base, conflict.offline);
  record.references.append({NameOf(conflict.table), conflict.number, conflict.fingerprint});
  QByteArray text = basis::Encode(record) + '\n' + basis::Encode(EntryOf(conflict, {}, conflict.server));
  if (conflict.hasLists) {
    basis::Entry lists{NameOf(Table::Links),
                       u"ItemID"_s,
                       conflict.number,
                       {u"ItemSpotOrder"_s, u"ItemSpotID"_s},
                       RowsOfList(conflict.baseList),
                       RowsOfList(conflict.offlineList),
                       {}};
    text += '\n' + basis::Encode(lists);
    lists.before.clear();
    lists.after = RowsOfList(conflict.serverList);
    text += '\n' + basis::Encode(lists);
  }
  return QString::fromUtf8(text);
}

std::optional<Row> OneRow(const QList<basis::Row>& rows) {
  return rows.isEmpty() ? std::nullopt : std::optional<Row>(rows.first());
}

void TakeVersions(const QString& text, Conflict& conflict) {
  const QList<QByteArray> lines = text.toUtf8().split('\n');
  if (lines.size() < 2) throw runtime::Error(u"De botsing %1 is niet leesbaar."_s.arg(conflict.id));
  const basis::Entry record = basis::Decode(lines[0]);
  conflict.fields = record.fields;
  conflict.base = OneRow(record.before);
  conflict.offline = OneRow(record.after);
  if (!record.references.isEmpty()) conflict.fingerprint = record.references.first().fingerprint;
  conflict.server = OneRow(basis::Decode(lines[1]).after);
  conflict.hasLists = lines.size() == 4;
  if (!conflict.hasLists) return;
  const basis::Entry lists = basis::Decode(lines[2]);
  conflict.baseList = ListOfRows(lists.before);
  conflict.offlineList = ListOfRows(lists.after);
  conflict.serverList = ListOfRows(basis::Decode(lines[3]).after);
}

Conflict ConflictOf(const dao::Recordset& rows) {
  Conflict conflict;
  conflict.id = rows.Field(kConflictID).toLongLong();
  conflict.fileID = rows.Field(kVerwerkt).toLongLong();
  conflict.source = rows.Field(kConflictBron).toString();
  const QString table = rows.Field(kConflictTabel).toString();
  for (const Table known : {Table::Items, Table::Spots, Table::Jingles}) {
    if (NameOf(known) == table) conflict.table = known;
  }
  conflict.number = rows.Field(kConflictNummer).toLongLong();
  const QString reason = rows.Field(kReden).toString();
  for (const auto& [known, word] : kReasons) {
    if (reason == QLatin1StringView(word)) conflict.reason = known;
  }
  TakeVersions(rows.Field(kVersies).toString(), conflict);
  const QString choice = rows.Field(kKeuze).toString();
  if (!choice.isEmpty()) conflict.choice = choice == u"server"_s ? Side::Server : Side::Offline;
  conflict.chosen = rows.Field(kGekozen).toDateTime();
  conflict.who = rows.Field(kDoor).toString();
  return conflict;
}

QList<Conflict> ConflictsOf(dao::Recordset rows, bool all) {
  QList<Conflict> conflicts;
  for (; !rows.Eof(); rows.MoveNext()) {
    Conflict conflict = ConflictOf(rows);
    if (all || conflict.IsWaiting()) conflicts += std::move(conflict);
  }
  return conflicts;
}

QString SelectConflicts() {
  QStringList fields;
  const dao::TableDef table = ledger::Tables().last();
  for (const dao::FieldDef& field : table.fields)
    fields += field.name;
  return u"SELECT "_s + fields.join(u", "_s) + u" FROM "_s + ledger::kConflicts + u" ORDER BY ID"_s;
}

std::vector<dao::Value> ValuesOf(const Conflict& conflict) {
  std::vector<dao::Value> values(kConflictFields);
  values[kConflictID] = std::int64_t{conflict.id};
  values[kVerwerkt] = std::int64_t{conflict.fileID};
  values[kConflictBron] = conflict.source.toStdU16String();
  values[kConflictTabel] = NameOf(conflict.table).toStdU16String();
  values[kConflictNummer] = std::int64_t{conflict.number};
  values[kReden] = WordOf(conflict.reason).toStdU16String();
  values[kVersies] = VersionsText(conflict).toStdU16String();
  if (!conflict.choice) return values;
  values[kKeuze] = std::u16string(*conflict.choice == Side::Server ? u"server" : u"offline");
  values[kGekozen] = runtime::DayNumber(conflict.chosen);
  values[kDoor] = conflict.who.left(100).toStdU16String();
  return values;
}

}  // namespace

QString Conflict::Name() const {
  const qsizetype naam = fields.indexOf(u"Naam"_s);
  for (const std::optional<Row>* row : {&offline, &base, &server}) {
    if (naam < 0 || !*row) continue;
    const auto* text = std::get_if<std::u16string>(&(**row)[static_cast<std::size_t>(naam)]);
    if (text != nullptr) return QString::fromStdU16String(*text);
  }
  return {};
}

QString TextFor(Reason reason) {
  switch (reason) {
    case Reason::BothChanged:
      return u"hetzelfde veld is ook op de server gewijzigd"_s;
    case Reason::Gone:
      return u"op de server verwijderd"_s;
    case Reason::Deleted:
      return u"op het werkstation verwijderd, op de server gewijzigd"_s;
    case Reason::OtherRecord:
      return u"onder dit nummer staat op de server iets anders"_s;
    case Reason::ListsDiffer:
      return u"de spotlijst is op beide gewijzigd"_s;
  }
  return {};
}

QList<Conflict> ReadConflicts(const QString& path, bool all) {
  dao::Database database = dao::OpenDatabase(path);
  if (!database.TableNames().contains(ledger::kConflicts, Qt::CaseInsensitive)) return {};
  return ConflictsOf(database.OpenRecordset(SelectConflicts()), all);
}

QList<Conflict> ReadConflicts(dao::StatementTransaction& transaction, bool all) {
  if (!transaction.HasTable(ledger::kConflicts)) return {};
  return ConflictsOf(transaction.OpenRecordset(SelectConflicts()), all);
}

void StoreConflict(dao::StatementTransaction& transaction, Conflict& conflict) {
  if (conflict.id == 0) {
    conflict.id = transaction.Highest(ledger::kConflicts, u"ID"_s) + 1;
    transaction.Insert(ledger::kConflicts, ValuesOf(conflict));
    return;
  }
  const auto rows = transaction.Find(ledger::kConflicts, u"ID"_s, conflict.id);
  if (rows.empty()) throw runtime::Error(u"De botsing %1 bestaat niet meer."_s.arg(conflict.id));
  std::vector<dao::FieldValue> changes;
  std::vector<dao::Value> values = ValuesOf(conflict);
  for (std::size_t field = kVerwerkt; field < values.size(); ++field)
    changes.emplace_back(field, std::move(values[field]));
  transaction.Update(ledger::kConflicts, rows.front().id, changes);
}

}  // namespace apply
