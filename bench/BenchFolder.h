// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace bench {

// Where a bench that waits for the disk makes its files: the folder given on the command line, else
// SPOTROOSTER_BENCH_FOLDER, else the folder of the program, which is on a disk as a rule, as /tmp is not.
QString BenchFolder(const char* given);

}  // namespace bench
