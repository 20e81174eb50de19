// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"

namespace dao {

// A table's definition as JSON text, as the server keeps it, and back.
QString TextOfTableDef(const TableDef& table);
TableDef TableDefOfText(const QString& text);

}  // namespace dao
