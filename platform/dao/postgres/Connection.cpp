// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/Connection.h"

#include "platform/dao/WriteWait.h"
#include "platform/runtime/Error.h"

#include <QCoreApplication>
#include <QThread>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <future>
#include <list>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dao {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kConnectWait = 5000ms;
constexpr auto kSilence = 7000ms;  // longer than the server lets a statement take
constexpr auto kSlice = 20ms;      // between two repaints of the windows
constexpr std::size_t kMostKept = 4;

struct Attempt {
  PGconn* connection = nullptr;
  QString error;
};

int MillisecondsUntil(Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
  return static_cast<int>(std::max<std::int64_t>(0, left));
}

QString Reason(const PGconn* connection) {
  return QString::fromUtf8(PQerrorMessage(connection)).trimmed();
}

// One host, until the time is up. The connection, or why there is none.
PGconn* Connect(const ServerAddress::Parameters& way, Clock::time_point end, QString& reason) {
  std::vector<const char*> keywords;
  std::vector<const char*> values;
  for (const auto& [keyword, value] : way) {
    keywords.push_back(keyword.constData());
    values.push_back(value.constData());
  }
  keywords.push_back(nullptr);
  values.push_back(nullptr);
  PGconn* connection = PQconnectStartParams(keywords.data(), values.data(), 0);
  if (connection == nullptr) return nullptr;
  PQsetErrorVerbosity(connection, PQERRORS_VERBOSE);  // the server's code is part of the reason
  PQsetNoticeProcessor(
      connection, [](void*, const char*) {}, nullptr);
  PostgresPollingStatusType state = PGRES_POLLING_WRITING;
  while (state != PGRES_POLLING_OK && state != PGRES_POLLING_FAILED && PQstatus(connection) != CONNECTION_BAD) {
    pollfd socket{PQsocket(connection), static_cast<short>(state == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
    if (::poll(&socket, 1, MillisecondsUntil(end)) == 0) {
      reason = u"geen antwoord op tijd"_s;
      return connection;
    }
    state = PQconnectPoll(connection);
  }
  if (PQstatus(connection) != CONNECTION_OK || state != PGRES_POLLING_OK) {
    reason = Reason(connection);
    if (reason.isEmpty()) reason = u"geen verbinding"_s;
  }
  return connection;
}

// The first host that takes the connection. The error is of the last host that gave a reason of its own.
Attempt ConnectAny(const ServerAddress& address) {
  Attempt attempt;
  const auto share = kConnectWait / address.Ways().size();
  for (const ServerAddress::Parameters& way : address.Ways()) {
    QString reason;
    PGconn* connection = Connect(way, Clock::now() + share, reason);
    if (connection != nullptr && reason.isEmpty()) return {connection, {}};
    const bool needsPassword = connection != nullptr && PQconnectionNeedsPassword(connection) != 0;
    attempt.error = ConnectionError(address, ServerAddress::HostOf(way), reason, needsPassword);
    PQfinish(connection);
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

// What the helper thread and its waiting caller share.
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
    while (!isReady(kSlice)) {
    }
  }
}

struct KeptConnection {
  QString url;
  pid_t process;
  std::unique_ptr<Connection> connection;
};

// The latest first.
std::list<KeptConnection>& Kept() {
  thread_local std::list<KeptConnection> kept;
  return kept;
}

// A child process must neither use nor close what its parent talks through.
void LeaveParentsConnections() {
  for (KeptConnection& kept : Kept()) {
    if (kept.process != ::getpid()) static_cast<void>(kept.connection.release());
  }
  Kept().remove_if([](const KeptConnection& kept) { return kept.connection == nullptr; });
}

QString FieldOf(const PGresult* result, int field) {
  const char* text = PQresultErrorField(result, field);
  return text == nullptr ? QString() : QString::fromUtf8(text);
}

Refusal RefusalIn(const PGresult* result) {
  Refusal refusal;
  refusal.code = FieldOf(result, PG_DIAG_SQLSTATE);
  refusal.message = FieldOf(result, PG_DIAG_MESSAGE_PRIMARY);
  refusal.detail = FieldOf(result, PG_DIAG_MESSAGE_DETAIL);
  refusal.constraint = FieldOf(result, PG_DIAG_CONSTRAINT_NAME);
  refusal.table = FieldOf(result, PG_DIAG_TABLE_NAME);
  refusal.column = FieldOf(result, PG_DIAG_COLUMN_NAME);
  return refusal;
}

// The server ended the session: the code tells why, but the connection is gone.
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
  std::thread([shared, address] {
    const Attempt attempt = ConnectAny(address);
    const std::lock_guard lock(shared->mutex);
    if (shared->givenUp) PQfinish(attempt.connection);
    shared->promise.set_value(attempt);
  }).detach();
  AwaitReady(ready, Clock::now() + kConnectWait + 500ms);
  const std::lock_guard lock(shared->mutex);
  if (ready.wait_for(0ms) != std::future_status::ready) {
    shared->givenUp = true;  // looking up a host's name may hang
    throw runtime::Error(
        ConnectionError(address, ServerAddress::HostOf(address.Ways().first()), u"geen antwoord op tijd"_s, false));
  }
  const Attempt attempt = ready.get();
  if (attempt.connection == nullptr) throw runtime::Error(attempt.error);
  PQsetnonblocking(attempt.connection, 1);
  return std::unique_ptr<Connection>(new Connection(attempt.connection));
}

void Connection::Await(short events) {
  pollfd socket{PQsocket(connection_.get()), events, 0};
  if (::poll(&socket, 1, static_cast<int>(kSilence.count())) <= 0) throw LineBroken();
}

void Connection::Send(const std::string& statements) {
  if (PQsendQuery(connection_.get(), statements.c_str()) == 0) throw LineBroken();
  for (int left = PQflush(connection_.get()); left != 0; left = PQflush(connection_.get())) {
    if (left < 0) throw LineBroken();
    Await(POLLIN | POLLOUT);
    if (PQconsumeInput(connection_.get()) == 0) throw LineBroken();
  }
}

void Connection::AwaitReply() {
  while (PQisBusy(connection_.get()) != 0) {
    Await(POLLIN);
    if (PQconsumeInput(connection_.get()) == 0) throw LineBroken();
  }
}

std::vector<Result> Connection::Replies() {
  std::vector<Result> results;
  for (;;) {
    AwaitReply();
    Result result(PQgetResult(connection_.get()), PQclear);
    if (!result) return results;
    results.push_back(std::move(result));
  }
}

std::vector<Result> Connection::Run(const std::string& statements) {
  if (owesReply_) {
    owesReply_ = false;
    Replies();
  }
  Send(statements);
  std::vector<Result> results = Replies();
  for (const Result& result : results) {
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK || status == PGRES_EMPTY_QUERY) continue;
    const Refusal refusal = RefusalIn(result.get());
    if (EndsSession(refusal.code)) throw LineBroken();
    throw refusal;
  }
  if (PQstatus(connection_.get()) != CONNECTION_OK) throw LineBroken();
  return results;
}

