// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/values/Bytes.h"
#include "tests/platform/jet/support/TableText.h"

namespace jet::test {

// `tblBron`, with 150 rows and indexes of two levels, and `tblDoel`, empty, with the same columns.
void MakeCopyTables(Database& database);
// Fills tblDoel with the rows of tblBron, as a copy of a whole table does.
void CopyRows(Database& database);
// Empties tblDoel.
void EmptyCopy(Database& database);

// Databases with both tables: tblDoel filled; and filled and emptied, so that its pages are free.
const Bytes& FilledCopy();
const Bytes& EmptiedCopy();

// Everything that a reader sees of the database at kPath; a failure when the check finds damage.
witness::Tables StateOf(files::MemoryFileSystem& files);

}  // namespace jet::test
