#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

#include <QFileInfo>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// What the log holds is counted on by a running program, above all by its export.
std::unique_ptr<ProgramLock> LockForLog(const QString& database, const QString& statement) {
  if (!statement.contains(u"tblOfflineLog"_s, Qt::CaseInsensitive)) return nullptr;
  return LocalFolder(QFileInfo(database).absoluteFilePath()).Lock();
}

int RunSql(const Arguments& arguments, const Streams& streams) {
  const QString& statement = arguments.Plain().at(1);
  if (statement.trimmed().startsWith(u"select"_s, Qt::CaseInsensitive)) {
    dao::Database database = OpenDatabase(arguments);
    dao::Recordset rows = database.OpenRecordset(statement);
    WriteCsv(rows, streams.out);
  } else {
    const auto lock = LockForLog(arguments.Plain().first(), statement);
    streams.out << OpenDatabase(arguments, Purpose::Write).Execute(statement) << '\n';
  }
  return kDone;
}

}  // namespace

Command SqlCommand() {
  return {.name = u"sql"_s,
          .usage = u"BESTAND OPDRACHT [--password TEKST]"_s,
          .summary = u"Voert één SQL-opdracht uit: een SELECT geeft CSV, een andere het aantal gewijzigde rijen."_s,
          .run = RunSql,
          .details = u"Een wijziging langs deze weg komt nooit in het offline-logboek."_s,
          .examples = {
              u"sql /tmp/proef/server/OvalistoServer.mdb \"SELECT ID, Naam FROM tblItemSpots WHERE Aktief <> 0\""_s}};
}
