// SPDX-License-Identifier: MIT
#include "bench/BenchFolder.h"

#include <filesystem>

namespace bench {

QString BenchFolder(const char* given) {
  if (given != nullptr) return QString::fromLocal8Bit(given);
  QString wanted = qEnvironmentVariable("SPOTROOSTER_BENCH_FOLDER");
  if (!wanted.isEmpty()) return wanted;
  return QString::fromStdString(std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

}  // namespace bench
