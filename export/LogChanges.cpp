// SPDX-License-Identifier: MIT
#include "export/LogChanges.h"

#include "data/Catalogue.h"
#include "data/FieldWords.h"
#include "data/LoggedStatements.h"
#include "data/WaitingChanges.h"
#include "export/apply/ExportStatements.h"
#include "platform/dao/Database.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"

#include <QHash>
#include <QMap>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString kSpotsTable = u"tblItemSpots"_s;
const QString kJinglesTable = u"tblItemPingles"_s;

bool IsJingleField(const QString& field) {
  return field == u"Opener"_s || field == u"Midden"_s || field == u"Sluiter"_s;
}

// A statement as it is logged, from its kept rows or, without them, from its text.
struct ReadStatement {
  QString table;
  qint64 key = 0;
  LogChange::Kind kind = LogChange::Kind::Unknown;
  QStringList fields;
  std::optional<basis::Row> before;
  std::optional<basis::Row> after;
  // Of an item's list, by order.
  QList<qint64> spotsBefore;
  QList<qint64> spotsAfter;
};

LogChange::Kind KindOf(QStringView sqlSyntax) {
  if (sqlSyntax.startsWith(u"INSERT ")) return LogChange::Kind::New;
  return sqlSyntax.startsWith(u"UPDATE ") ? LogChange::Kind::Changed : LogChange::Kind::Deleted;
}

// One row for a record; none where the statement met no record.
std::optional<basis::Row> FirstOf(const QList<basis::Row>& rows) {
  return rows.isEmpty() ? std::nullopt : std::optional(rows.first());
}

QList<qint64> SpotsIn(const QList<basis::Row>& rows, const QStringList& fields) {
  QMap<qint64, qint64> byOrder;
  const auto number = [&](const basis::Row& row, const QString& field) {
    const qsizetype place = fields.indexOf(field);
    const auto* value = place < 0 ? nullptr : std::get_if<std::int64_t>(&row[static_cast<std::size_t>(place)]);
    return value != nullptr ? qint64{*value} : 0;
  };
  for (const basis::Row& row : rows)
    byOrder[number(row, u"ItemSpotOrder"_s)] = number(row, u"ItemSpotID"_s);
  return byOrder.values();
}

ReadStatement FromEntry(const basis::Entry& entry) {
  ReadStatement read{entry.table, entry.key, {}, entry.fields, FirstOf(entry.before), FirstOf(entry.after), {}, {}};
  if (entry.keyField == u"ItemID"_s) {
    read.spotsBefore = SpotsIn(entry.before, entry.fields);
    read.spotsAfter = SpotsIn(entry.after, entry.fields);
  }
  return read;
}

// The log has "*" where the record may have an apostrophe; it is shown as it is.
std::optional<ReadStatement> FromText(const QString& sqlSyntax) {
  try {
    const auto parsed = apply::ParseExport(runtime::ToCodePage(sqlSyntax) + ";\r\n", {});
    if (parsed.size() != 1) return std::nullopt;
    const apply::ExportStatement& statement = parsed.front();
    ReadStatement read{apply::NameOf(statement.table), statement.key, {}, {}, {}, {}, {}, {}};
    if (statement.verb == apply::Verb::Delete) return read;
    read.after.emplace();
    for (const auto& [field, value] : statement.values) {
      read.fields += field;
      read.after->push_back(value);
    }
    if (statement.table == apply::Table::Links) read.spotsAfter = SpotsIn({*read.after}, read.fields);
    return read;
  } catch (const runtime::Error&) {
    return std::nullopt;
  }
}

// A change that later statements may continue.
struct Started {
  qint64 key = 0;
  LogChange change;
  std::optional<ReadStatement> record;
  bool hasList = false;
  bool isCleared = false;  // by the statement that knows what the list was
  bool knowsBefore = true;
  QList<qint64> before;
  QList<qint64> after;
};

class Reader {
 public:
  explicit Reader(const QString& localDatabasePath) {
    dao::Database local = dao::OpenDatabase(localDatabasePath);
    for (const QString& table : {u"tblItems"_s, kSpotsTable, kJinglesTable}) {
      local.Visit(u"SELECT ID, Naam FROM "_s + CopyTableOf(table), [&](const dao::Row& row) {
        names_[{table, row.Field(0).toLongLong()}] = row.Text(1).toString();
        return true;
      });
    }
  }

  void Add(const LoggedStatement& logged) {
    if (logged.sqlSyntax.isEmpty()) return;
    std::optional<ReadStatement> read =
        logged.entry ? std::optional(FromEntry(*logged.entry)) : FromText(logged.sqlSyntax);
    if (!read) {
      Close();
      changes_ += {LogChange::Kind::Unknown, logged.sqlSyntax, {}, {}, {logged.sqlSyntax}};
      return;
    }
    read->kind = KindOf(logged.sqlSyntax);
    const bool isList = IsListStatement(logged.sqlSyntax);
    if (!open_ || open_->key != read->key || !Continues(*read, isList)) {
      Close();
      open_.emplace();
      open_->key = read->key;
    }
    open_->change.statements += logged.sqlSyntax;
    if (isList) {
      open_->hasList = true;
      open_->before += read->spotsBefore;
      open_->after += read->spotsAfter;
      open_->isCleared = open_->isCleared || read->kind == LogChange::Kind::Deleted;
      open_->knowsBefore = open_->knowsBefore && logged.entry;
    } else {
      open_->record = *read;
      open_->knowsBefore = open_->knowsBefore && (logged.entry || read->kind == LogChange::Kind::New);
    }
  }

