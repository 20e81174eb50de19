// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"

#include <QByteArray>

class QPagedPaintDevice;
class QTextDocument;

// Which ends of the report are on this page.
struct PageEnds {
  bool title = true;
  bool closing = true;
};

// Fills the document with title, table of lines and totals, black on white for print and preview. A block with a
// group's name has the group's number, from 1, as its user state.
void FillDocument(QTextDocument& document, const Report& report, PageEnds ends = {});

// Prints the report on the device's pages, split by SplitIntoPages, with a footer of title and page number. Throws
// runtime::Error when the device cannot print.
void PrintReport(const Report& report, QPagedPaintDevice& device);

// The report as a PDF on A4.
QByteArray PdfOf(const Report& report);
