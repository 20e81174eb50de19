// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace dao {

// Whether a database path names a PostgreSQL server ("postgresql://..." or "postgres://...") instead of a file.
bool IsServerPath(const QString& pathText);

// A runtime::Error that names ~/.pgpass when the address holds a password. Other texts are never refused.
void RefusePassword(const QString& pathText);

// Where a database on a server is: <connection URL>\<schema>.mdb, as the program forms the path of its server database.
// "postgresql://planner@db.radio.example/stations\OvalistoServer3.mdb" is the schema OvalistoServer3 of the database
// "stations". The URL is of the form that libpq takes, several hosts and "?service=name" included.
class ServerAddress {
 public:
  // runtime::Error for a URL that cannot be read, a password, a missing schema, and a sslmode that protects nothing.
  explicit ServerAddress(const QString& pathText);

  const QString& PathText() const { return pathText_; }
  const QString& Schema() const { return schema_; }
  // What connections are shared by: the URL without the schema.
  const QString& Url() const { return url_; }

  // One way to connect, for one of the hosts: libpq's keywords with their values.
  using Parameters = QList<QPair<QByteArray, QByteArray>>;
  const QList<Parameters>& Ways() const { return ways_; }
  // The name of the host of a way, for messages.
  static QString HostOf(const Parameters& way);

 private:
  QString pathText_;
  QString url_;
  QString schema_;
  QList<Parameters> ways_;
};

}  // namespace dao
