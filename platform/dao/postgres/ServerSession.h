// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/Catalog.h"
#include "platform/dao/postgres/Connection.h"
#include "platform/dao/postgres/KeyBatches.h"

#include <QMap>
#include <QString>

#include <memory>
#include <optional>
#include <string>

namespace dao {

// One transaction. Nothing is sent before the first query: changes are queued and sent with the next query or the
// COMMIT, so that most statements take one or two round trips. Every failure is a runtime::Error.
class ServerSession {
 public:
  ServerSession(const ServerAddress& address, std::shared_ptr<Catalog> catalog, Access access);
  ~ServerSession();
  ServerSession(const ServerSession&) = delete;
  ServerSession& operator=(const ServerSession&) = delete;

  const ServerAddress& Address() const { return address_; }
  const Catalog& Known() const { return *catalog_; }
  Access Kind() const { return access_; }

  // The statement makes one query: a transaction would only cost round trips.
  void ExpectOneQuery() { oneQuery_ = true; }

  // The batches of this transaction; used when it makes several queries and no changes.
  KeyBatches& Batches() { return batches_; }
  bool MakesSeveralQueries() const { return access_ == Access::Read && !oneQuery_; }

  // The rows of a SELECT, after the queued changes.
  Result Query(const std::string& select);
  // Queues a statement that changes rows. Successive inserts into the same columns are combined into one statement.
  void Change(const std::string& statement);
  void Insert(const std::string& intoColumns, const std::string& values);
  // Sends the queue and the statement; returns the number of rows that the statement changed.
  std::size_t ChangeNow(const std::string& statement);
  // The next number of an autonumber field, for an insert without one.
  std::int64_t NextNumber(const TableDef& table, const FieldDef& field);
  // Registers a number that an insert gave.
  void NoteNumber(const TableDef& table, const FieldDef& field, std::int64_t number);

  void Commit();

  // For formatting literals.
  const Connection& Line();

 private:
  enum class State { NotBegun, Begun, Over };

  Connection& Leased();
  std::string BeginStatements() const;
  std::string TakeQueue();
  std::vector<Result> Run(const std::string& statements);
  [[noreturn]] void Fail(const Refusal& refusal);
  std::string FindWriter();
  void CheckVersion(const std::vector<Result>& results);
  std::int64_t& LastNumber(const TableDef& table, const FieldDef& field);

  const ServerAddress address_;
  std::shared_ptr<Catalog> catalog_;
  const Access access_;
  bool oneQuery_ = false;
  bool changed_ = false;
  State state_ = State::NotBegun;
  std::optional<Lease> lease_;
  KeyBatches batches_;
  std::string queue_;
  std::string insertInto_;                   // target and columns of the last queued statement, when it is an INSERT
  QMap<QString, std::int64_t> lastNumbers_;  // by the name of the table in lower case
};

// Call before a transaction writes. When the connection was lost during the COMMIT of this thread's previous change,
// checks whether that change was stored; if so, throws a runtime::Error once, so that it is not stored twice.
void CheckUncertainChange(const ServerAddress& address, const Catalog& catalog);

}  // namespace dao
