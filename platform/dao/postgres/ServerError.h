// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/postgres/ServerAddress.h"

#include <QString>

#include <exception>

namespace dao {

// A statement that the server refused: the five-character SQLSTATE and the details of its error report.
struct Refusal : std::exception {
  QString code;
  QString message;     // in the language of the server
  QString detail;      // in the language of the server
  QString constraint;  // the index or constraint at fault
  QString table;
  QString column;
  const char* what() const noexcept override { return "the server refused a statement"; }
};

// The connection ended, or the server did not reply in time.
struct ConnectionLost : std::exception {
  const char* what() const noexcept override { return "the connection to the server broke"; }
};

// The Dutch text for a failed connection: what happened and what to do. `reason` is libpq's text with the SQLSTATE in
// it; `needsPassword`: the server required a password and none was found.
QString ConnectionError(const ServerAddress& address, const QString& host, const QString& reason, bool needsPassword);

// The Dutch text for a refused statement.
QString RefusalError(const ServerAddress& address, const Refusal& refusal);

// The Dutch text for a duplicate key of an index.
QString DuplicateError(const TableDef& table, const IndexDef& index, const Refusal& refusal);

// The Dutch text for a lost connection.
QString ConnectionLostError(const ServerAddress& address);

}  // namespace dao
