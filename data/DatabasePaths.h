// SPDX-License-Identifier: MIT
#pragma once

// Sets the three database paths in `global` from the program folder, the DatabasePath setting and the station number,
// which is part of the file names unless it is 0.
void FormDatabasePaths();
