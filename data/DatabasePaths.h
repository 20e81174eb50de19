// SPDX-License-Identifier: MIT
#pragma once

// Forms the three database paths in `global` from the program's folder, the DatabasePath setting and the station number
// (which stands in the file names unless it is 0).
void FormDatabasePaths();
