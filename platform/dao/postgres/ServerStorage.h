// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"
#include "platform/dao/postgres/ServerSession.h"

#include <memory>

namespace dao {

// A schema of a PostgreSQL database in the place of a database file: docs/databaseserver.md. Its settings, its
// connections and what is known of its tables are shared by all openings of a thread.
class ServerStorage : public Storage {
 public:
  // Connects, unless this thread knows the schema already. runtime::Error.
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

// Makes the schema with the program's own tables; an error when it has them already.
void CreateServerStorage(const QString& pathText);
// Notes on the server what the schema is, for its administrator.
void DescribeServerStorage(const QString& pathText, const QString& description);
// Whether the schema is there; runtime::Error when the server cannot be asked.
bool ServerStorageExists(const QString& pathText);

}  // namespace dao
