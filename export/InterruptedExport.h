// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

// What became of an export during which the program or the computer went down.
enum class InterruptedExport {
  None,          // there was none; the log is as it is
  Dropped,       // its file never got its name: the temporary one is gone, the log kept every statement
  Finished,      // its file is there: the log holds its statements no more
  NotReachable,  // the drive of its file does not answer: nothing can be told, nothing was changed
  Denied,        // the folder of its file may not be entered: likewise
  Missing,       // its file got its name and is there no more: only the user knows whether it was processed
};

struct ExportSettlement {
  InterruptedExport what = InterruptedExport::None;
  QString path;  // of the file
};

// Settles, as far as that can be done without asking, what the record beside the local database tells. To be called
// before the first statement is logged and before the next export. Throws runtime::Error, also for a record that names
// other files than an export into the present export folder makes.
ExportSettlement SettleInterruptedExport(const QString& localDatabasePath);

// The user's answer to Missing: a processed file's statements leave the log, others stay for the next export.
enum class MissingFile { Processed, NotProcessed };
void SettleMissingFile(const QString& localDatabasePath, MissingFile answer);

// Asks the program's user about a missing file; Esc and the frame give no answer.
MissingFile AskAboutMissingFile(const QString& path);

// The same for the program's user: tells of a finished export, and has `decide` say what became of a missing file (path
// text). An Error when nothing can be told of the file; one that `decide` throws leaves everything as it is.
void FinishInterruptedExport(const QString& localDatabasePath,
                             const std::function<MissingFile(const QString& path)>& decide = AskAboutMissingFile);