void Connection::SendOnly(const std::string& statements) {
  if (owesReply_) Replies();
  owesReply_ = true;
  Send(statements);
}

bool Connection::IsAlive() {
  // A readable socket may hold the reply that is still owed, a farewell, and then the end of the connection.
  constexpr int kLooks = 4;
  for (int look = 0; look < kLooks; ++look) {
    pollfd socket{PQsocket(connection_.get()), POLLIN, 0};
    if (::poll(&socket, 1, 0) <= 0) break;
    if (PQconsumeInput(connection_.get()) == 0) return false;
  }
  return PQstatus(connection_.get()) == CONNECTION_OK;
}

std::string Connection::Literal(const std::string& utf8) const {
  char* escaped = PQescapeLiteral(connection_.get(), utf8.data(), utf8.size());
  if (escaped == nullptr) throw LineBroken();
  const std::unique_ptr<char, decltype(&PQfreemem)> owned(escaped, PQfreemem);
  return escaped;
}

Lease::Lease(const ServerAddress& address) : url_(address.Url()) {
  LeaveParentsConnections();
  for (auto kept = Kept().begin(); kept != Kept().end() && !connection_;) {
    if (kept->url != url_) {
      ++kept;
      continue;
    }
    connection_ = std::move(kept->connection);
    kept = Kept().erase(kept);
    if (!connection_->IsAlive()) connection_.reset();
  }
  if (!connection_) connection_ = Connection::Open(address);
}

Lease::~Lease() {
  if (!connection_) return;
  Kept().push_front({url_, ::getpid(), std::move(connection_)});
  if (Kept().size() > kMostKept) Kept().pop_back();
}

std::string QuotedServerName(const QString& name) {
  QString doubled = name;
  doubled.replace(u"\""_s, u"\"\""_s);
  return '"' + doubled.toStdString() + '"';
}

void CloseKeptConnections() {
  LeaveParentsConnections();
  Kept().clear();
}

}  // namespace dao
