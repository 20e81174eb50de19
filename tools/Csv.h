#pragma once
#include "platform/dao/Recordset.h"

#include <QStringList>
#include <QVariant>

#include <ostream>

// Rows as CSV (RFC 4180, UTF-8) with a header line. NULL is an empty field, an empty text is "", dates are
// yyyy-mm-dd hh:mm:ss, booleans 0 or -1, binary data hexadecimal.
void WriteCsv(dao::Recordset& rows, std::ostream& out);

// One such line of ready fields.
void WriteCsvLine(const QStringList& fields, std::ostream& out);

// One field as it stands in such a line.
QString CsvField(const QVariant& value);
