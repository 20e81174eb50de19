// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace bench {

// Where a bench that measures the disk makes its files: the folder on the command line, else SPOTROOSTER_BENCH_FOLDER,
// else the folder of the program, which is usually on a disk (/tmp often is not).
QString BenchFolder(const char* given);

}  // namespace bench
