// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/ServerSession.h"

#include "platform/dao/WriteWait.h"
#include "platform/runtime/Error.h"

#include <QUuid>

#include <algorithm>
#include <exception>

using namespace Qt::StringLiterals;

namespace dao {
namespace {

constexpr std::size_t kMaxQueue = std::size_t{1} << 20;  // bytes of statements
constexpr int kStatementTime = 5000;                     // milliseconds
constexpr int kIdleTime = 5000;                          // milliseconds
constexpr int kCheckTime = 6500;                         // milliseconds; longer than a lost transaction lives
constexpr std::size_t kTurnResult = 2;                   // index of the turn among the results of BeginStatements
constexpr int kChangesBetweenPrunes = 200;

// Tokens of this thread's changes of which it is unknown whether their COMMIT succeeded.
QMap<QString, QString>& UncertainChanges() {
  thread_local QMap<QString, QString> tokens;
  return tokens;
}

QString ChangeKey(const ServerAddress& address) {
  return address.PathText().toLower();
}

// Milliseconds; for the server 0 means without a limit.
std::int64_t LockTime() {
  return std::max<std::int64_t>(1, WriteWait().count());
}

// Set in every transaction and only for it: with a pooler the session may have had any other user before.
std::string Settings() {
  const auto set = [](const char* name, const std::string& value) {
    return std::string("pg_catalog.set_config('") + name + "','" + value + "',true)";
  };
  return "SELECT " + set("datestyle", "ISO") + ',' + set("extra_float_digits", "1") + ',' + set("bytea_output", "hex") +
         ',' + set("statement_timeout", std::to_string(kStatementTime)) + ',' +
         set("lock_timeout", std::to_string(LockTime())) + ',' +
         set("idle_in_transaction_session_timeout", std::to_string(kIdleTime)) + ';';
}

// Whether the change is stored. Waits for the turn first: while the lost transaction lives on the server it holds the
// turn, and afterwards it is either committed or rolled back.
bool IsStored(const ServerAddress& address, const Catalog& catalog, const QString& token) {
  const Lease lease(address);
  const auto results =
      lease->Run("BEGIN;SET LOCAL lock_timeout TO " + std::to_string(kCheckTime) + ";SELECT one FROM " +
                 catalog.Quoted(kTurnTable) + " FOR UPDATE;SELECT token FROM " + catalog.Quoted(kChangeTable) +
                 " WHERE token=" + lease->Literal(token.toStdString()) + ";COMMIT");
  return Libpq().PQntuples(results[3].get()) == 1;
}

// Deletes old tokens, once per kChangesBetweenPrunes changes: a token is needed for seconds only.
std::string PruneStatement(const Catalog& catalog) {
  thread_local int changes = 0;
  if (changes++ % kChangesBetweenPrunes != 0) return {};
  return "DELETE FROM " + catalog.Quoted(kChangeTable) + " WHERE made<pg_catalog.now()-interval '1 hour';";
}

}  // namespace

void CheckUncertainChange(const ServerAddress& address, const Catalog& catalog) {
  const QString token = UncertainChanges().value(ChangeKey(address));
  if (token.isEmpty()) return;
  bool stored = false;
  try {
    stored = IsStored(address, catalog, token);
  } catch (const Refusal& refusal) {
    throw runtime::Error(RefusalError(address, refusal));
  } catch (const ConnectionLost&) {
    throw runtime::Error(ConnectionLostError(address));
  }
  UncertainChanges().remove(ChangeKey(address));
  if (!stored) return;
  throw runtime::Error(
      u"De vorige wijziging, waarbij de verbinding met '%1' wegviel, is toch bewaard. Wat u nu deed, is "
      "niet uitgevoerd. Kijk eerst in de lijst, en bewaar daarna alleen wat er nog ontbreekt."_s.arg(
          address.PathText()));
}

ServerSession::ServerSession(const ServerAddress& address, std::shared_ptr<Catalog> catalog, Access access)
    : address_(address), catalog_(std::move(catalog)), access_(access) {}

ServerSession::~ServerSession() {
  if (state_ != State::Begun || !lease_) return;
  try {
    (*lease_)->SendOnly(access_ == Access::Read ? "COMMIT" : "ROLLBACK");
  } catch (const ConnectionLost&) {
    lease_->Discard();
  }
}

Connection& ServerSession::Leased() {
  if (!lease_) lease_.emplace(address_);
  return **lease_;
}

const Connection& ServerSession::Line() {
  return Leased();
}

std::string ServerSession::BeginStatements() const {
  if (access_ == Access::Write) {
    return "BEGIN;" + Settings() + "SELECT version FROM " + catalog_->Quoted(kTurnTable) + " FOR UPDATE;";
  }
  if (oneQuery_) return Settings();
  return "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY;" + Settings();
}

std::string ServerSession::TakeQueue() {
  insertInto_.clear();
  std::string statements = std::exchange(queue_, {});
  if (!statements.empty() && statements.back() != ';') statements += ';';
  return statements;
}

// Sends BEGIN and the queue with the statements, in one round trip.
std::vector<Result> ServerSession::Run(const std::string& statements) {
  Connection& connection = Leased();
  std::string all = state_ == State::NotBegun ? BeginStatements() : std::string();
  all += TakeQueue() + statements;
  const bool staysOpen = access_ == Access::Write || !oneQuery_;
  if (staysOpen) state_ = State::Begun;
  try {
    return connection.Run(all);
  } catch (const Refusal& refusal) {
    Fail(refusal);
  } catch (const ConnectionLost&) {
    lease_->Discard();
    state_ = State::Over;
    throw runtime::Error(ConnectionLostError(address_));
  }
}

void ServerSession::Fail(const Refusal& refusal) {
  if (refusal.code == u"55P03"_s) {
    const std::string holder = FindWriter();
    if (!holder.empty()) {
      throw runtime::Error(u"'%1' is in gebruik door %2. Probeer het straks opnieuw."_s.arg(
          address_.PathText(), QString::fromStdString(holder)));
    }
  }
  if (refusal.code == u"42P01"_s || refusal.code == u"3F000"_s || refusal.code == u"42703"_s) ForgetCatalog(address_);
  if (refusal.code == u"23505"_s) {
    for (const TableDef& table : catalog_->tables) {
      for (const IndexDef& index : table.indexes) {
        if (ServerIndexName(table, index) == refusal.constraint)
          throw runtime::Error(DuplicateError(table, index, refusal));
      }
    }
  }
  throw runtime::Error(RefusalError(address_, refusal));
}

// Rolls back; returns user and computer of the transaction that holds the turn, empty when unknown.
std::string ServerSession::FindWriter() {
  try {
    Connection& connection = Leased();
    const std::string turn = connection.Literal(catalog_->Quoted(kTurnTable));
    const auto results = connection.Run(
        "ROLLBACK;SELECT application_name FROM pg_catalog.pg_locks JOIN pg_catalog.pg_stat_activity USING(pid) WHERE "
        "relation=" +
        turn +
        "::regclass AND mode='RowShareLock' AND granted AND pid<>pg_catalog.pg_backend_pid() AND application_name<>'' "
        "ORDER BY xact_start LIMIT 1");
    state_ = State::Over;
    return Libpq().PQntuples(results[1].get()) == 0 ? std::string() : Libpq().PQgetvalue(results[1].get(), 0, 0);
  } catch (const std::exception&) {
    lease_->Discard();
    state_ = State::Over;
    return {};
  }
}

// Drops the cached catalogue when the definitions changed since it was read.
void ServerSession::CheckVersion(const std::vector<Result>& results) {
  const std::size_t at = kTurnResult;
  if (results.size() <= at || Libpq().PQntuples(results[at].get()) != 1) return;
  if (QString::fromUtf8(Libpq().PQgetvalue(results[at].get(), 0, 0)) != catalog_->version) ForgetCatalog(address_);
}

Result ServerSession::Query(const std::string& select) {
  const bool beginsWrite = access_ == Access::Write && state_ == State::NotBegun;
  std::vector<Result> results = Run(select);
  if (beginsWrite) CheckVersion(results);
  return std::move(results.back());
}

void ServerSession::Change(const std::string& statement) {
  changed_ = true;
  if (!queue_.empty() && queue_.back() != ';') queue_ += ';';
  queue_ += statement;
  insertInto_.clear();
  if (queue_.size() > kMaxQueue) Run({});
}

void ServerSession::Insert(const std::string& intoColumns, const std::string& values) {
  if (insertInto_ == intoColumns && !queue_.empty()) {
    queue_ += ',' + values;
    if (queue_.size() > kMaxQueue) Run({});
    return;
  }
  Change(intoColumns + values);
  insertInto_ = intoColumns;
}

std::size_t ServerSession::ChangeNow(const std::string& statement) {
  changed_ = true;
  const std::vector<Result> results = Run(statement);
  return QByteArray(Libpq().PQcmdTuples(results.back().get())).toULongLong();
}

std::int64_t& ServerSession::LastNumber(const TableDef& table, const FieldDef& field) {
  const QString key = table.name.toLower();
  if (!lastNumbers_.contains(key)) {
    const Result known = Query("SELECT GREATEST(lastnumber,(SELECT pg_catalog.max(" + QuotedServerName(field.name) +
                               ") FROM " + catalog_->Quoted(table.name) + ")) FROM " + catalog_->Quoted(kTablesTable) +
                               " WHERE name=" + Line().Literal(key.toStdString()));
    lastNumbers_.insert(key, QByteArray(Libpq().PQgetvalue(known.get(), 0, 0)).toLongLong());
  }
  return lastNumbers_[key];
}

std::int64_t ServerSession::NextNumber(const TableDef& table, const FieldDef& field) {
  return ++LastNumber(table, field);
}

void ServerSession::NoteNumber(const TableDef& table, const FieldDef& field, std::int64_t number) {
  std::int64_t& last = LastNumber(table, field);
  last = std::max(last, number);
}

void ServerSession::Commit() {
  if (access_ == Access::Read || !changed_) return;
  for (auto last = lastNumbers_.constBegin(); last != lastNumbers_.constEnd(); ++last) {
    Change("UPDATE " + catalog_->Quoted(kTablesTable) + " SET lastnumber=" + std::to_string(last.value()) +
           " WHERE name=" + Line().Literal(last.key().toStdString()));
  }
  Connection& connection = Leased();
  const QString token = QUuid::createUuid().toString(QUuid::WithoutBraces);
  std::string all = state_ == State::NotBegun ? BeginStatements() : std::string();
  all += TakeQueue() + PruneStatement(*catalog_) + "INSERT INTO " + catalog_->Quoted(kChangeTable) + "(token) VALUES(" +
         connection.Literal(token.toStdString()) + ");COMMIT";
  state_ = State::Begun;
  try {
    connection.Run(all);
    state_ = State::Over;
    return;
  } catch (const Refusal& refusal) {
    Fail(refusal);
  } catch (const ConnectionLost&) {
    lease_->Discard();
    state_ = State::Over;
  }
  UncertainChanges().insert(ChangeKey(address_), token);
  bool stored = false;
  try {
    stored = IsStored(address_, *catalog_, token);
  } catch (const std::exception&) {
    throw runtime::Error(
        u"De verbinding met de databaseserver van '%1' viel weg terwijl uw wijziging bewaard werd. Of ze bewaard "
        "is, is nog niet zeker. Druk straks nog eens op OK: wat al bewaard is, wordt niet nog eens bewaard."_s.arg(
            address_.PathText()));
  }
  UncertainChanges().remove(ChangeKey(address_));
  if (!stored) throw runtime::Error(ConnectionLostError(address_));
}

}  // namespace dao
