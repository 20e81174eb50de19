// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QtGlobal>

#include <vector>

class QTextDocument;

// Splits the report into pages, at least one. Never splits a line, nor a group's name from its first line, nor the
// closing from the last line. A group that began on an earlier page has its name again, marked as continued. `whole`:
// the complete report by FillDocument, as wide as a page, not split. `height`: of a page, in the units of `whole`.
std::vector<Report> SplitIntoPages(const Report& report, const QTextDocument& whole, qreal height);
