// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

// The values of a record that its editor writes, as they are in the database: an editor compares those that it read
// with those of the moment of saving, because another workstation may have changed the record meanwhile.

struct StoredValue {
  QString label;  // as on the screen
  QVariant value;
  std::function<QString()> text;  // for the user; called only when the value differs
};
using StoredValues = QList<StoredValue>;

// The values of the current row, in the order of the fields, with the labels and texts of data/FieldWords.h. Empty when
// there is no row. Throws runtime::Error.
StoredValues ValuesOf(const dao::Recordset& row, const QStringList& fields);

enum class ChangedRecord {
  Unchanged,  // nothing was asked
  Theirs,     // show the record as it is now
  Mine,       // write what is on the screen
  Undecided,  // write nothing
};

// Asks what to do when values differ, and says which; values that were never read (empty) do not differ.
ChangedRecord AskWhenChanged(const StoredValues& read, const StoredValues& now);
