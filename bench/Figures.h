// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace bench {

// One row of the table in docs/performance.md: `id` finds its title, limit and reason in bench/figures.tsv; `ours` and
// `beside` are figures with their units, `ratio` is ours divided by the other's (below 1: we need less). The row is
// appended to the file that SPOTROOSTER_BENCH_FIGURES names; without it nothing happens.
void Report(const std::string& id, const std::string& ours, const std::string& beside = {},
            std::optional<double> ratio = {});

// The same for two times in milliseconds; the ratio is theirs.
void ReportTimes(const std::string& id, double ours, const std::string& other, double beside);

// "0.031 ms", "12.3 ms", "1.21 s": three digits that matter.
std::string Milliseconds(double value);

}  // namespace bench
