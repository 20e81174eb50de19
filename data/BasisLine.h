// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

namespace basis {

// Reads lines of a basis in the very form in which Encode writes them, several times faster than a JSON document; a
// large export has ten thousands of them. Any other line, also a wrong one, gives nothing: the JSON reader decides.
class LineReader {
 public:
  std::optional<Entry> Read(const QByteArray& line);

 private:
  QByteArray fieldsText_;  // of the last line; most lines of a file have the same fields
  QStringList fields_;
};

}  // namespace basis
