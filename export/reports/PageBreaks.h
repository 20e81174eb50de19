// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QtGlobal>

#include <vector>

class QTextDocument;

// The report cut into what fits on a page each, at least one: no line in two pieces, a group's name with its first
// line, the closing with the last. A group that began on an earlier page has its name again and is marked as continued.
// `whole`: the whole report by FillDocument, as wide as a page and in one piece. `height`: of a page, in its units.
std::vector<Report> SplitIntoPages(const Report& report, const QTextDocument& whole, qreal height);
