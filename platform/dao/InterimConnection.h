#pragma once

#include <QString>
#include <map>

#include "platform/dao/Sqlite.h"

namespace dao {

// The connection of the interim database file, an ordinary SQLite file: compiled statements kept for reuse, and every
// failure an Error naming the file.
class InterimConnection {
 public:
  // create: makes the file, which must not exist.
  InterimConnection(const QString& pathText, const QString& hostPath, bool create);

  const QString& PathText() const { return pathText_; }
  const QString& HostPath() const { return hostPath_; }
  sqlite3* Handle() const { return connection_.get(); }

  // A compiled statement without bound values; Return keeps it for the next one who asks for the same text.
  SqliteStatement Take(const QString& sql);
  void Return(const QString& sql, SqliteStatement statement);
  void Run(const QString& sql);

  bool Step(sqlite3_stmt* statement);  // true: a row
  [[noreturn]] void Fail();

 private:
  const QString pathText_;
  const QString hostPath_;
  SqliteConnection connection_;
  std::map<QString, SqliteStatement> idle_;  // goes before the connection
};

// A statement taken from the connection for as long as this lives.
class InterimStatement {
 public:
  InterimStatement(InterimConnection& connection, QString sql)
      : connection_(connection), sql_(std::move(sql)), statement_(connection_.Take(sql_)) {}
  ~InterimStatement() { connection_.Return(sql_, std::move(statement_)); }
  InterimStatement(const InterimStatement&) = delete;
  InterimStatement& operator=(const InterimStatement&) = delete;

  sqlite3_stmt* Get() const { return statement_.get(); }
  bool Step() { return connection_.Step(statement_.get()); }

 private:
  InterimConnection& connection_;
  const QString sql_;
  SqliteStatement statement_;
};

}  // namespace dao
