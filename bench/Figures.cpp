// SPDX-License-Identifier: MIT
#include "bench/Figures.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace bench {
namespace {

std::string Text(double value, int decimals, const char* unit = "") {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f%s", decimals, value, unit);
  return text;
}

}  // namespace

void Report(const std::string& id, const std::string& ours, const std::string& beside, std::optional<double> ratio) {
  const char* path = std::getenv("SPOTROOSTER_BENCH_FIGURES");
  if (path == nullptr) return;
  std::ofstream(path, std::ios::app) << id << '\t' << ours << '\t' << beside << '\t'
                                     << (ratio ? Text(*ratio, 2) : std::string()) << '\n';
}

void ReportTimes(const std::string& id, double ours, const std::string& other, double beside) {
  Report(id, Milliseconds(ours), other + ' ' + Milliseconds(beside), ours / beside);
}

std::string Milliseconds(double value) {
  if (value >= 1000) return Text(value / 1000, 2, " s");
  if (value >= 100) return Text(value, 0, " ms");
  if (value >= 10) return Text(value, 1, " ms");
  return Text(value, value >= 1 ? 2 : 3, " ms");
}

}  // namespace bench
