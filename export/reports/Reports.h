// SPDX-License-Identifier: MIT
#pragma once

#include "export/reports/Report.h"
#include "platform/runtime/Probe.h"

#include <QDate>
#include <QHash>
#include <QString>

#include <optional>

// The overviews of the current catalogue, read from the database at each call. Audio files are not accessed: the caller
// passes what it knows of them. All functions throw runtime::Error.

// Presence of audio files by path text; without the files that were not checked.
using FilePresences = QHash<QString, runtime::Presence>;

// Number of days that EndingReport looks ahead.
inline constexpr int kPaperDays = 30;

// Every item-spot, by name.
Report CatalogueReport(const FilePresences& presences = {});
// Every item with its item-spots in play order or its file name pattern, and its jingles.
Report BlocksReport(const FilePresences& presences = {});
// Active item-spots whose last day is within kPaperDays from today, sorted by last day.
Report EndingReport();
// Airings from `first` to `last` (both inclusive), sorted by spot and time, each with its item; of one spot or all.
// From the ledger of the current catalogue's database (export/playout/AirLedger.h).
Report AiringsReport(std::optional<qint32> spotID, QDate first, QDate last);
