// SPDX-License-Identifier: MIT
#include "platform/runtime/Probe.h"

#include "platform/runtime/DetachedThread.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QFile>
#include <QHash>
#include <QSet>

#include <sys/stat.h>

#include <cerrno>
#include <future>
#include <memory>
#include <mutex>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

using Check = std::function<int(const QString&)>;

int StatCheck(const QString& hostPath) {
  struct stat status {};
  return ::stat(QFile::encodeName(hostPath).constData(), &status) == 0 ? 0 : errno;
}

Check& CurrentCheck() {
  static Check check = StatCheck;
  return check;
}

// Drives and shares on which a helper thread hangs. The threads outlive their callers, so the set is never destroyed.
struct Hanging {
  std::mutex mutex;
  QSet<QString> roots;
};

Hanging& HangingRoots() {
  static auto* hanging = new Hanging;
  return *hanging;
}

// Shared by a check and its waiting caller. The flags are guarded by Hanging::mutex.
struct CheckState {
  std::promise<int> result;
  bool done = false;
  bool givenUp = false;  // the caller waits no longer
};

// A check with a timeout: 0 or an errno; ETIMEDOUT after `wait`, or when an earlier check of this root still hangs.
int BoundedCheck(const QString& path, const QString& root, std::chrono::milliseconds wait) {
  Hanging& hanging = HangingRoots();
  {
    const std::lock_guard lock(hanging.mutex);
    if (hanging.roots.contains(root)) return ETIMEDOUT;
  }
  auto state = std::make_shared<CheckState>();
  std::future<int> future = state->result.get_future();
  StartDetached([state, path, root, check = CurrentCheck()] {
    const int result = check(path);
    {
      const std::lock_guard lock(HangingRoots().mutex);
      state->done = true;
      if (state->givenUp) HangingRoots().roots.remove(root);
    }
    state->result.set_value(result);
  });
  if (future.wait_for(wait) == std::future_status::ready) return future.get();
  const std::lock_guard lock(hanging.mutex);
  if (!state->done) {
    state->givenUp = true;
    hanging.roots.insert(root);
  }
  return ETIMEDOUT;
}

// What the errno of a check means for the path itself.
Presence PresenceOf(int result) {
  switch (result) {
    case 0:
      return Presence::There;
    case ENOENT:
    case ENOTDIR:
      return Presence::NotThere;
    case EACCES:
    case EPERM:
      return Presence::Denied;
    default:
      return Presence::NotReachable;
  }
}

// The same for the folder of a drive: when it does not exist, the drive is not reachable.
Presence PresenceOfRoot(int result) {
  const Presence presence = PresenceOf(result);
  return presence == Presence::NotThere ? Presence::NotReachable : presence;
}

Presence ProbeHost(const QString& path, const QString& root, std::chrono::milliseconds wait) {
  const Presence first = PresenceOf(BoundedCheck(path, root, wait));
  if (first != Presence::NotThere || root == u"/"_s) return first;
  // The drive itself may be unreachable.
  const Presence drive = PresenceOfRoot(BoundedCheck(root, root, wait));
  if (drive != Presence::There) return drive;
  // It may have become reachable between the two checks.
  return PresenceOf(BoundedCheck(path, root, wait));
}

using SteadyClock = ProbeLookScope::SteadyClock;

SteadyClock& CurrentSteadyClock() {
  static SteadyClock clock = &std::chrono::steady_clock::now;
  return clock;
}

// Paths that existed at their last check, each with the time of that check. Per path, not per drive: other folders of
// the drive may be mounts that hang.
struct SeenPaths {
  std::mutex mutex;
  QHash<QString, std::chrono::steady_clock::time_point> seen;
};

SeenPaths& RecentlySeen() {
  static SeenPaths seen;
  return seen;
}

void NoteSeen(const QString& pathText) {
  const auto now = CurrentSteadyClock()();
  SeenPaths& paths = RecentlySeen();
  const std::lock_guard lock(paths.mutex);
  paths.seen.removeIf([now](const auto& path) { return now - path.value() >= kRecentlySeen; });
  paths.seen.insert(pathText, now);
}

bool WasRecentlySeen(const QString& pathText) {
  const auto now = CurrentSteadyClock()();
  SeenPaths& paths = RecentlySeen();
  const std::lock_guard lock(paths.mutex);
  const auto found = paths.seen.constFind(pathText);
  return found != paths.seen.constEnd() && now - *found < kRecentlySeen;
}

void ForgetSeen() {
  const std::lock_guard lock(RecentlySeen().mutex);
  RecentlySeen().seen.clear();
}

// Whether a recently seen path still exists, checked in this thread: a helper thread would be most of the cost of a
// small statement, and the reading that follows the check can hang just as well.
bool IsStillThere(const QString& pathText) {
  return WasRecentlySeen(pathText) && CurrentCheck()(HostPath(pathText)) == 0;
}

}  // namespace

Presence Probe(const QString& pathText, std::chrono::milliseconds wait) {
  try {
    // The mapping's folder first: matching names by letter case reads folders, which may hang.
    const QString root = HostRoot(pathText);
    const Presence drive = root == u"/"_s ? Presence::There : PresenceOfRoot(BoundedCheck(root, root, wait));
    if (drive != Presence::There) return drive;
    return ProbeHost(HostPath(pathText), root, wait);
  } catch (const Error&) {
    return Presence::NotReachable;
  }
}

bool IsThere(const QString& pathText) {
  switch (Probe(pathText)) {
    case Presence::There:
      return true;
    case Presence::NotThere:
      return false;
    case Presence::Denied:
      throw Error(u"'%1' is niet toegankelijk: toegang geweigerd."_s.arg(pathText));
    case Presence::NotReachable:
      break;
  }
  throw Error(u"'%1' is niet bereikbaar: de schijf of netwerkmap antwoordt niet."_s.arg(pathText));
}

void RequireThere(const QString& pathText) {
  if (!IsStillThere(pathText) && !IsThere(pathText)) throw Error(u"'%1' bestaat niet."_s.arg(pathText));
  NoteSeen(pathText);
}

ProbeLookScope::ProbeLookScope(std::function<int(const QString&)> check, SteadyClock clock) {
  CurrentCheck() = std::move(check);
  if (clock) CurrentSteadyClock() = std::move(clock);
  ForgetSeen();
}
ProbeLookScope::~ProbeLookScope() {
  CurrentCheck() = StatCheck;
  CurrentSteadyClock() = &std::chrono::steady_clock::now;
  ForgetSeen();
}

}  // namespace runtime
