// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"
#include "export/apply/ExportStatements.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace apply {

// An export as it is read: its statements, and their rows before and after where its basis is there.
struct ExportFile {
  QString path;
  QString name;       // without the folder
  QString stamp;      // the 14 digits of its name; empty when it is named otherwise
  QByteArray digest;  // ContentDigest
  std::vector<ExportStatement> statements;
  std::optional<basis::Header> basis;
  // One a statement when there is a basis, else none.
  std::vector<std::optional<basis::Entry>> entries;

  const basis::Entry* EntryOf(std::size_t statement) const;
};

// Reads an export (path text) with the basis beside it. Throws runtime::Error with file and line for what no export
// writes, a file that was cut short or is too large, a basis that cannot be read or is of another export.
ExportFile ReadExport(const QString& path);

// The export files of a folder (path text), oldest first. Throws runtime::Error.
QStringList ExportsIn(const QString& folder);

}  // namespace apply
