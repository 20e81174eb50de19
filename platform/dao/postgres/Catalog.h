// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/postgres/Connection.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>
#include <string>

namespace dao {

// The internal tables of a schema, in addition to the user's tables:
//   spotrooster_turn    one row, locked by the transaction that writes; `version` counts changes of the definitions
//   spotrooster_change  a token for each transaction that changed something, kept for an hour
//   spotrooster_tables  the definition of each table, and the highest number of its autonumber field
// A table has, after its fields, spotrooster_row (the identity of a row) and, for each Text field of a unique index,
// spotrooster_order_<position>: bytes that are equal for texts that are equal in the text order.
inline const std::string kTurnTable = "spotrooster_turn";
inline const std::string kChangeTable = "spotrooster_change";
inline const std::string kTablesTable = "spotrooster_tables";
inline const std::string kRowColumn = "spotrooster_row";
std::string OrderColumn(qsizetype field);

// Whether the field has an order column.
bool HasOrderColumn(const TableDef& table, qsizetype field);

// The name of an index on the server, where index names are unique within the schema.
QString ServerIndexName(const TableDef& table, const IndexDef& index);

// The cached definitions of a schema, so that a word in a statement that is not a table costs no round trip.
struct Catalog {
  QString schema;  // in the server's spelling
  QString version;
  QMap<QString, TableDef> tables;  // by the lower case of their names
  std::chrono::steady_clock::time_point read;

  std::string Quoted(const std::string& table) const { return QuotedServerName(schema) + '.' + table; }
  std::string Quoted(const QString& table) const { return QuotedServerName(schema) + '.' + QuotedServerName(table); }
};

// The catalogue of the schema, from this thread's cache or read from the server. Throws runtime::Error with the name of
// the schema when it does not exist.
std::shared_ptr<Catalog> CatalogOf(const ServerAddress& address);
bool CatalogExists(const ServerAddress& address);
// Removes the schema from the cache: the next CatalogOf reads it again.
void ForgetCatalog(const ServerAddress& address);

// The statements that create an empty schema, and a table in it.
std::string SchemaStatements(const QString& schema);
std::string TableStatements(const Connection& connection, const Catalog& catalog, const TableDef& table);

}  // namespace dao
