// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QString>

#include <optional>

// Changes of records made in a list, without their editor. Each reads the record again, so that a change of another
// workstation is kept, and writes it through the write procedures. Throw runtime::Error when the record cannot be read.

enum class RecordKind { Item, ItemSpot, ItemPingle };

enum class EditOutcome {
  Written,
  Same,      // it already has the value
  NotThere,  // it was removed meanwhile
  Refused,   // it may not be saved as it is; nothing was written
  Failed,    // a box has shown why
};

// The value of Aktief; empty when the record is not there. Item-spots and items only.
std::optional<qint32> ReadAktief(RecordKind kind, qint32 id);
EditOutcome WriteAktief(RecordKind kind, qint32 id, qint32 aktief);

// Of an item-spot. One without a name or path is refused, as its editor does.
EditOutcome WriteEindDatum(qint32 spotID, QDate day);
EditOutcome WriteUren(qint32 spotID, qint32 startUur, qint32 eindUur);

struct Duplicated {
  EditOutcome outcome = EditOutcome::Failed;
  qint32 id = 0;  // of the new record, 0: none was made
  QString naam = {};
};
// Adds a copy of a record under a free name, an item with its list of spots. The copy passes the checks of the editor,
// whose message is shown when it is refused, and its path is added to Audio.tae. A copy is never locked.
Duplicated Duplicate(RecordKind kind, qint32 id);

// "Naam (2)", or the first higher number that is free; at most `longest` characters. The copy of "Naam (2)" is "Naam
// (3)"; an empty name stays empty. Throws runtime::Error.
QString FreeName(const QString& naam, int longest, const QString& databasePath, const QString& table);
