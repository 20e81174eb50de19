#pragma once
#include <QString>

#include <chrono>
#include <functional>

namespace runtime {

// What is known of a path after a bounded look. A drive that is away must never be taken for a file that is gone.
enum class Presence { There, NotThere, NotReachable };

constexpr std::chrono::milliseconds kProbeWait{5000};

// Looks whether a path text names something, in a helper thread, and waits at most `wait`. While an earlier look at the
// same drive or share still hangs, the answer is NotReachable at once. A drive that is not mapped, or whose folder is
// not there, is NotReachable. Never throws.
Presence Probe(const QString& pathText, std::chrono::milliseconds wait = kProbeWait);

// As Probe, but an Error that tells "not there" from "not reachable" unless it is there.
void RequireThere(const QString& pathText);

// The look itself (0 or an errno of stat), for tests that make it hang or fail; restores the real one on destruction.
class ProbeLookScope {
 public:
  explicit ProbeLookScope(std::function<int(const QString& hostPath)> look);
  ~ProbeLookScope();
  ProbeLookScope(const ProbeLookScope&) = delete;
  ProbeLookScope& operator=(const ProbeLookScope&) = delete;
};

}  // namespace runtime
