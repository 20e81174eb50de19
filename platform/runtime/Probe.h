// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace runtime {

// What is known of a path after a bounded look. A drive that is away, or a folder that lets nobody look into it, must
// never be taken for a file that is gone.
enum class Presence { There, NotThere, NotReachable, Denied };

constexpr std::chrono::milliseconds kProbeWait{5000};
constexpr std::chrono::milliseconds kSightingHolds{1000};

// Looks whether a path text names something, in a helper thread, and waits at most `wait`. While an earlier look at the
// same drive or share still hangs, the answer is NotReachable at once. A drive that is not mapped, or whose folder is
// not there, is NotReachable; a folder on the way that this user may not enter makes it Denied. Never throws.
Presence Probe(const QString& pathText, std::chrono::milliseconds wait = kProbeWait);

// Whether a path is there; an Error that says why when that cannot be told.
bool IsThere(const QString& pathText);

// As IsThere, but not being there is an Error too. A path that this function found there less than kSightingHolds ago
// is looked at again without a helper thread: saving one record opens the same file many times in a row.
void RequireThere(const QString& pathText);

// The look itself (0 or an errno of stat) and the clock that ages sightings, for tests that make it hang or fail.
// Begins and ends with no sightings; restores the real ones on destruction.
class ProbeLookScope {
 public:
  using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

  explicit ProbeLookScope(std::function<int(const QString& hostPath)> look, SteadyClock clock = {});
  ~ProbeLookScope();
  ProbeLookScope(const ProbeLookScope&) = delete;
  ProbeLookScope& operator=(const ProbeLookScope&) = delete;
};

}  // namespace runtime
