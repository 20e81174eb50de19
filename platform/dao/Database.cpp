// SPDX-License-Identifier: MIT
#include "platform/dao/Database.h"

#include "platform/dao/Engine.h"
#include "platform/dao/RowEngine.h"
#include "platform/dao/SqlText.h"
#include "platform/dao/Statement.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

Storage& Opened(const std::shared_ptr<Storage>& storage) {
  if (!storage) throw runtime::Error(u"De database is gesloten."_s);
  return *storage;
}

Statement ParseSelect(const QString& sql, const std::vector<Token>& tokens) {
  Statement statement = ParseStatement(sql, tokens);
  if (statement.verb == Verb::Select) return statement;
  throw runtime::Error(u"Een recordset kan alleen met SELECT worden geopend.\n%1"_s.arg(Shown(sql)));
}

Statement ParseSelect(const QString& sql) {
  return ParseSelect(sql, Tokenise(sql));
}

Statement ParseChange(const QString& sql, const std::vector<Token>& tokens) {
  Statement statement = ParseStatement(sql, tokens);
  if (statement.verb != Verb::Select) return statement;
  throw runtime::Error(u"Een SELECT-instructie verandert niets en kan niet worden uitgevoerd.\n%1"_s.arg(Shown(sql)));
}

Statement ParseChange(const QString& sql) {
  return ParseChange(sql, Tokenise(sql));
}

// INSERT INTO t IN "file": writes the rows to another file; both transactions last for the complete statement.
int ExecuteInto(const Statement& statement, Storage& source, Storage& target) {
  const auto writing = target.Begin(Access::Write);
  const auto reading = source.Begin(Access::Read);
  const int changed = Engine(statement, source, target).Change();
  writing->Commit();
  return changed;
}

int ExecuteOn(const Statement& statement, Storage& storage) {
  const auto writing = storage.Begin(Access::Write);
  const int changed = Engine(statement, storage, storage).Change();
  writing->Commit();
  return changed;
}

// The same for a statement about one row; nothing when the engine must do it.
std::optional<int> ExecuteOn(const RowStatement& statement, Storage& storage) {
  const auto writing = storage.Begin(Access::Write);
  const std::optional<int> changed = ChangeRow(statement, storage);
  if (changed) writing->Commit();
  return changed;
}

}  // namespace

Database::Database(std::shared_ptr<Storage> storage) : storage_(std::move(storage)) {}

Recordset Database::OpenRecordset(const QString& sql) {
  Storage& storage = Opened(storage_);
  const std::vector<Token> tokens = Tokenise(sql);
  const auto row = RowStatementOf(tokens);
  if (row && row->verb == Verb::Select) {
    const auto reading = storage.Begin(Access::Read);
    if (auto rows = SelectRow(*row, storage)) return Recordset(std::move(rows));
  }
  const Statement statement = ParseSelect(sql, tokens);
  const auto reading = storage.Begin(Access::Read);
  return Recordset(Engine(statement, storage, storage).Select());
}

void Database::Visit(const QString& select, const RowVisit& visit) {
  Storage& storage = Opened(storage_);
  const Statement statement = ParseSelect(select);
  const auto reading = storage.Begin(Access::Read);
  Engine(statement, storage, storage).Visit(visit);
}

Database::Preview Database::PreviewChange(const QString& change, const QString& select) {
  Storage& storage = Opened(storage_);
  const Statement statement = ParseChange(change);
  const Statement selection = ParseSelect(select);
  Preview preview;
  const auto writing = storage.Begin(Access::Write);
  preview.before = Recordset(Engine(selection, storage, storage).Select());
  Engine(statement, storage, storage).Change();
  preview.after = Recordset(Engine(selection, storage, storage).Select());
  return preview;  // the transaction ends without Commit
}

int Database::Execute(const QString& sql) {
  Storage& storage = Opened(storage_);
  const std::vector<Token> tokens = Tokenise(sql);
  const auto row = RowStatementOf(tokens);
  if (row && row->verb != Verb::Select) {
    if (const auto changed = ExecuteOn(*row, storage)) return *changed;
  }
  const Statement statement = ParseChange(sql, tokens);
  if (!statement.inFile) return ExecuteOn(statement, storage);
  const std::unique_ptr<Storage> other = OpenStorage(*statement.inFile);
  if (other->IsSameFile(storage)) return ExecuteOn(statement, storage);
  return ExecuteInto(statement, storage, *other);
}

QStringList Database::TableNames() const {
  Storage& storage = Opened(storage_);
  const auto reading = storage.Begin(Access::Read);
  QStringList names = storage.TableNames();
  names.sort(Qt::CaseInsensitive);
  return names;
}

TableDef Database::Table(const QString& name) const {
  Storage& storage = Opened(storage_);
  const auto reading = storage.Begin(Access::Read);
  const auto table = storage.OpenTable(name);
  if (!table) throw runtime::Error(u"De tabel '%1' bestaat niet in '%2'."_s.arg(name, storage.PathText()));
  return table->Definition();
}

void Database::CreateTable(const TableDef& table) {
  Storage& storage = Opened(storage_);
  CheckTableDef(table);
  const auto writing = storage.Begin(Access::Write);
  if (storage.OpenTable(table.name)) {
    throw runtime::Error(u"De tabel '%1' bestaat al in '%2'."_s.arg(table.name, storage.PathText()));
  }
  storage.CreateTable(table);
  writing->Commit();
}

void Database::Close() {
  storage_.reset();
}

Database OpenDatabase(const QString& pathText, const OpenOptions& options) {
  return Database(OpenStorage(pathText, options));
}

void CreateDatabase(const QString& pathText) {
  CreateStorage(pathText);
}

void CreateDatabase(const QString& pathText, const std::function<void(Database&)>& fill) {
  CreateStorage(pathText, [&](std::unique_ptr<Storage> storage) {
    Database database(std::move(storage));
    fill(database);
  });
}

}  // namespace dao
