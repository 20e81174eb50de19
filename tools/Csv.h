#pragma once
#include "platform/dao/Recordset.h"
#include "tools/CsvLine.h"

#include <QVariant>

#include <ostream>

// Rows as CSV with a header line.
void WriteCsv(dao::Recordset& rows, std::ostream& out);

// One field of such a row.
void AddField(CsvLine& line, const QVariant& value);