  QList<LogChange> Take() {
    Close();
    return std::move(changes_);
  }

 private:
  // The change whose statements are being read.
  // An item, then its list; a cleanup deletes the list, then the item.
  bool Continues(const ReadStatement& read, bool isList) const {
    if (isList) {
      if (read.kind == LogChange::Kind::Deleted && open_->hasList) return false;
      const std::optional<ReadStatement>& record = open_->record;
      return !record || (record->table == u"tblItems"_s && record->kind != LogChange::Kind::Deleted);
    }
    return open_->hasList && !open_->record && open_->after.isEmpty() && read.table == u"tblItems"_s &&
           read.kind == LogChange::Kind::Deleted;
  }

  void Close() {
    if (!open_) return;
    Started started = *std::exchange(open_, std::nullopt);
    LogChange& change = started.change;
    QStringList changed;
    if (started.record) {
      Describe(*started.record, change, changed);
    } else {
      change.kind = LogChange::Kind::Changed;
      change.record = RecordText(u"tblItems"_s, started.key);
    }
    started.knowsBefore = started.knowsBefore && started.isCleared;
    const bool isDifferent = started.before != started.after || !started.knowsBefore;
    if (started.hasList && isDifferent && change.kind != LogChange::Kind::Deleted) {
      changed += u"Spots"_s;
      change.details += Detail(u"Spots"_s, ListText(started.before), ListText(started.after),
                               change.kind == LogChange::Kind::Changed && started.knowsBefore);
    }
    if (change.kind == LogChange::Kind::Changed)
      change.summary = changed.isEmpty() ? u"opnieuw bewaard, zonder verschil"_s : changed.join(u", "_s);
    changes_ += change;
  }

  void Describe(const ReadStatement& read, LogChange& change, QStringList& changed) {
    change.kind = read.kind;
    const auto place = read.fields.indexOf(u"Naam"_s);
    for (const std::optional<basis::Row>* row : {&read.before, &read.after}) {
      if (place < 0 || !*row) continue;
      const auto* name = std::get_if<std::u16string>(&(**row)[static_cast<std::size_t>(place)]);
      if (name != nullptr) names_[{read.table, read.key}] = QString::fromStdU16String(*name);
    }
    change.record = RecordText(read.table, read.key);
    for (qsizetype i = 0; i < read.fields.size(); ++i) {
      const QString& field = read.fields[i];
      if (field == u"ID"_s) continue;
      const auto at = static_cast<std::size_t>(i);
      const dao::Value before = read.before ? (*read.before)[at] : dao::Value();
      const dao::Value after = read.after ? (*read.after)[at] : dao::Value();
      const bool isChange = read.kind == LogChange::Kind::Changed && read.before;
      if (read.before && read.after ? basis::Same(before, after) : dao::IsNull(read.after ? after : before)) continue;
      changed += FieldWord(field);
      change.details +=
          Detail(FieldWord(field), Shown(field, before), Shown(field, read.after ? after : before), isChange);
    }
  }

  static QString Detail(const QString& field, const QString& before, const QString& after, bool isChange) {
    return isChange ? u"%1: was %2, wordt %3"_s.arg(field, before, after) : field + u": "_s + after;
  }

  QString Shown(const QString& field, const dao::Value& value) const {
    const auto* number = std::get_if<std::int64_t>(&value);
    return IsJingleField(field) && number != nullptr ? NameText(kJinglesTable, *number) : ValueWord(field, value);
  }

  QString NameText(const QString& table, qint64 id) const {
    const QString name = names_.value({table, id});
    return name.isEmpty() ? RecordText(table, id) : QString(u'"' + name + u'"');
  }

  QString RecordText(const QString& table, qint64 id) const {
    const QString name = names_.value({table, id});
    return RecordWord(table) + u' ' + (name.isEmpty() ? QString::number(id) : u'"' + name + u'"');
  }

  QString ListText(const QList<qint64>& spots) const {
    QStringList names;
    for (const qint64 spot : spots)
      names += NameText(kSpotsTable, spot);
    return names.isEmpty() ? u"geen"_s : names.join(u", "_s);
  }

  // Those of the copies; a record of the log replaces that of its number.
  QHash<std::pair<QString, qint64>, QString> names_;
  std::optional<Started> open_;
  QList<LogChange> changes_;
};

}  // namespace

QList<LogChange> ReadLogChanges(const QString& localDatabasePath) {
  Reader reader(localDatabasePath);
  VisitLog(localDatabasePath, std::nullopt, [&](const LoggedStatement& logged) { reader.Add(logged); });
  return reader.Take();
}
