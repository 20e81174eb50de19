// SPDX-License-Identifier: MIT
#include "platform/dao/Engine.h"

#include "platform/dao/EngineMessages.h"
#include "platform/dao/ResultColumn.h"
#include "platform/dao/SqlFunctions.h"
#include "platform/dao/SqlText.h"
#include "platform/runtime/Error.h"

#include <QSet>

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

// The name in SQLite for the target of an INSERT into another file; no statement can contain it.
const QString kTargetInOtherFile = u"]"_s;

FieldMask MaskOf(const TableDef& table, const QStringList& fields) {
  FieldMask mask;
  for (const QString& field : fields)
    mask.set(static_cast<std::size_t>(table.FieldIndex(field)));
  return mask;
}

QStringList Quoted(const QStringList& names) {
  QStringList quoted;
  for (const QString& name : names)
    quoted += QuotedName(name);
  return quoted;
}

}  // namespace

Engine::Engine(const Statement& statement, Storage& source, Storage& target)
    : statement_(statement), source_(source), target_(target), tables_(connection_.Tables()) {
  AddTables();
  if (statement_.verb != Verb::Select) AddTarget();
  tables_.DropUnused();
  if (statement_.verb == Verb::Select && ReadsOnce()) {
    source_.ExpectOneRead();
    tables_.SetReadOnce(0);
    SeekText();
  }
  sqlite3_set_authorizer(connection_.Get(), Authorize, this);
}

void Engine::AddTables() {
  for (const QString& name : statement_.names) {
    if (known_.contains(name, Qt::CaseInsensitive)) continue;
    std::unique_ptr<Table> table = source_.OpenTable(name);
    if (!table) continue;
    tables_.Add(name, std::move(table));
    known_ += name;
  }
}

// Whether the statement reads one table once.
bool Engine::ReadsOnce() const {
  if (known_.size() != 1) return false;
  const QString name = QuotedName(known_.first());
  const QString qualifier = name + u" .";  // the rewriter writes a space before each token
  return statement_.body.count(name, Qt::CaseInsensitive) - statement_.body.count(qualifier, Qt::CaseInsensitive) == 1;
}

// A server need not send the rows that certainly have another text.
void Engine::SeekText() {
  if (!statement_.sought) return;
  const TableDef& table = tables_.At(0).Definition();
  const int field = table.FieldIndex(statement_.sought->field);
  const bool isText = field >= 0 && table.fields[field].type == FieldType::Text;
  if (isText) tables_.SetSought(0, {static_cast<std::size_t>(field), statement_.sought->text.toStdU16String()});
}

void Engine::AddTarget() {
  if (&target_ != &source_) {
    std::unique_ptr<Table> table = target_.OpenTable(statement_.target);
    if (table) {
      targetName_ = kTargetInOtherFile;
      targetPlace_ = static_cast<std::size_t>(known_.size());
      tables_.Add(targetName_, std::move(table));
      known_ += targetName_;
    }
  } else if (known_.contains(statement_.target, Qt::CaseInsensitive)) {
    targetName_ = statement_.target;
    targetPlace_ = PlaceOf(targetName_);
  }
  if (targetName_.isEmpty()) {
    throw runtime::Error(u"De tabel '%1' bestaat niet in '%2'."_s.arg(statement_.target, target_.PathText()));
  }
}

std::shared_ptr<const ResultRows> Engine::Select() {
  const SqliteStatement prepared = Prepared(statement_.body);
  auto rows = std::make_shared<ResultRows>();
  const std::vector<ResultColumn> columns = ResultColumnsOf(prepared.get());
  for (const ResultColumn& column : columns)
    rows->names += column.Name();
  ForEachRow(prepared.get(), [&] {
    for (const ResultColumn& column : columns)
      rows->values.push_back(column.Read(prepared.get()));
    ++rows->rowCount;
    return true;
  });
  return rows;
}

void Engine::Visit(const RowVisit& visit) {
  const SqliteStatement prepared = Prepared(statement_.body);
  const Row row(prepared.get());
  ForEachRow(prepared.get(), [&] { return visit(row); });
}

// Calls `work` for each row until it returns false.
template <class Work>
void Engine::ForEachRow(sqlite3_stmt* select, Work work) {
  int status = sqlite3_step(select);
  while (status == SQLITE_ROW && work())
    status = sqlite3_step(select);
  if (status != SQLITE_DONE && status != SQLITE_ROW) Fail();
}

int Engine::Change() {
  if (statement_.verb == Verb::Delete && statement_.everyRow) {
    return static_cast<int>(tables_.At(targetPlace_).DeleteAll());
  }
  if (const auto count = InsertWholeTable()) return static_cast<int>(*count);
  const SqliteStatement prepared = Prepared(statement_.verb == Verb::Insert ? InsertSql() : statement_.body);
  if (sqlite3_step(prepared.get()) != SQLITE_DONE) Fail();
  tables_.FinishChanges(targetPlace_);
  return sqlite3_changes(connection_.Get());
}

