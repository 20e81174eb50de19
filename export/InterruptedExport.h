// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

// State of an export that a crash of the program or the computer interrupted.
enum class InterruptedExport {
  None,          // no interrupted export; the log is unchanged
  Dropped,       // the file was not renamed yet: temporary file removed, log unchanged
  Finished,      // the file is complete: its statements were deleted from the log
  NotReachable,  // the drive of the file does not respond: state unknown, nothing changed
  Denied,        // no permission to enter the folder of the file: state unknown, nothing changed
  Missing,       // the file was renamed but is missing now: only the user knows whether it was processed
};

struct ExportSettlement {
  InterruptedExport what = InterruptedExport::None;
  QString path;  // of the file
};

// Completes or undoes an interrupted export as far as possible without asking the user. Call it before the first
// statement is logged and before the next export. Throws runtime::Error, also for a record with file names that no
// export into the current export folder makes.
ExportSettlement SettleInterruptedExport(const QString& localDatabasePath);

// The user's answer to Missing: the statements of a processed file are deleted from the log, otherwise they stay for
// the next export.
enum class MissingFile { Processed, NotProcessed };
void SettleMissingFile(const QString& localDatabasePath, MissingFile answer);

// Asks the user about a missing file. The box cannot be closed without an answer.
MissingFile AskAboutMissingFile(const QString& path);

// SettleInterruptedExport with messages to the user: reports a finished export and calls `decide` for a missing file
// (path text). Throws runtime::Error when the state of the file is unknown; when `decide` throws, nothing has changed.
void FinishInterruptedExport(const QString& localDatabasePath,
                             const std::function<MissingFile(const QString& path)>& decide = AskAboutMissingFile);
