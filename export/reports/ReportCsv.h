// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QByteArray>

// The report as a table for a spreadsheet that counts in Dutch: semicolons, UTF-8 with its mark, lines ending in
// carriage return and line feed, quotes where a text needs them. A header line first; each line repeats its group, and
// a group without lines has one line of its own.
QByteArray CsvOf(const Report& report);
