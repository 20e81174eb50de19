// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Statements that were executed offline and whose row in the offline log could not be written wait in a queue: the file
// "OvalistoLocal.mdb-unlogged" next to the local database. They are logged in their order before the next statement, at
// the next start, and before an export.

// Adds a statement to the queue, with the server's table names. `triedAs` is the ID under which its row may be in the
// log despite the error (when only the last step of the write failed). If the file cannot be written, the statement
// waits in memory, each later call tries the file again, and a message asks the user not to close the program.
// `basisID` is its row in tblOfflineBasis (data/OfflineBasis.h), which gets the ID of the log row. Never throws.
void QueueForLog(const QString& statement, std::optional<qint32> triedAs = std::nullopt,
                 std::optional<qint32> basisID = std::nullopt);
// Adds the statements that a killed program executed and did not log. To be called at the start, before an export and
// before each statement. Throws runtime::Error.
void QueueUnloggedStatements();

// Sets the path of a sound file whose line is added to Audio.tae once the last statement of the queue is logged.
// Returns false and does nothing when the queue is empty. Throws runtime::Error.
bool QueueAudioPath(const QString& path);

// Number of statements in the queue of the current local database. Throws runtime::Error.
int QueuedStatementCount();

// Logs the statements of the queue in order, each once. Throws runtime::Error at the first failure; that statement and
// the later ones remain in the queue.
void LogQueuedStatements();
// Adds the Audio.tae lines of statements that were in the queue and have been logged. Throws runtime::Error; the
// remaining lines are added by the next call.
void AddQueuedAudioLines();
