// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// A change that waits in the offline log, in plain Dutch: a record, and for an item its list of spots too.
struct LogChange {
  enum class Kind { New, Changed, Deleted, Unknown };

  Kind kind = Kind::Unknown;
  QString record;          // `item-spot "Apotheek"`; the statement itself where it cannot be read
  QString summary;         // the names of the fields that changed: "Einddatum, Naam"
  QStringList details;     // a line for each: "Einddatum: was 31-12-2025, wordt 15-01-2026"
  QStringList statements;  // as the export will have them, in order
};

// The changes in the log of a local database (path text), oldest first. Any thread. Throws runtime::Error.
QList<LogChange> ReadLogChanges(const QString& localDatabasePath);
