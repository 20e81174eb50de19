#include "platform/dao/Database.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/LocalFolder.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const QString kPassword = u"--password"_s;

enum class Purpose { Read, Write };

dao::Database Open(const Arguments& arguments, Purpose purpose = Purpose::Read) {
  return dao::OpenDatabase(QFileInfo(arguments.Plain().first()).absoluteFilePath(),
                           {arguments.Value(kPassword), purpose == Purpose::Read});
}

// A table's name as the SQL dialect takes any name.
QString Bracketed(const QString& name) {
  return u'[' + name + u']';
}

int RowCount(dao::Database& database, const QString& table) {
  return database.OpenRecordset(u"SELECT COUNT(*) AS Aantal FROM "_s + Bracketed(table)).Field(u"Aantal"_s).toInt();
}

QString TypeText(const dao::FieldDef& field) {
  switch (field.type) {
    case dao::FieldType::Boolean:
      return u"Boolean"_s;
    case dao::FieldType::Byte:
      return u"Byte"_s;
    case dao::FieldType::Integer:
      return u"Integer"_s;
    case dao::FieldType::Long:
      return u"Long"_s;
    case dao::FieldType::Currency:
      return u"Currency"_s;
    case dao::FieldType::Single:
      return u"Single"_s;
    case dao::FieldType::Double:
      return u"Double"_s;
    case dao::FieldType::Date:
      return u"Date"_s;
    case dao::FieldType::Text:
      return u"Text(%1)"_s.arg(field.size);
    case dao::FieldType::Memo:
      return u"Memo"_s;
    case dao::FieldType::Binary:
      return field.size > 0 ? u"Binary(%1)"_s.arg(field.size) : u"Binary"_s;
    case dao::FieldType::Guid:
      return u"Guid"_s;
    case dao::FieldType::Numeric:
      return u"Numeric(%1,%2)"_s.arg(field.precision).arg(field.scale);
  }
  return {};
}

QString FieldLine(const dao::FieldDef& field) {
  QString line = u"  "_s + field.name + u' ' + TypeText(field);
  if (field.required) line += u" required"_s;
  if (field.autoNumber) line += u" autonumber"_s;
  if (!field.allowZeroLength) line += u" no-zero-length"_s;
  if (!field.defaultExpression.isEmpty()) line += u" default ="_s + field.defaultExpression;
  if (field.defaultValue.isValid()) line += u" default "_s + field.defaultValue.toString();
  return line;
}

QString IndexLine(const dao::IndexDef& index) {
  QStringList fields;
  for (const dao::IndexField& field : index.fields) {
    fields += field.direction == dao::Direction::Descending ? field.name + u" desc" : field.name;
  }
  QString line = u"  index "_s + index.name + u" (" + fields.join(u", "_s) + u')';
  if (index.primary) line += u" primary"_s;
  if (index.unique) line += u" unique"_s;
  if (index.required) line += u" required"_s;
  if (index.ignoreNull) line += u" ignore-null"_s;
  return line;
}

int ShowTables(const Arguments& arguments, const Streams& streams) {
  dao::Database database = Open(arguments);
  for (const QString& name : database.TableNames()) {
    streams.out << name.toStdString() << '\t' << RowCount(database, name) << '\n';
  }
  return kDone;
}

int ShowSchema(const Arguments& arguments, const Streams& streams) {
  dao::Database database = Open(arguments);
  const QStringList names = arguments.Plain().size() > 1 ? arguments.Plain().mid(1) : database.TableNames();
  for (const QString& name : names) {
    const dao::TableDef table = database.Table(name);
    streams.out << table.name.toStdString() << '\n';
    for (const dao::FieldDef& field : table.fields)
      streams.out << FieldLine(field).toStdString() << '\n';
    for (const dao::IndexDef& index : table.indexes)
      streams.out << IndexLine(index).toStdString() << '\n';
  }
  return kDone;
}

int Dump(const Arguments& arguments, const Streams& streams) {
  dao::Database database = Open(arguments);
  const QString name = database.Table(arguments.Plain().at(1)).name;
  dao::Recordset rows = database.OpenRecordset(u"SELECT * FROM "_s + Bracketed(name));
  WriteCsv(rows, streams.out);
  return kDone;
}

// What the log holds is counted on by a running program, above all by its export.
std::unique_ptr<ProgramLock> LockForLog(const QString& database, const QString& statement) {
  if (!statement.contains(u"tblOfflineLog"_s, Qt::CaseInsensitive)) return nullptr;
  return LocalFolder(QFileInfo(database).absoluteFilePath()).Lock();
}

int RunSql(const Arguments& arguments, const Streams& streams) {
  const QString& statement = arguments.Plain().at(1);
  if (statement.trimmed().startsWith(u"select"_s, Qt::CaseInsensitive)) {
    dao::Database database = Open(arguments);
    dao::Recordset rows = database.OpenRecordset(statement);
    WriteCsv(rows, streams.out);
  } else {
    const auto lock = LockForLog(arguments.Plain().first(), statement);
    streams.out << Open(arguments, Purpose::Write).Execute(statement) << '\n';
  }
  return kDone;
}

}  // namespace

Command TablesCommand() {
  return {.name = u"tables"_s,
          .usage = u"BESTAND [--password TEKST]"_s,
          .summary = u"Toont elke tabel met haar aantal rijen."_s,
          .leastWords = 1,
          .mostWords = 1,
          .valuedOptions = {kPassword},
          .run = ShowTables,
          .examples = {u"tables /srv/planner/data/OvalistoLocal.mdb"_s}};
}

Command SchemaCommand() {
  return {.name = u"schema"_s,
          .usage = u"BESTAND [TABEL] [--password TEKST]"_s,
          .summary = u"Toont velden met type, grootte en eigenschappen, en de indexen."_s,
          .leastWords = 1,
          .mostWords = 2,
          .valuedOptions = {kPassword},
          .run = ShowSchema,
          .examples = {u"schema /srv/planner/data/OvalistoLocal.mdb"_s,
                       u"schema /srv/planner/server/OvalistoServer.mdb tblItemSpots"_s}};
}

Command DumpCommand() {
  return {
      .name = u"dump"_s,
      .usage = u"BESTAND TABEL [--password TEKST]"_s,
      .summary = u"Schrijft een tabel als CSV, met een kopregel."_s,
      .leastWords = 2,
      .mostWords = 2,
      .valuedOptions = {kPassword},
      .run = Dump,
      .details = u"NULL is een leeg veld, een lege tekst is \"\"; datums zijn jjjj-mm-dd uu:mm:ss, ja/nee is -1/0."_s,
      .examples = {u"dump /srv/planner/server/OvalistoServer.mdb tblItemSpots > spots.csv"_s}};
}

Command SqlCommand() {
  return {.name = u"sql"_s,
          .usage = u"BESTAND OPDRACHT [--password TEKST]"_s,
          .summary = u"Voert één SQL-opdracht uit: een SELECT geeft CSV, een andere het aantal gewijzigde rijen."_s,
          .leastWords = 2,
          .mostWords = 2,
          .valuedOptions = {kPassword},
          .run = RunSql,
          .details = u"Een wijziging langs deze weg komt nooit in het offline-logboek."_s,
          .examples = {u"sql server/OvalistoServer.mdb \"SELECT ID, Naam FROM tblItemSpots WHERE Aktief <> 0\""_s}};
}
