// SPDX-License-Identifier: MIT
#include "platform/dao/postgres/Catalog.h"

#include "platform/dao/postgres/ServerValue.h"
#include "platform/dao/postgres/TableDefText.h"
#include "platform/runtime/Error.h"

#include <QCryptographicHash>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dao {
namespace {

constexpr auto kCacheTime = 60s;  // tables are created when a station is set up, rarely afterwards
constexpr qsizetype kLongestServerName = 63;

QMap<QString, std::shared_ptr<Catalog>>& Known() {
  thread_local QMap<QString, std::shared_ptr<Catalog>> known;
  return known;
}

QString CatalogKey(const ServerAddress& address) {
  return address.Url() + u'\\' + address.Schema().toLower();
}

QString Text(const Result& result, int row, int column) {
  return QString::fromUtf8(Libpq().PQgetvalue(result.get(), row, column));
}

std::shared_ptr<Catalog> ReadCatalog(Connection& connection, const QString& schema) {
  auto catalog = std::make_shared<Catalog>();
  catalog->schema = schema;
  const auto results = connection.Run("SELECT version FROM " + catalog->Quoted(kTurnTable) +
                                      ";SELECT definition FROM " + catalog->Quoted(kTablesTable));
  catalog->version = Text(results[0], 0, 0);
  for (int row = 0; row < Libpq().PQntuples(results[1].get()); ++row) {
    TableDef table = TableDefOfText(Text(results[1], row, 0));
    catalog->tables.insert(table.name.toLower(), table);
  }
  catalog->read = std::chrono::steady_clock::now();
  return catalog;
}

bool MeansMissing(const Refusal& refusal) {
  return refusal.code == u"42P01"_s || refusal.code == u"3F000"_s;
}

// The server's spelling of a schema name, ignoring letter case.
QString Spelling(Connection& connection, const QString& schema) {
  const auto results = connection.Run("SELECT nspname FROM pg_catalog.pg_namespace WHERE pg_catalog.lower(nspname)=" +
                                      connection.Literal(schema.toLower().toStdString()) + " ORDER BY nspname");
  return Libpq().PQntuples(results[0].get()) == 0 ? QString() : Text(results[0], 0, 0);
}

std::shared_ptr<Catalog> ReadAnyCase(const ServerAddress& address) {
  const Lease lease(address);
  try {
    return ReadCatalog(*lease, address.Schema());
  } catch (const Refusal& refusal) {
    if (!MeansMissing(refusal)) throw;
    const QString spelling = Spelling(*lease, address.Schema());
    if (spelling.isEmpty() || spelling == address.Schema()) throw;
    return ReadCatalog(*lease, spelling);
  }
}

void CheckServerName(const QString& name) {
  if (name.toUtf8().size() <= kLongestServerName) return;
  throw runtime::Error(u"De naam '%1' is te lang voor de databaseserver: maximaal 63 bytes."_s.arg(name));
}

QStringList NamesOf(const IndexDef& index) {
  QStringList names;
  for (const IndexField& field : index.fields)
    names += field.name;
  return names;
}

bool IsPartOfRequiredIndex(const TableDef& table, const FieldDef& field) {
  return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexDef& index) {
    return (index.required || index.primary) && NamesOf(index).contains(field.name, Qt::CaseInsensitive);
  });
}

bool IsTextField(const FieldDef& field) {
  return field.type == FieldType::Text;
}

// A column of an index, sorted as in a database file: NULL before all values.
std::string IndexColumn(const TableDef& table, const IndexField& field) {
  const qsizetype at = table.FieldIndex(field.name);
  const std::string column = IsTextField(table.fields[at]) ? OrderColumn(at) : QuotedServerName(table.fields[at].name);
  return column + (field.direction == Direction::Descending ? " DESC NULLS LAST" : " ASC NULLS FIRST");
}

bool CanOrderRows(const TableDef& table, const IndexField& field) {
  const FieldType type = table.fields[table.FieldIndex(field.name)].type;
  return type != FieldType::Text && type != FieldType::Memo && type != FieldType::Binary;
}

// A unique index has every field. Another index is for speed only and ends before its first Text field, because texts
// are not looked up on the server.
std::string IndexStatement(const Catalog& catalog, const TableDef& table, const IndexDef& index) {
  const bool unique = index.unique || index.primary;
  std::string columns;
  std::string allNull;
  for (const IndexField& field : index.fields) {
    if (!unique && !CanOrderRows(table, field)) break;
    columns += columns.empty() ? "" : ",";
    columns += IndexColumn(table, field);
    allNull += allNull.empty() ? "" : " AND ";
    allNull += QuotedServerName(field.name) + " IS NULL";
  }
  if (columns.empty()) return {};
  std::string statement = std::string(unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                          QuotedServerName(ServerIndexName(table, index)) + " ON " + catalog.Quoted(table.name) + '(' +
                          columns + ')';
  const bool mayBeNull = unique && !index.required && !index.primary && index.fields.size() > 1;
  if (mayBeNull) statement += " NULLS NOT DISTINCT WHERE NOT (" + allNull + ')';
  return statement + ';';
}

}  // namespace

