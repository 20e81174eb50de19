// SPDX-License-Identifier: MIT
#pragma once

// What the overviews share while they are put together.
#include "data/SpotFacts.h"
#include "export/reports/Report.h"
#include "export/reports/SeenFiles.h"
#include "platform/dao/Recordset.h"

#include <optional>

// Rows of the present catalogue. Throws runtime::Error.
dao::Recordset Rows(const QString& select);
// A text field, trimmed; empty for NULL.
QString TextOf(const dao::Recordset& row, const QString& field);

QString Day(const std::optional<QDate>& day);  // "31-03-2025"
QString Hours(const SpotFacts& spot);          // "6–22"
// A spot's state at this moment, in words; its file joins those of the report.
QString StateOn(SpotFacts spot, const SeenFiles& seen, Report& report);
QString Counted(qsizetype count, const QString& one, const QString& many);
QString SpotsAndLength(qsizetype count, qint32 seconds);  // "3 item-spots, samen 1:32"

// With its title, and the station, mode and day of now.
Report Begun(const QString& title);
