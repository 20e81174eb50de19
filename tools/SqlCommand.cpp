// SPDX-License-Identifier: MIT
#include "platform/dao/Statement.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/runtime/HostPath.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// A running planner, above all its export, relies on the contents of the log.
std::unique_ptr<ProgramLock> LockForLog(const Arguments& arguments, const dao::Statement& statement) {
  const QString& word = statement.inFile ? *statement.inFile : arguments.Plain().first();
  if (dao::IsServerPath(word)) return nullptr;
  const QString path = statement.inFile ? runtime::HostPath(word) : word;
  const dao::Database database =
      statement.inFile ? dao::OpenDatabase(path, {.readOnly = true}) : OpenDatabase(arguments);
  return IsOfflineLog(database, statement.target) ? LocalFolder(path).Lock() : nullptr;
}

int RunSql(const Arguments& arguments, const Streams& streams) {
  const QString& text = arguments.Plain().at(1);
  const dao::Statement statement = dao::ParseStatement(text);
  if (statement.verb == dao::Verb::Select) {
    dao::Database database = OpenDatabase(arguments);
    dao::Recordset rows = database.OpenRecordset(text);
    WriteCsv(rows, streams.out);
  } else {
    const auto lock = LockForLog(arguments, statement);
    streams.out << OpenDatabase(arguments, Purpose::Write).Execute(text) << '\n';
  }
  return kDone;
}

}  // namespace

Command SqlCommand() {
  return {.name = u"sql"_s,
          .usage = u"DATABASE OPDRACHT [--password TEKST]"_s,
          .summary = u"Voert één SQL-opdracht uit: een SELECT geeft CSV, een andere het aantal gewijzigde rijen."_s,
          .run = RunSql,
          .details = u"Een wijziging langs deze weg komt nooit in het offline-logboek."_s,
          .examples = {
              u"sql /tmp/proef/server/OvalistoServer.mdb \"SELECT ID, Naam FROM tblItemSpots WHERE Aktief <> 0\""_s}};
}
