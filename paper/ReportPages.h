#pragma once
#include "paper/Report.h"

#include <QByteArray>

class QPagedPaintDevice;
class QTextDocument;

// The report as text: title, lines in a table, sum. Black on white, for paper and for a look at it beforehand.
void FillDocument(QTextDocument& document, const Report& report);

// Prints the report on the device's pages, each with the title and its number of all below it. Throws runtime::Error
// when the device does not take it.
void PrintReport(const Report& report, QPagedPaintDevice& device);

// The report as a PDF on A4.
QByteArray PdfOf(const Report& report);
