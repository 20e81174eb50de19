// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <chrono>
#include <functional>

namespace runtime {

// Result of a presence check. A drive that does not respond (NotReachable) and a folder without permission (Denied)
// must never be taken for a file that was deleted.
enum class Presence { There, NotThere, NotReachable, Denied };

constexpr std::chrono::milliseconds kProbeWait{5000};
constexpr std::chrono::milliseconds kRecentlySeen{1000};

// Checks in a helper thread whether a path text exists, and waits at most `wait`. While an earlier check of the same
// drive or share still hangs, returns NotReachable at once. A drive that is not mapped, or whose folder does not exist,
// is NotReachable; a folder on the path that this user may not enter gives Denied. Never throws.
Presence Probe(const QString& pathText, std::chrono::milliseconds wait = kProbeWait);

// Whether a path exists; an Error with the reason when the path is NotReachable or Denied.
bool IsThere(const QString& pathText);

// As IsThere, but a path that does not exist is an Error too. A path that this function found less than kRecentlySeen
// ago is checked again without a helper thread: saving one record opens the same file many times in a row.
void RequireThere(const QString& pathText);

// Replaces the check (0 or an errno of stat) and the clock of kRecentlySeen, for tests in which they hang or fail.
// Forgets the recently seen paths at its beginning and its end.
class ProbeLookScope {
 public:
  using SteadyClock = std::function<std::chrono::steady_clock::time_point()>;

  explicit ProbeLookScope(std::function<int(const QString& hostPath)> check, SteadyClock clock = {});
  ~ProbeLookScope();
  ProbeLookScope(const ProbeLookScope&) = delete;
  ProbeLookScope& operator=(const ProbeLookScope&) = delete;
};

}  // namespace runtime
