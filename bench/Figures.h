// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace bench {

// One row of the tables in docs/performance.md and docs/measurements.md: `id` selects its title, limit and reason in
// bench/figures.tsv; `ours` and `beside` are figures with their units, `ratio` is ours divided by the other (below 1:
// ours needs less). The row is appended to the file in SPOTROOSTER_BENCH_FIGURES; without that variable nothing
// happens.
void Report(const std::string& id, const std::string& ours, const std::string& beside = {},
            std::optional<double> ratio = {});

// The same for two times in milliseconds; the ratio is computed.
void ReportTimes(const std::string& id, double ours, const std::string& other, double beside);

// "0.031 ms", "12.3 ms", "1.21 s": three significant digits.
std::string Milliseconds(double value);

}  // namespace bench
