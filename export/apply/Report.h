// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/CatalogueTables.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace apply {

// What processing did, or would do, with one record.
enum class What {
  New,
  Renumbered,  // new, under another number than the workstation gave it
  Changed,
  Deleted,
  Unchanged,  // it is in the database already, or is gone already
  Conflict,   // waits for a person: nothing of it was carried out
  Note        // carried out; something about it is worth knowing
};

struct ReportLine {
  What what = What::Note;
  int line = 0;  // of the export file, from 1; 0 for the file as a whole
  Table table = Table::Items;
  qint64 number = 0;        // as the export names it
  qint64 serverNumber = 0;  // in the shared database
  QString name;             // of the record; may be empty
  QString text;             // Dutch, one sentence

  bool operator==(const ReportLine&) const = default;
};

// What became of one export file.
struct Result {
  QString path;
  bool doneBefore = false;  // nothing was done: it was processed at `processed`, under the name `processedName`
  QDateTime processed;
  QString processedName;
  bool hasBasis = false;
  int statements = 0;
  QList<ReportLine> lines;

  int Count(What what) const;
  // As "3 nieuw (1 kreeg een ander nummer), 2 gewijzigd, 1 verwijderd, 1 botst"; "niets te doen" when nothing changed.
  QString Summary() const;
  // Whether the file's changes look as if another program carried them out already.
  bool LooksCarriedOutElsewhere() const;
};

// In a word, for lists and CSV files: "nieuw".
QString WordFor(What what);
// The record as users call it: `item-spot 42 "Apotheek"`.
QString RecordText(Table table, qint64 number, const QString& name);

// The header and the lines of a CSV file, field by field.
QStringList ReportHeader();
QList<QStringList> ReportRows(const Result& result);

}  // namespace apply
