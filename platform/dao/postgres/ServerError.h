// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/postgres/ServerAddress.h"

#include <QString>

#include <exception>

namespace dao {

// A statement that the server refused: its five-character code and what else it said.
struct Refusal : std::exception {
  QString code;
  QString message;     // in the server's language
  QString detail;      // likewise
  QString constraint;  // the index or constraint at fault
  QString table;
  QString column;
  const char* what() const noexcept override { return "the server refused a statement"; }
};

// The connection ended, or the server was silent for too long, before the reply was complete.
struct LineBroken : std::exception {
  const char* what() const noexcept override { return "the connection to the server broke"; }
};

// Why a connection could not be made, in Dutch: what happened and what to do now. `reason` is libpq's text with the
// server's code in it, `needsPassword` whether a password was asked for and none was found.
QString ConnectionError(const ServerAddress& address, const QString& host, const QString& reason, bool needsPassword);

// What the user is told of a refusal. `table`: the definition of the table that changed, if one is known.
QString RefusalError(const ServerAddress& address, const Refusal& refusal);

// The duplicate key of an index of the table.
QString DuplicateError(const TableDef& table, const IndexDef& index, const Refusal& refusal);

QString BrokenError(const ServerAddress& address);

}  // namespace dao
