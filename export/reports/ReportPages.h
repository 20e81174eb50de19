// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QByteArray>

class QPagedPaintDevice;
class QTextDocument;

// The ends of a report that stand on one page of it.
struct PageEnds {
  bool title = true;
  bool closing = true;
};

// The report as text: title, lines in a table, sum. Black on white, for paper and for a look at it beforehand. A block
// that begins a group with a name has the group's number, counted from 1, as its user state.
void FillDocument(QTextDocument& document, const Report& report, PageEnds ends = {});

// Prints the report on the device's pages, each with the title and its number of all below it. A line stays on one
// page, and so does a group's name with its first line. Throws runtime::Error when the device does not take it.
void PrintReport(const Report& report, QPagedPaintDevice& device);

// The report as a PDF on A4.
QByteArray PdfOf(const Report& report);
