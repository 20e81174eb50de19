// SPDX-License-Identifier: MIT
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"

using namespace Qt::StringLiterals;

namespace {

int RowCount(dao::Database& database, const QString& table) {
  return database.OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM [%1]"_s.arg(table)).Field(u"Aantal"_s).toInt();
}

int ShowTables(const Arguments& arguments, const Streams& streams) {
  dao::Database database = OpenDatabase(arguments);
  for (const QString& name : database.TableNames()) {
    streams.out << name.toStdString() << '\t' << RowCount(database, name) << '\n';
  }
  return kDone;
}

}  // namespace

Command TablesCommand() {
  return {.name = u"tables"_s,
          .usage = u"DATABASE [--password TEKST]"_s,
          .summary = u"Toont elke tabel met het aantal rijen."_s,
          .run = ShowTables,
          .examples = {u"tables /tmp/proef/data/OvalistoLocal.mdb"_s}};
}
