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

// The program's own tables of a schema, beside the tables of its user:
//   spotrooster_turn    one row, locked by whoever writes; `version` counts changes of the definitions
//   spotrooster_change  a token of each transaction that changed something, kept for an hour
//   spotrooster_tables  each table's definition, and the highest number of its autonumber field
// A table has, behind its fields, spotrooster_row (a row's identity) and, for each Text field of a unique index,
// spotrooster_order_<place>: the bytes by which texts are equal in the text order.
inline const std::string kTurnTable = "spotrooster_turn";
inline const std::string kChangeTable = "spotrooster_change";
inline const std::string kTablesTable = "spotrooster_tables";
inline const std::string kRowColumn = "spotrooster_row";
std::string OrderColumn(qsizetype field);

// Whether the field has an order column.
bool HasOrderColumn(const TableDef& table, qsizetype field);

// The name that an index has on the server, in which it is one of the whole schema.
QString ServerIndexName(const TableDef& table, const IndexDef& index);

// What this thread knows of a schema: read once, so that a word of a statement that is no table costs no round trip.
struct Catalog {
  QString schema;  // as the server writes it
  QString version;
  QMap<QString, TableDef> tables;  // by the lower case of their names
  std::chrono::steady_clock::time_point read;

  std::string Quoted(const std::string& table) const { return QuotedServerName(schema) + '.' + table; }
  std::string Quoted(const QString& table) const { return QuotedServerName(schema) + '.' + QuotedServerName(table); }
};

// The catalogue of the address's schema: the one that this thread has, or read anew. runtime::Error that names the
// schema when there is none.
std::shared_ptr<Catalog> CatalogOf(const ServerAddress& address);
bool CatalogExists(const ServerAddress& address);
// What is known of the address is no longer trusted: the next CatalogOf reads it anew.
void ForgetCatalog(const ServerAddress& address);

// The statements that make an empty schema, and a table in it.
std::string SchemaStatements(const QString& schema);
std::string TableStatements(const Connection& connection, const Catalog& catalog, const TableDef& table);

}  // namespace dao
