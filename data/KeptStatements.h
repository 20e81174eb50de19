// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Statements that were executed offline and whose row in the offline log could not be written. They are kept in order
// in the file "OvalistoLocal.mdb-unlogged" next to the local database. They are logged before the next statement, at
// the next start, and before an export.

// Keeps a statement, with the server's table names. `triedAs` is the ID under which its row may be in the log despite
// the error (when only the last step of the write failed). If the file cannot be written, the statement is kept in
// memory, each later call tries the file again, and a message asks the user not to close the program. `basisID` is its
// row in tblOfflineBasis (data/OfflineBasis.h), which gets the ID of the log row. Never throws.
void KeepStatement(const QString& statement, std::optional<qint32> triedAs = std::nullopt,
                   std::optional<qint32> basisID = std::nullopt);
// Keeps the statements that a killed program executed and did not log. To be called at the start, before an export and
// before each statement. Throws runtime::Error.
void KeepUnloggedStatements();

// Sets the path of a sound file whose line is added to Audio.tae once the last kept statement is logged. Returns false
// and does nothing when no statement is kept. Throws runtime::Error.
bool KeepAudioPath(const QString& path);

// Number of statements kept for the current local database. Throws runtime::Error.
int KeptStatementCount();

// Logs the kept statements in order, each once. Throws runtime::Error at the first failure; that statement and the
// later ones remain kept.
void LogKeptStatements();
// Adds the Audio.tae lines of kept statements that have been logged. Throws runtime::Error; the remaining lines are
// kept.
void AddKeptAudioLines();
