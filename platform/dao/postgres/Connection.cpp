// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/Connection.h"

#include "platform/dao/WriteWait.h"
#include "platform/runtime/DetachedThread.h"
#include "platform/runtime/Error.h"

#include <QCoreApplication>
#include <QThread>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <future>
#include <list>
#include <mutex>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dao {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kConnectWait = 5000ms;
constexpr auto kReplyWait = 7000ms;  // longer than the statement timeout of the server
constexpr auto kRepaintTime = 20ms;  // between two repaints of the windows
constexpr std::size_t kMaxPooled = 4;

struct Attempt {
  PGconn* connection = nullptr;
  QString error;
};

int MillisecondsUntil(Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
  return static_cast<int>(std::max<std::int64_t>(0, left));
}

QString ReasonOf(const PGconn* connection) {
  return QString::fromUtf8(Libpq().PQerrorMessage(connection)).trimmed();
}

// Connects to one host before `end`. On failure `reason` is not empty; the result must be finished then too.
PGconn* ConnectTo(const ServerAddress::Parameters& way, Clock::time_point end, QString& reason) {
  std::vector<const char*> keywords;
  std::vector<const char*> values;
  for (const auto& [keyword, value] : way) {
    keywords.push_back(keyword.constData());
    values.push_back(value.constData());
  }
  keywords.push_back(nullptr);
  values.push_back(nullptr);
  PGconn* connection = Libpq().PQconnectStartParams(keywords.data(), values.data(), 0);
  if (connection == nullptr) return nullptr;
  Libpq().PQsetErrorVerbosity(connection, PQERRORS_VERBOSE);  // adds the error code to the reason
  Libpq().PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  PostgresPollingStatusType state = PGRES_POLLING_WRITING;
  while (state != PGRES_POLLING_OK && state != PGRES_POLLING_FAILED && Libpq().PQstatus(connection) != CONNECTION_BAD) {
    pollfd socket{Libpq().PQsocket(connection), static_cast<short>(state == PGRES_POLLING_READING ? POLLIN : POLLOUT),
                  0};
    if (::poll(&socket, 1, MillisecondsUntil(end)) == 0) {
      reason = u"geen antwoord op tijd"_s;
      return connection;
    }
    state = Libpq().PQconnectPoll(connection);
  }
  if (Libpq().PQstatus(connection) != CONNECTION_OK || state != PGRES_POLLING_OK) {
    reason = ReasonOf(connection);
    if (reason.isEmpty()) reason = u"geen verbinding"_s;
  }
  return connection;
}

// Connects to the first host that accepts. The error is that of the last host.
Attempt ConnectAny(const ServerAddress& address) {
  Attempt attempt;
  const auto share = kConnectWait / address.Ways().size();
  for (const ServerAddress::Parameters& way : address.Ways()) {
    QString reason;
    PGconn* connection = ConnectTo(way, Clock::now() + share, reason);
    if (connection != nullptr && reason.isEmpty()) return {connection, {}};
    const bool needsPassword = connection != nullptr && Libpq().PQconnectionNeedsPassword(connection) != 0;
    attempt.error = ConnectionError(address, ServerAddress::HostOf(way), reason, needsPassword);
    Libpq().PQfinish(connection);
  }
  return attempt;
}

ServerWait& CurrentWait() {
  static ServerWait wait;
  return wait;
}

bool IsUserInterfaceThread() {
  const QCoreApplication* application = QCoreApplication::instance();
  return application != nullptr && application->thread() == QThread::currentThread();
}

// Shared by the helper thread and its waiting caller.
struct Connecting {
  std::mutex mutex;
  bool givenUp = false;
  std::promise<Attempt> promise;
};

void AwaitReady(std::future<Attempt>& ready, Clock::time_point end) {
  const auto isReady = [&](std::chrono::milliseconds wait) {
    return ready.wait_for(wait) == std::future_status::ready || Clock::now() >= end;
  };
  if (IsUserInterfaceThread() && CurrentWait()) {
    CurrentWait()(isReady);
  } else {
    while (!isReady(kRepaintTime)) {
    }
  }
}

struct PooledConnection {
  QString url;
  pid_t process;
  std::unique_ptr<Connection> connection;
};

// The most recently used first.
std::list<PooledConnection>& Pool() {
  thread_local std::list<PooledConnection> pool;
  return pool;
}

// After a fork the child process must neither use nor close the connections of its parent.
void DropParentsConnections() {
  for (PooledConnection& pooled : Pool()) {
    if (pooled.process != ::getpid()) static_cast<void>(pooled.connection.release());
  }
  Pool().remove_if([](const PooledConnection& pooled) { return pooled.connection == nullptr; });
}

QString ErrorField(const PGresult* result, int field) {
  const char* text = Libpq().PQresultErrorField(result, field);
  return text == nullptr ? QString() : QString::fromUtf8(text);
}

Refusal RefusalIn(const PGresult* result) {
  Refusal refusal;
  refusal.code = ErrorField(result, PG_DIAG_SQLSTATE);
  refusal.message = ErrorField(result, PG_DIAG_MESSAGE_PRIMARY);
  refusal.detail = ErrorField(result, PG_DIAG_MESSAGE_DETAIL);
  refusal.constraint = ErrorField(result, PG_DIAG_CONSTRAINT_NAME);
  refusal.table = ErrorField(result, PG_DIAG_TABLE_NAME);
  refusal.column = ErrorField(result, PG_DIAG_COLUMN_NAME);
  return refusal;
}

