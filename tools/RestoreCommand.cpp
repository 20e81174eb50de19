// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"
#include "platform/dao/RestoreTables.h"
#include "platform/runtime/Error.h"
#include "tools/Commands.h"
#include "tools/DatabaseArgument.h"
#include "tools/LocalFolder.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Statements logged since the backup must neither be lost nor exported twice.
void RefuseLog(const QStringList& tables, const QString& path) {
  const dao::Database database = dao::OpenDatabase(path, {.readOnly = true});
  if (std::none_of(tables.begin(), tables.end(), [&](const QString& name) { return IsOfflineLog(database, name); }))
    return;
  throw runtime::Error(
      u"De tabellen 'tblOfflineLog' en 'tblOfflineBasis' worden nooit teruggezet: dat zou wijzigingen wissen of "
      u"verdubbelen."_s);
}

void RefuseItself(const QString& backup, const QString& database) {
  const QString same = QFileInfo(backup).canonicalFilePath();
  if (same.isEmpty() || same != QFileInfo(database).canonicalFilePath()) return;
  throw runtime::Error(u"'%1' is de database zelf, geen reservekopie ervan."_s.arg(backup));
}

// The rows of a server table are in a local backup under the name of its copy, and the other way round.
QString SourceOf(const QString& table, const QStringList& inBackup) {
  const QString server = ServerTableOf(table);
  const QString other = server == table ? CopyTableOf(table) : server;
  const bool useOther = !inBackup.contains(table, Qt::CaseInsensitive) && inBackup.contains(other, Qt::CaseInsensitive);
  return useOther ? other : table;
}

QList<dao::RestoredTable> WithSources(const QStringList& tables, const QString& backup) {
  const QStringList inBackup = dao::OpenDatabase(backup, {.readOnly = true}).TableNames();
  QList<dao::RestoredTable> restored;
  for (const QString& table : tables)
    restored += {SourceOf(table, inBackup), table};
  return restored;
}

int Restore(const Arguments& arguments, const Streams& streams) {
  for (const QString& word : arguments.Plain().first(2))
    RefuseServer(word, u"pg_dump en pg_restore, die een database op een server bewaren en terugzetten"_s);
  const QString backup = QFileInfo(arguments.Plain().at(0)).absoluteFilePath();
  const QString database = QFileInfo(arguments.Plain().at(1)).absoluteFilePath();
  const QStringList tables = arguments.Plain().mid(2);
  RefuseLog(tables, database);
  RefuseItself(backup, database);
  const LocalFolder folder(database);
  const auto lock = folder.Lock();
  folder.BackUp(arguments, backup);
  streams.out << dao::RestoreTables(backup, database, WithSources(tables, backup)) << '\n';
  return kDone;
}

}  // namespace

Command RestoreCommand() {
  return {
      .name = u"restore"_s,
      .usage = u"RESERVEKOPIE BESTAND TABEL... [--zonder-reservekopie]"_s,
      .summary = u"Zet de rijen van de gekozen tabellen terug uit een reservekopie; het offline-logboek nooit."_s,
      .run = Restore,
      .details =
          u"Een reservekopie staat in de map backup naast de database, of is de .bak van een compact. Wat er nu\n"
          "staat, blijft vooraf bewaard als een nieuwe reservekopie; kan dat niet, dan gebeurt er niets, tenzij met\n"
          "--zonder-reservekopie. Uit een kopie van de lokale database komen ook de tabellen van de gedeelde terug:\n"
          "tblItems uit tblCopie_Items, en omgekeerd. Het programma mag intussen niet op dezelfde programmamap lopen."_s,
      .examples = {
          u"restore /tmp/proef/data/OvalistoLocal.mdb.bak /tmp/proef/data/OvalistoLocal.mdb tblCopie_Items"_s}};
}
