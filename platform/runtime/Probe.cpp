// SPDX-License-Identifier: MIT
#include "platform/runtime/Probe.h"

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
#include <thread>

using namespace Qt::StringLiterals;

namespace runtime {
namespace {

using Look = std::function<int(const QString&)>;

int StatLook(const QString& hostPath) {
  struct stat status {};
  return ::stat(QFile::encodeName(hostPath).constData(), &status) == 0 ? 0 : errno;
}

Look& CurrentLook() {
  static Look look = StatLook;
  return look;
}

// Drives and shares at which a helper thread hangs. The threads outlive their callers, so the set is never destroyed.
struct Hanging {
  std::mutex mutex;
  QSet<QString> roots;
};

Hanging& HangingRoots() {
  static auto* hanging = new Hanging;
  return *hanging;
}

// What a look and its waiting caller share.
struct LookState {
  std::promise<int> answer;
  bool done = false;     // guarded by Hanging::mutex
  bool givenUp = false;  // the caller waits no longer; likewise guarded
};

// One bounded look: 0 or an errno; ETIMEDOUT when it took too long, or when an earlier one at this root still hangs.
int BoundedLook(const QString& path, const QString& root, std::chrono::milliseconds wait) {
  Hanging& hanging = HangingRoots();
  {
    const std::lock_guard lock(hanging.mutex);
    if (hanging.roots.contains(root)) return ETIMEDOUT;
  }
  auto state = std::make_shared<LookState>();
  std::future<int> answer = state->answer.get_future();
  std::thread([state, path, root, look = CurrentLook()] {
    const int result = look(path);
    {
      const std::lock_guard lock(HangingRoots().mutex);
      state->done = true;
      if (state->givenUp) HangingRoots().roots.remove(root);
    }
    state->answer.set_value(result);
  }).detach();
  if (answer.wait_for(wait) == std::future_status::ready) return answer.get();
  const std::lock_guard lock(hanging.mutex);
  if (!state->done) {
    state->givenUp = true;
    hanging.roots.insert(root);
  }
  return ETIMEDOUT;
}

// What a look's errno says of the path itself.
Presence Meaning(int result) {
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

// The same of a drive's own folder: while it is not there, the drive is away.
Presence MeaningOfRoot(int result) {
  const Presence presence = Meaning(result);
  return presence == Presence::NotThere ? Presence::NotReachable : presence;
}

Presence ProbeHost(const QString& path, const QString& root, std::chrono::milliseconds wait) {
  const Presence first = Meaning(BoundedLook(path, root, wait));
  if (first != Presence::NotThere || root == u"/"_s) return first;
  // Nothing there: is that because the drive itself is away?
  const Presence drive = MeaningOfRoot(BoundedLook(root, root, wait));
  if (drive != Presence::There) return drive;
  // It may have come back between the two looks.
  return Meaning(BoundedLook(path, root, wait));
}

using SteadyClock = ProbeLookScope::SteadyClock;

SteadyClock& CurrentSteadyClock() {
  static SteadyClock clock = &std::chrono::steady_clock::now;
  return clock;
}

// Paths that were there a moment ago, each with the time of that look. By path, not by drive: under one drive other
// folders may be mounts that hang.
struct Sightings {
  std::mutex mutex;
  QHash<QString, std::chrono::steady_clock::time_point> seen;
};

Sightings& Seen() {
  static Sightings sightings;
  return sightings;
}

void NoteSeen(const QString& pathText) {
  const auto now = CurrentSteadyClock()();
  Sightings& sightings = Seen();
  const std::lock_guard lock(sightings.mutex);
  sightings.seen.removeIf([now](const auto& sighting) { return now - sighting.value() >= kSightingHolds; });
  sightings.seen.insert(pathText, now);
}

bool WasJustSeen(const QString& pathText) {
  const auto now = CurrentSteadyClock()();
  Sightings& sightings = Seen();
  const std::lock_guard lock(sightings.mutex);
  const auto sighting = sightings.seen.constFind(pathText);
  return sighting != sightings.seen.constEnd() && now - *sighting < kSightingHolds;
}

void ForgetSightings() {
  const std::lock_guard lock(Seen().mutex);
  Seen().seen.clear();
}

// Whether a path that was there a moment ago still is, looked at in this thread: a helper thread a statement is most of
// what a small statement costs, and the reading that follows a look may hang no less.
bool IsStillThere(const QString& pathText) {
  return WasJustSeen(pathText) && CurrentLook()(HostPath(pathText)) == 0;
}

}  // namespace

Presence Probe(const QString& pathText, std::chrono::milliseconds wait) {
  try {
    // The mapping's folder first: matching names by letter case reads folders, which may hang.
    const QString root = HostRoot(pathText);
    const Presence drive = root == u"/"_s ? Presence::There : MeaningOfRoot(BoundedLook(root, root, wait));
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

ProbeLookScope::ProbeLookScope(std::function<int(const QString&)> look, SteadyClock clock) {
  CurrentLook() = std::move(look);
  if (clock) CurrentSteadyClock() = std::move(clock);
  ForgetSightings();
}
ProbeLookScope::~ProbeLookScope() {
  CurrentLook() = StatLook;
  CurrentSteadyClock() = &std::chrono::steady_clock::now;
  ForgetSightings();
}

}  // namespace runtime
