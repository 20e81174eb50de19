// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QByteArray>

// The report as CSV for a spreadsheet with Dutch settings: semicolons, UTF-8 with byte order mark, CR LF, quotes where
// needed. First a header line; each line repeats the name of its group, and a group without lines has one line.
QByteArray CsvOf(const Report& report);