// Whether an error code means that the server ended the session.
bool EndsSession(const QString& code) {
  return code.isEmpty() || code.startsWith(u"57P"_s) || code.startsWith(u"08"_s) || code == u"25P03"_s;
}

}  // namespace

void SetServerWait(ServerWait wait) {
  CurrentWait() = std::move(wait);
}

std::unique_ptr<Connection> Connection::Open(const ServerAddress& address) {
  auto shared = std::make_shared<Connecting>();
  std::future<Attempt> ready = shared->promise.get_future();
  runtime::StartDetached([shared, address] {
    const Attempt attempt = ConnectAny(address);
    const std::lock_guard lock(shared->mutex);
    if (shared->givenUp) Libpq().PQfinish(attempt.connection);
    shared->promise.set_value(attempt);
  });
  AwaitReady(ready, Clock::now() + kConnectWait + 500ms);
  const std::lock_guard lock(shared->mutex);
  if (ready.wait_for(0ms) != std::future_status::ready) {
    shared->givenUp = true;  // a host name look-up may hang
    throw runtime::Error(
        ConnectionError(address, ServerAddress::HostOf(address.Ways().first()), u"geen antwoord op tijd"_s, false));
  }
  const Attempt attempt = ready.get();
  if (attempt.connection == nullptr) throw runtime::Error(attempt.error);
  Libpq().PQsetnonblocking(attempt.connection, 1);
  return std::unique_ptr<Connection>(new Connection(attempt.connection));
}

void Connection::Await(short events) {
  pollfd socket{Libpq().PQsocket(connection_.get()), events, 0};
  if (::poll(&socket, 1, static_cast<int>(kReplyWait.count())) <= 0) throw ConnectionLost();
}

void Connection::Send(const std::string& statements) {
  if (Libpq().PQsendQuery(connection_.get(), statements.c_str()) == 0) throw ConnectionLost();
  for (int left = Libpq().PQflush(connection_.get()); left != 0; left = Libpq().PQflush(connection_.get())) {
    if (left < 0) throw ConnectionLost();
    Await(POLLIN | POLLOUT);
    if (Libpq().PQconsumeInput(connection_.get()) == 0) throw ConnectionLost();
  }
}

void Connection::AwaitReply() {
  while (Libpq().PQisBusy(connection_.get()) != 0) {
    Await(POLLIN);
    if (Libpq().PQconsumeInput(connection_.get()) == 0) throw ConnectionLost();
  }
}

std::vector<Result> Connection::Replies() {
  std::vector<Result> results;
  for (;;) {
    AwaitReply();
    Result result(Libpq().PQgetResult(connection_.get()));
    if (!result) return results;
    results.push_back(std::move(result));
  }
}

std::vector<Result> Connection::Run(const std::string& statements) {
  if (isReplyPending_) {
    isReplyPending_ = false;
    Replies();
  }
  Send(statements);
  std::vector<Result> results = Replies();
  for (const Result& result : results) {
    const ExecStatusType status = Libpq().PQresultStatus(result.get());
    if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK || status == PGRES_EMPTY_QUERY) continue;
    const Refusal refusal = RefusalIn(result.get());
    if (EndsSession(refusal.code)) throw ConnectionLost();
    throw refusal;
  }
  if (Libpq().PQstatus(connection_.get()) != CONNECTION_OK) throw ConnectionLost();
  return results;
}

void Connection::SendOnly(const std::string& statements) {
  if (isReplyPending_) Replies();
  isReplyPending_ = true;
  Send(statements);
}

bool Connection::IsAlive() {
  // The socket may contain a pending reply and a last message of the server before the end of the connection.
  constexpr int kMaxReads = 4;
  for (int read = 0; read < kMaxReads; ++read) {
    pollfd socket{Libpq().PQsocket(connection_.get()), POLLIN, 0};
    if (::poll(&socket, 1, 0) <= 0) break;
    if (Libpq().PQconsumeInput(connection_.get()) == 0) return false;
  }
  return Libpq().PQstatus(connection_.get()) == CONNECTION_OK;
}

std::string Connection::Literal(const std::string& utf8) const {
  char* escaped = Libpq().PQescapeLiteral(connection_.get(), utf8.data(), utf8.size());
  if (escaped == nullptr) throw ConnectionLost();
  const std::unique_ptr<char, decltype(LibpqFunctions::PQfreemem)> owned(escaped, Libpq().PQfreemem);
  return escaped;
}

Lease::Lease(const ServerAddress& address) : url_(address.Url()) {
  DropParentsConnections();
  for (auto pooled = Pool().begin(); pooled != Pool().end() && !connection_;) {
    if (pooled->url != url_) {
      ++pooled;
      continue;
    }
    connection_ = std::move(pooled->connection);
    pooled = Pool().erase(pooled);
    if (!connection_->IsAlive()) connection_.reset();
  }
  if (!connection_) connection_ = Connection::Open(address);
}

Lease::~Lease() {
  if (!connection_) return;
  Pool().push_front({url_, ::getpid(), std::move(connection_)});
  if (Pool().size() > kMaxPooled) Pool().pop_back();
}

std::string QuotedServerName(const QString& name) {
  QString doubled = name;
  doubled.replace(u"\""_s, u"\"\""_s);
  return '"' + doubled.toStdString() + '"';
}

void CloseKeptConnections() {
  DropParentsConnections();
  Pool().clear();
}

}  // namespace dao
