// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/postgres/Libpq.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/dao/postgres/ServerError.h"
#include "platform/dao/postgres/ServerWait.h"

#include <memory>
#include <string>
#include <vector>

namespace dao {

// A connection to a server. It has no state between two transactions: a pooler may assign each transaction to another
// server session. One thread at a time.
class Connection {
 public:
  // Tries the hosts one after the other, in a helper thread, and waits at most 5 s in total. Throws runtime::Error.
  static std::unique_ptr<Connection> Open(const ServerAddress& address);

  // Executes statements, separated by semicolons, in one round trip; without BEGIN they are one transaction. Returns
  // one result per statement. Throws Refusal for the first statement that the server refuses, and ConnectionLost when
  // the connection ends or the server does not reply for longer than a statement may take.
  std::vector<Result> Run(const std::string& statements);

  // As Run, but without waiting: the next Run reads the reply and ignores it. For the end of a transaction that changed
  // nothing.
  void SendOnly(const std::string& statements);

  // Checks the socket without waiting: false when the server has closed the connection.
  bool IsAlive();

  std::string Literal(const std::string& utf8) const;

 private:
  explicit Connection(PGconn* connection) : connection_(connection) {}

  void Send(const std::string& statements);
  std::vector<Result> Replies();
  void AwaitReply();
  void Await(short events);

  std::unique_ptr<PGconn, FinishConnection> connection_;
  bool isReplyPending_ = false;
};

// A connection from this thread's pool for one transaction. A second transaction at the same time gets another one.
class Lease {
 public:
  // A pooled connection that is still alive, or a new one. Throws runtime::Error.
  explicit Lease(const ServerAddress& address);
  ~Lease();
  Lease(const Lease&) = delete;
  Lease& operator=(const Lease&) = delete;

  Connection& operator*() const { return *connection_; }
  Connection* operator->() const { return connection_.get(); }
  // Closes the connection instead of returning it to the pool.
  void Discard() { connection_.reset(); }

 private:
  QString url_;
  std::unique_ptr<Connection> connection_;
};

// A name in double quotes for the server, with any characters.
std::string QuotedServerName(const QString& name);

// Closes the connections in this thread's pool (tests; before a fork).
void CloseKeptConnections();

}  // namespace dao
