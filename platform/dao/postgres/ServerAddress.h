// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace dao {

// Whether a database path names a PostgreSQL server ("postgresql://..." or "postgres://...") instead of a file.
bool IsServerPath(const QString& pathText);

// Throws a runtime::Error that refers to ~/.pgpass when the address contains a password. Accepts any other text.
void RefusePassword(const QString& pathText);

// The address of a database on a server: <connection URL>\<schema>.mdb, as the program forms the path of its server
// database. "postgresql://planner@db.radio.example/stations\OvalistoServer3.mdb" is the schema OvalistoServer3 of the
// database "stations". The URL has the form of libpq, including several hosts and "?service=name".
class ServerAddress {
 public:
  // Throws runtime::Error for an invalid URL, a password, a missing schema, or an sslmode without verification.
  explicit ServerAddress(const QString& pathText);

  const QString& PathText() const { return pathText_; }
  const QString& Schema() const { return schema_; }
  // The URL without the schema; databases with equal URLs share connections.
  const QString& Url() const { return url_; }

  // The libpq connection parameters, one set for each host.
  using Parameters = QList<QPair<QByteArray, QByteArray>>;
  const QList<Parameters>& Ways() const { return ways_; }
  // The name of the host in a set of parameters, for messages.
  static QString HostOf(const Parameters& way);

 private:
  QString pathText_;
  QString url_;
  QString schema_;
  QList<Parameters> ways_;
};

}  // namespace dao
