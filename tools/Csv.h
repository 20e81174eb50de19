// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "tools/CsvLine.h"

#include <QStringList>
#include <QVariant>

#include <ostream>

// Rows as CSV with a header line, in the notation of CsvLine.
void WriteCsv(dao::Recordset& rows, std::ostream& out);

// One such line from fields that are formatted already.
void WriteCsvLine(const QStringList& fields, std::ostream& out);

// One field, quoted as needed.
QString CsvField(const QVariant& value);
