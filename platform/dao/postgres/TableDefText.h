// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"

namespace dao {

// Converts a table definition to and from the JSON text that is stored on the server.
QString TextOfTableDef(const TableDef& table);
TableDef TableDefOfText(const QString& text);

}  // namespace dao
