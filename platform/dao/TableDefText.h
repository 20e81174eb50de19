#pragma once

#include <QByteArray>

#include "platform/dao/TableDef.h"

namespace dao {

// A table definition as text (JSON) and back.
QByteArray TextOfTableDef(const TableDef& table);
TableDef TableDefOfText(const QByteArray& text);

}  // namespace dao