std::string OrderColumn(qsizetype field) {
  return "spotrooster_order_" + std::to_string(field + 1);
}

bool HasOrderColumn(const TableDef& table, qsizetype field) {
  if (!IsTextField(table.fields[field])) return false;
  return std::any_of(table.indexes.begin(), table.indexes.end(), [&](const IndexDef& index) {
    return (index.unique || index.primary) && NamesOf(index).contains(table.fields[field].name, Qt::CaseInsensitive);
  });
}

QString ServerIndexName(const TableDef& table, const IndexDef& index) {
  QString name = table.name + u'_' + index.name;
  if (name.toUtf8().size() <= kLongestServerName) return name;
  const QByteArray digest = QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex();
  return u"spotrooster_index_"_s + QString::fromLatin1(digest);
}

std::shared_ptr<Catalog> CatalogOf(const ServerAddress& address) {
  const QString key = CatalogKey(address);
  auto known = Known().value(key);
  if (known && std::chrono::steady_clock::now() - known->read < kCacheTime) return known;
  try {
    return *Known().insert(key, ReadAnyCase(address));
  } catch (const Refusal& refusal) {
    throw runtime::Error(RefusalError(address, refusal));
  } catch (const ConnectionLost&) {
    throw runtime::Error(ConnectionLostError(address));
  }
}

bool CatalogExists(const ServerAddress& address) {
  try {
    ReadAnyCase(address);
    return true;
  } catch (const Refusal& refusal) {
    if (MeansMissing(refusal)) return false;
    throw runtime::Error(RefusalError(address, refusal));
  } catch (const ConnectionLost&) {
    throw runtime::Error(ConnectionLostError(address));
  }
}

void ForgetCatalog(const ServerAddress& address) {
  Known().remove(CatalogKey(address));
}

std::string SchemaStatements(const QString& schema) {
  Catalog catalog;
  catalog.schema = schema;
  const std::string turn = catalog.Quoted(kTurnTable);
  const std::string change = catalog.Quoted(kChangeTable);
  return "CREATE SCHEMA IF NOT EXISTS " + QuotedServerName(schema) + ";CREATE TABLE " + turn +
         "(one smallint PRIMARY KEY CHECK(one=1),version bigint NOT NULL);INSERT INTO " + turn +
         " VALUES(1,1);CREATE TABLE " + change +
         "(token uuid PRIMARY KEY,made timestamptz NOT NULL DEFAULT pg_catalog.now());CREATE INDEX ON " + change +
         "(made);CREATE TABLE " + catalog.Quoted(kTablesTable) +
         "(name text PRIMARY KEY,definition text NOT NULL,lastnumber bigint NOT NULL DEFAULT 0);";
}

std::string TableStatements(const Connection& connection, const Catalog& catalog, const TableDef& table) {
  CheckServerName(table.name);
  std::string columns;
  for (qsizetype i = 0; i < table.fields.size(); ++i) {
    const FieldDef& field = table.fields[i];
    CheckServerName(field.name);
    if (field.name.startsWith(u"spotrooster_"_s, Qt::CaseInsensitive)) {
      throw runtime::Error(u"De naam '%1' is op de databaseserver van het programma zelf."_s.arg(field.name));
    }
    columns += QuotedServerName(field.name) + ' ' + ColumnTypeOf(field);
    const bool required = (field.required && !field.autoNumber) || IsPartOfRequiredIndex(table, field);
    columns += required ? " NOT NULL," : ",";
  }
  for (qsizetype i = 0; i < table.fields.size(); ++i) {
    if (HasOrderColumn(table, i)) columns += OrderColumn(i) + " bytea,";
  }
  std::string statements = "CREATE TABLE " + catalog.Quoted(table.name) + '(' + columns + kRowColumn +
                           " bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY);";
  for (const IndexDef& index : table.indexes)
    statements += IndexStatement(catalog, table, index);
  return statements + "INSERT INTO " + catalog.Quoted(kTablesTable) + "(name,definition) VALUES(" +
         connection.Literal(table.name.toLower().toStdString()) + ',' +
         connection.Literal(TextOfTableDef(table).toStdString()) + ");UPDATE " + catalog.Quoted(kTurnTable) +
         " SET version=version+1;";
}

}  // namespace dao
