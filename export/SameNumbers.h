// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"

#include <QHash>
#include <QString>
#include <QStringList>

// New records of one export that got the same number: closing the item-spot list offline refreshes the copy table from
// the server, so the next new spot gets the number of one that is only in the log.
class SameNumbers {
 public:
  // The statements of the export in their order; nothing where the rows are not known.
  void Add(const std::optional<basis::Entry>& entry);

  // Each as "item-spot 42 (Apotheek, Garage)".
  QStringList Found() const;

 private:
  // The names of the records that are there under a number, by table and number.
  QHash<QString, QStringList> made_;
  QStringList order_;
};

// The warning shown to the user; empty when no numbers are shared.
QString SameNumbersWarning(const QStringList& found, const QString& path);
