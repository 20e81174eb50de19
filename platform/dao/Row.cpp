// SPDX-License-Identifier: MIT
#include "platform/dao/Row.h"

namespace dao {

QStringView Row::Text(int column) const {
  const auto* text = static_cast<const QChar*>(sqlite3_column_text16(statement_, column));
  return {text, sqlite3_column_bytes16(statement_, column) / qsizetype{sizeof(QChar)}};
}

}  // namespace dao
