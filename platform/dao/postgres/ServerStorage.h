// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/ServerSession.h"

#include <functional>
#include <memory>

namespace dao {

// A schema of a PostgreSQL database instead of a database file; see docs/databaseserver.md. Its connections and cached
// definitions are shared by all instances of a thread.
class ServerStorage : public Storage {
 public:
  // Connects, unless the schema is in this thread's cache. Throws runtime::Error.
  ServerStorage(const QString& pathText, const OpenOptions& options);

  const QString& PathText() const override { return address_.PathText(); }
  bool IsSameFile(const Storage& other) const override;
  std::unique_ptr<Transaction> Begin(Access access) override;
  void ExpectOneRead() override;
  QStringList TableNames() override;
  std::unique_ptr<Table> OpenTable(const QString& name) override;
  void CreateTable(const TableDef& table) override;

 private:
  const ServerAddress address_;
  const bool readOnly_;
  std::shared_ptr<Catalog> catalog_;
  std::weak_ptr<ServerSession> session_;
};

// Creates the schema with the internal tables. Throws runtime::Error when it has them already. `fill` gets the path of
// the schema under another name; it gets its own when `fill` has returned, so that a schema is never there in part.
void CreateServerStorage(const QString& pathText, const std::function<void(const QString& unfinished)>& fill);
// Stores a description of the schema on the server, for its administrator.
void DescribeServerStorage(const QString& pathText, const QString& description);
// Whether the schema exists. Throws runtime::Error when the server cannot be reached.
bool ServerStorageExists(const QString& pathText);

}  // namespace dao
