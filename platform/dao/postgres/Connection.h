// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerError.h"
#include "platform/dao/postgres/ServerWait.h"

#include <libpq-fe.h>

#include <memory>
#include <string>
#include <vector>

namespace dao {

using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

// A connection to a server. Nothing lasts in it between two transactions: a pooler may hand each transaction to another
// session of the server. One thread at a time.
class Connection {
 public:
  // Tries the hosts one after the other, in a helper thread, and waits at most 5 s in all. runtime::Error.
  static std::unique_ptr<Connection> Open(const ServerAddress& address);

  // The statements, separated by semicolons, in one round trip. Without BEGIN they are one transaction. One result a
  // statement. Throws Refusal for the first that the server refuses and LineBroken when the connection ends or the
  // server is silent for longer than a statement may take.
  std::vector<Result> Run(const std::string& statements);

  // As Run, but the reply is read by the next Run, and what it says is not looked at: for the end of a transaction that
  // changes nothing.
  void SendOnly(const std::string& statements);

  // Looks at the socket without waiting: false once the server has closed the connection.
  bool IsAlive();

  std::string Literal(const std::string& utf8) const;

 private:
  explicit Connection(PGconn* connection) : connection_(connection, PQfinish) {}

  void Send(const std::string& statements);
  std::vector<Result> Replies();
  void AwaitReply();
  void Await(short events);

  std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
  bool owesReply_ = false;
};

// A connection of this thread for one transaction; afterwards it is kept for the next. Another transaction that begins
// meanwhile gets another connection.
class Lease {
 public:
  // A kept connection that is still alive, or a new one. runtime::Error.
  explicit Lease(const ServerAddress& address);
  ~Lease();
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;

  Connection& operator*() const { return *connection_; }
  Connection* operator->() const { return connection_.get(); }
  // It is not used again.
  void Discard() { connection_.reset(); }

 private:
  QString url_;
  std::unique_ptr<Connection> connection_;
};

// A name as the server takes it, whatever its letters.
std::string QuotedServerName(const QString& name);

// Closes this thread's kept connections (tests; before a fork).
void CloseKeptConnections();

}  // namespace dao
