// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/TargetTables.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace dao {
class Database;
}

namespace apply {

enum class Reason {
  BothChanged,  // the same field, on the workstation and on the server, to different values
  Gone,         // changed on the workstation, deleted on the server
  Deleted,      // deleted on the workstation, changed on the server
  OtherRecord,  // the number is another record's by now
  ListsDiffer   // the spots of an item were changed on both sides
};

enum class Side { Server, Offline };

// A record with a conflict, decided or not, in the versions of the workstation and of the server. A version without a
// row means that the record was deleted there.
struct Conflict {
  qint64 id = 0;      // of this conflict
  qint64 fileID = 0;  // of the export in tblVerwerkt
  QString source;     // workstation
  Table table = Table::Items;
  qint64 number = 0;  // of the record in the shared database
  Reason reason = Reason::BothChanged;
  QStringList fields;          // of the three versions; all of the table, or those that an export without a basis gives
  std::optional<Row> base;     // before the change; not known without a basis
  std::optional<Row> offline;  // what the workstation made of it
  std::optional<Row> server;   // when the conflict was found; once it is settled, just before that
  bool hasLists = false;       // of an item, when its spots belong to the conflict
  SpotList baseList;
  SpotList offlineList;
  SpotList serverList;
  QString fingerprint;         // of the workstation's row after its last statement
  std::optional<Side> choice;  // nothing while it waits
  QDateTime chosen;
  QString who;

  bool IsWaiting() const { return !choice; }
  QString Name() const;
};

// For users: why it waits.
QString TextFor(Reason reason);

// One field of a conflict for people to compare; a value as it is shown, empty for NULL.
struct FieldDifference {
  QString field;
  QString before;
  QString offline;
  QString server;
  bool isConflict = false;  // changed on both sides
};
// The fields in which the versions differ, and the list of spots as one field more. Play counts are left out.
QList<FieldDifference> DifferencesOf(const Conflict& conflict);

// The conflicts of a database, oldest first: those that wait, or all. Throws runtime::Error.
QList<Conflict> ReadConflicts(const QString& database, bool all = false);

// Settles conflicts. Side::Server: the server's version remains or is restored. Side::Offline: the fields that the
// workstation changed, and the item's list of spots, get its values. The other version is kept, so that it can be
// chosen later. Throws runtime::Error with the first number that is not that of a conflict; then nothing was changed.
void Settle(const QString& database, const QList<qint64>& ids, Side side, const QString& who);

// For processing, within its transaction.
QList<Conflict> ReadConflicts(dao::StatementTransaction& transaction, bool all);
void StoreConflict(dao::StatementTransaction& transaction, Conflict& conflict);  // a new one gets its id

}  // namespace apply
