// SPDX-License-Identifier: MIT
#pragma once

// Helpers shared by the overviews.

#include "data/SpotState.h"
#include "export/reports/Report.h"
#include "export/reports/Reports.h"
#include "platform/dao/Recordset.h"

#include <optional>

// Rows of the current catalogue's database. Throws runtime::Error.
dao::Recordset Rows(const QString& select);
// A text field, trimmed; empty for NULL.
QString TextOf(const dao::Recordset& row, const QString& field);

QString Hours(const SpotFacts& spot);  // "6–22"
// A spot's current state in words; adds its file to the files of the report.
QString StateOn(SpotFacts spot, const FilePresences& presences, Report& report);
QString SpotsAndLength(qsizetype count, qint32 seconds);  // "3 item-spots, samen 1:32"

// An empty report with title and a subtitle of station, mode and today's date.
Report NewReport(const QString& title);
