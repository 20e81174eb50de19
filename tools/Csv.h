// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Recordset.h"
#include "tools/CsvLine.h"

#include <QStringList>
#include <QVariant>

#include <ostream>

// Rows as CSV with a header line, in the notation of CsvLine.
void WriteCsv(dao::Recordset& rows, std::ostream& out);

// One such line of ready fields.
void WriteCsvLine(const QStringList& fields, std::ostream& out);

// One field as it stands in such a line.
QString CsvField(const QVariant& value);
