#include "platform/dao/InterimConnection.h"

#include <QFile>

#include "platform/dao/WriteWait.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/SystemReason.h"

using namespace Qt::StringLiterals;

namespace dao {
namespace {

QString Reason(sqlite3* connection) {
  switch (sqlite3_errcode(connection)) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return u"een ander programma is bezig met schrijven"_s;
    case SQLITE_READONLY:
      return u"het bestand is alleen-lezen"_s;
    case SQLITE_FULL:
      return u"de schijf is vol"_s;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return u"het bestand is beschadigd"_s;
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR: {
      const int code = sqlite3_system_errno(connection);
      return code != 0 ? runtime::SystemReason(code) : u"lees- of schrijffout"_s;
    }
    default:
      return QString::fromUtf8(sqlite3_errmsg(connection));
  }
}

}  // namespace

InterimConnection::InterimConnection(const QString& pathText, const QString& hostPath, bool create)
    : pathText_(pathText), hostPath_(hostPath) {
  SetUpSqlite();
  sqlite3* connection = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
  const int result = sqlite3_open_v2(QFile::encodeName(hostPath).constData(), &connection, flags, nullptr);
  connection_.reset(connection);
  if (result != SQLITE_OK) Fail();
  sqlite3_busy_timeout(connection, static_cast<int>(WriteWait().count()));
  AddTextOrder(connection);
  if (create) Run(u"PRAGMA encoding = 'UTF-16le'"_s);
  Run(u"PRAGMA synchronous = EXTRA"_s);
}

SqliteStatement InterimConnection::Take(const QString& sql) {
  if (auto held = idle_.find(sql); held != idle_.end()) {
    SqliteStatement statement = std::move(held->second);
    idle_.erase(held);
    return statement;
  }
  SqliteStatement statement = Compile(connection_.get(), sql);
  if (!statement) Fail();
  return statement;
}

void InterimConnection::Return(const QString& sql, SqliteStatement statement) {
  sqlite3_reset(statement.get());
  sqlite3_clear_bindings(statement.get());
  idle_.insert_or_assign(sql, std::move(statement));
}

void InterimConnection::Run(const QString& sql) {
  const SqliteStatement statement = Compile(connection_.get(), sql);
  if (!statement) Fail();
  while (Step(statement.get())) {
  }
}

bool InterimConnection::Step(sqlite3_stmt* statement) {
  const int answer = sqlite3_step(statement);
  if (answer != SQLITE_ROW && answer != SQLITE_DONE) Fail();
  return answer == SQLITE_ROW;
}

void InterimConnection::Fail() {
  throw runtime::Error(u"Fout in '%1': %2."_s.arg(pathText_, Reason(connection_.get())));
}

}  // namespace dao
