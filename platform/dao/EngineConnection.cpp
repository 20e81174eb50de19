// SPDX-License-Identifier: MIT
#include "platform/dao/EngineConnection.h"

#include "platform/dao/SqlFunctions.h"
#include "platform/runtime/Error.h"

#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace dao {

// UTF-16 like the texts of files and recordsets, which are therefore never re-encoded.
EngineConnection::Opened EngineConnection::OpenInMemory() {
  SetUpSqlite();
  sqlite3* connection = nullptr;
  const int result = sqlite3_open16(u":memory:", &connection);
  SqliteConnection owned(connection);
  if (result != SQLITE_OK) throw runtime::Error(u"Onvoldoende geheugen voor de SQL-instructie."_s);
  // An unknown name in double quotes is an error, never a text.
  sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_exec(connection, "PRAGMA temp_store = MEMORY", nullptr, nullptr, nullptr);  // no temporary files for sorting
  AddTextOrder(connection);
  AddSqlFunctions(connection);
  return {std::make_unique<VirtualTables>(connection), std::move(owned)};
}

EngineConnection::Opened& EngineConnection::Idle() {
  thread_local Opened idle;
  return idle;
}

EngineConnection::EngineConnection() : opened_(std::move(Idle())), exceptions_(std::uncaught_exceptions()) {
  if (!opened_.connection) opened_ = OpenInMemory();
}

EngineConnection::~EngineConnection() {
  if (std::uncaught_exceptions() > exceptions_) return;
  sqlite3_set_authorizer(opened_.connection.get(), nullptr, nullptr);
  opened_.tables->EndStatement();
  Idle() = std::move(opened_);
}

}  // namespace dao
