#pragma once
#include <QString>

#include <chrono>
#include <functional>

namespace runtime {

// What is known of a path after a bounded look. A drive that is away must never be taken for a file that is gone.
enum class Presence { There, NotThere, NotReachable };

constexpr std::chrono::milliseconds kProbeWait{5000};
constexpr std::chrono::milliseconds kSightingHolds{1000};

// Looks whether a path text names something, in a helper thread, and waits at most `wait`. While an earlier look at the
// same drive or share still hangs, the answer is NotReachable at once. A drive that is not mapped, or whose folder is
// not there, is NotReachable. Never throws.
Presence Probe(const QString& pathText, std::chrono::milliseconds wait = kProbeWait);

// As Probe, but an Error that tells "not there" from "not reachable" unless it is there. A path that this function
// found there less than kSightingHolds ago is looked at again without a helper thread: saving one record opens the same
// file many times in a row.
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
