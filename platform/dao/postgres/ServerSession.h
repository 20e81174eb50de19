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

// One transaction as its tables see it. Nothing is sent before the first row is asked for: changes wait and go with the
// next question or with the COMMIT, so that most statements take one or two round trips. Every failure leaves it as a
// runtime::Error.
class ServerSession {
 public:
  ServerSession(const ServerAddress& address, std::shared_ptr<Catalog> catalog, Access access);
  ~ServerSession();
  ServerSession(const ServerSession&) = delete;
  ServerSession& operator=(const ServerSession&) = delete;

  const ServerAddress& Address() const { return address_; }
  const Catalog& Known() const { return *catalog_; }
  Access Kind() const { return access_; }

  // The statement asks once, of one table: a transaction would only cost round trips.
  void ExpectOneQuestion() { oneQuestion_ = true; }

  // Of this transaction's replies; used when it only reads more than once.
  KeyBatches& Batches() { return batches_; }
  bool ReadsSeveral() const { return access_ == Access::Read && !oneQuestion_; }

  // The rows of a SELECT, after the changes so far.
  Result Ask(const std::string& select);
  // A statement that changes rows. Rows inserted one after the other into the same columns go as one statement.
  void Change(const std::string& statement);
  void Insert(const std::string& intoColumns, const std::string& values);
  // Sends what waits; the number of rows that the last statement changed.
  std::size_t ChangeNow(const std::string& statement);
  // The number of an autonumber field that an insert leaves out; or notes one that it gives.
  std::int64_t NextNumber(const TableDef& table, const FieldDef& field);
  void NoteNumber(const TableDef& table, const FieldDef& field, std::int64_t number);

  void Commit();

  // To make literals by.
  const Connection& Line();

 private:
  enum class State { NotBegun, Begun, Over };

  Connection& Leased();
  std::string Beginning() const;
  std::string Waiting();
  std::vector<Result> Run(const std::string& statements);
  [[noreturn]] void Fail(const Refusal& refusal);
  std::string HolderOfTurn();
  void CheckVersion(const std::vector<Result>& results);
  std::int64_t& LastNumber(const TableDef& table, const FieldDef& field);

  const ServerAddress address_;
  std::shared_ptr<Catalog> catalog_;
  const Access access_;
  bool oneQuestion_ = false;
  bool changed_ = false;
  State state_ = State::NotBegun;
  std::optional<Lease> lease_;
  KeyBatches batches_;
  std::string waiting_;
  std::string insertInto_;                   // what the last waiting statement inserts into, when it is an INSERT
  QMap<QString, std::int64_t> lastNumbers_;  // by the lower case of the table's name
};

// Before a transaction writes: whether an earlier change of this thread, of which the line broke at the COMMIT, was
// stored after all. If so a runtime::Error says so, once: the same change must not be stored twice.
void SettleEarlierChange(const ServerAddress& address, const Catalog& catalog);

}  // namespace dao
