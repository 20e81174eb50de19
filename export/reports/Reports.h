// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"
#include "export/reports/SeenFiles.h"

#include <QDate>

#include <optional>

// The overviews of the present catalogue, each read when it is asked for. No file is looked at: `seen` tells what is
// known of them. All throw runtime::Error.

// How far the overview of what ends looks ahead.
inline constexpr int kPaperDays = 30;

// Every item-spot, by name.
Report CatalogueReport(const SeenFiles& seen = {});
// Every item with its item-spots in play order, or the files it looks for, and its jingles.
Report BlocksReport(const SeenFiles& seen = {});
// The active item-spots whose last day is within kPaperDays from today, the first to end first.
Report EndingReport();
// When item-spots were aired from the first day to the last one, by spot and then in time, and in which item; one spot
// or all. By the ledger of the present catalogue's database (export/playout/AirLedger.h).
Report AiringsReport(std::optional<qint32> spotID, QDate first, QDate last);
