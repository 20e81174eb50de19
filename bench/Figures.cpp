// SPDX-License-Identifier: MIT
#include "bench/Figures.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace bench {
namespace {

std::string Text(const char* format, double value) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

}  // namespace

void Report(const std::string& id, const std::string& ours, const std::string& beside, std::optional<double> ratio) {
  const char* path = std::getenv("SPOTROOSTER_BENCH_FIGURES");
  if (path == nullptr) return;
  std::ofstream(path, std::ios::app) << id << '\t' << ours << '\t' << beside << '\t'
                                     << (ratio ? Text("%.2f", *ratio) : std::string()) << '\n';
}

void ReportTimes(const std::string& id, double ours, const std::string& other, double beside) {
  Report(id, Milliseconds(ours), other + ' ' + Milliseconds(beside), ours / beside);
}

std::string Milliseconds(double value) {
  if (value >= 1000) return Text("%.2f s", value / 1000);
  if (value >= 100) return Text("%.0f ms", value);
  if (value >= 10) return Text("%.1f ms", value);
  return Text(value >= 1 ? "%.2f ms" : "%.3f ms", value);
}

}  // namespace bench
