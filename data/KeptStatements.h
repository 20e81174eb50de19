// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

// Statements that were carried out offline and whose row in the offline log could not be written. They are kept, in the
// order in which they were carried out, in a file beside the local database ("OvalistoLocal.mdb-unlogged") until they
// are logged: before the next statement is, at the next start, and before an export.

// Keeps a statement, as the log is to have it. `triedAs` is the number under which its row may be in the log all the
// same: when writing the row failed only in its last step. When the file cannot be written the statement is kept in
// memory, the file is tried again with each later call, and the user is told not to close the program. Shows no box
// otherwise; never throws.
void KeepStatement(const QString& statement, std::optional<qint32> triedAs = std::nullopt);

// The path of a sound file that gets its line in Audio.tae when the statement kept last is logged. False, and nothing
// done, when none is kept.
bool KeepAudioPath(const QString& path);

// How many statements are kept for the present local database. Throws runtime::Error.
int KeptStatementCount();

// Logs what is kept, once and in order. runtime::Error at the first that fails; from there on everything stays kept.
void LogKeptStatements();
// Adds to Audio.tae the lines of statements that were kept and are logged by now. Likewise.
void AddKeptAudioLines();