// INSERT from "SELECT * FROM table": copies the stored rows without decoding their values.
std::optional<std::size_t> Engine::InsertWholeTable() {
  if (statement_.wholeTable.isEmpty() || !known_.contains(statement_.wholeTable, Qt::CaseInsensitive)) return {};
  const std::size_t source = PlaceOf(statement_.wholeTable);
  if (source == targetPlace_) return {};
  return tables_.At(targetPlace_).InsertAllOf(tables_.At(source));
}

// The index of a table in known_, which must contain it.
std::size_t Engine::PlaceOf(const QString& name) const {
  std::size_t place = 0;
  while (known_[static_cast<qsizetype>(place)].compare(name, Qt::CaseInsensitive) != 0)
    ++place;
  return place;
}

QString Engine::InsertSql() {
  const TableDef& table = tables_.At(targetPlace_).Definition();
  const QStringList fields = InsertFields(table);
  tables_.SetGivenFields(targetPlace_, MaskOf(table, fields));
  return u"INSERT INTO %1 (%2) %3"_s.arg(QuotedName(targetName_), Quoted(fields).join(u", "_s), statement_.body);
}

// The fields that an INSERT fills: those it lists; else the column names of its SELECT; else all in order.
QStringList Engine::InsertFields(const TableDef& table) {
  QStringList fields = statement_.fields;
  if (fields.isEmpty() && statement_.fromSelect) fields = NamesOfBody();
  QSet<int> seen;
  for (const QString& field : std::as_const(fields)) {
    const int at = table.FieldIndex(field);
    if (at < 0) {
      throw runtime::Error(
          u"Het veld '%1' bestaat niet in de tabel '%2'.\n%3"_s.arg(field, table.name, Shown(statement_.source)));
    }
    if (seen.contains(at)) {
      throw runtime::Error(
          u"Het veld '%1' komt tweemaal voor in de SQL-instructie.\n%2"_s.arg(field, Shown(statement_.source)));
    }
    seen.insert(at);
  }
  if (fields.isEmpty()) {
    for (const FieldDef& field : table.fields)
      fields += field.name;
  }
  return fields;
}

QStringList Engine::NamesOfBody() {
  const SqliteStatement body = Prepared(statement_.body);
  QStringList names;
  for (const ResultColumn& column : ResultColumnsOf(body.get()))
    names += column.Name();
  return names;
}

SqliteStatement Engine::Prepared(const QString& sql) {
  SqliteStatement prepared = Compile(connection_.Get(), sql);
  if (!prepared) Fail();
  // The body of an INSERT alone may have fewer parameters than texts, never more.
  for (qsizetype i = 0; i < statement_.texts.size(); ++i) {
    Bind(prepared.get(), static_cast<int>(i) + 1, Utf16(statement_.texts[i]));
  }
  return prepared;
}

void Engine::Fail() {
  tables_.RethrowFailure();
  const QString message = QString::fromUtf8(sqlite3_errmsg(connection_.Get()));
  throw runtime::Error(StatementError(statement_, source_.PathText(), refused_.isEmpty() ? message : refused_));
}

// A second check after the rewriter: the statement may only read and change its own tables.
int Engine::Authorize(void* context, int action, const char* first, const char* second, const char* /*database*/,
                      const char* /*trigger*/) noexcept {
  auto* engine = static_cast<Engine*>(context);
  if (engine->tables_.IsDeclaring()) return SQLITE_OK;
  try {
    switch (action) {
      case SQLITE_SELECT:
        return SQLITE_OK;
      case SQLITE_READ:
        return engine->MayRead(first, second) ? SQLITE_OK : SQLITE_DENY;
      case SQLITE_INSERT:
      case SQLITE_UPDATE:
      case SQLITE_DELETE:
        return engine->targetName_.compare(QString::fromUtf8(first), Qt::CaseInsensitive) == 0 ? SQLITE_OK
                                                                                               : SQLITE_DENY;
      case SQLITE_FUNCTION:
        return IsDialectFunction(second) ? SQLITE_OK : SQLITE_DENY;
      default:
        return SQLITE_DENY;
    }
  } catch (...) {
    return SQLITE_DENY;
  }
}

bool Engine::MayRead(const char* table, const char* field) {
  const QString tableName = QString::fromUtf8(table);
  const QString fieldName = QString::fromUtf8(field);
  if (!known_.contains(tableName, Qt::CaseInsensitive)) {
    refused_ = u"no such table: "_s + tableName;
    return false;
  }
  const TableDef& definition = tables_.At(PlaceOf(tableName)).Definition();
  // SQLite's names for the row identity are not fields.
  if (fieldName.isEmpty() || definition.FieldIndex(fieldName) >= 0) return true;
  refused_ = u"no such column: "_s + fieldName;
  return false;
}

}  // namespace dao
