// SPDX-License-Identifier: MIT
#include "export/playout/BlockPlan.h"

#include "data/SpotState.h"
#include "data/Text.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A larger number of spots is a typing error; each spot costs a disk access.
constexpr int kMaxFiles = 999;

using Candidates = std::vector<PlannedSound>;

// Fisher-Yates: std::shuffle may differ between libraries, and the same seed must give the same order.
template <class Element>
void Shuffle(std::vector<Element>& elements, quint32 seed) {
  std::mt19937 random(seed);
  for (std::size_t left = elements.size(); left > 1; --left)
    std::swap(elements[left - 1], elements[random() % left]);
}

std::optional<LeftOut> ReasonAgainst(const SpotFacts& spot, const QDateTime& moment) {
  if (!spot.aktief) return LeftOut::NotActive;
  if (spot.path.isEmpty()) return LeftOut::NoFile;
  if (spot.eindDatum && *spot.eindDatum < moment.date()) return LeftOut::Over;
  if (spot.startDatum && *spot.startDatum > moment.date()) return LeftOut::NotBegun;
  if (!WithinHours(spot, moment.time().hour())) return LeftOut::OutsideHours;
  return std::nullopt;
}

bool PlayedLongerAgo(const BlockSpot& left, const BlockSpot& right) {
  if (left.lastPlayed.isValid() != right.lastPlayed.isValid()) return !left.lastPlayed.isValid();
  if (left.lastPlayed.isValid() && left.lastPlayed != right.lastPlayed) return left.lastPlayed < right.lastPlayed;
  return left.playCount < right.playCount;
}

// Puts a plan together.
class Planner {
 public:
  Planner(const Block& block, const QDateTime& moment, quint32 seed, const LookUpFile& lookUp)
      : block_(block), moment_(moment), seed_(seed), lookUp_(lookUp) {
    plan_.wanted = block.WantedSpots();
  }

  BlockPlan Plan() {
    if (!block_.aktief) return Silent(Silence::BlockNotActive);
    if (block_.filling == Block::Filling::Unknown) return Silent(Silence::NotFilled);
    const Candidates spots = block_.filling == Block::Filling::List ? FromList() : FromFiles();
    plan_.spots = static_cast<int>(spots.size());
    if (spots.empty()) return Silent(Silence::NoSpots);
    AddWithJingles(spots);
    CutMixPoints();
    SetStarts();
    return std::move(plan_);
  }

 private:
  BlockPlan Silent(Silence why) {
    plan_.silence = why;
    return std::move(plan_);
  }

  void LeaveOut(const PlannedSound& sound, LeftOut reason) {
    plan_.leftOut.push_back({sound.kind, sound.id, sound.naam, sound.path, reason});
  }

  // Sets the sound's facts from its file; returns the reason when the file cannot play.
  std::optional<LeftOut> ApplyFile(PlannedSound& sound, std::optional<qint32> lengteSec) const {
    const std::optional<SoundFile> file = lookUp_ ? lookUp_(sound.path) : std::nullopt;
    if (file && file->presence == runtime::Presence::NotThere) return LeftOut::FileMissing;
    if (file && !file->readable) return LeftOut::Unreadable;
    sound.reachable = !file || file->presence == runtime::Presence::There;
    if (file && file->lengthMs) {
      sound.lengthMs = *file->lengthMs;
    } else if (lengteSec && *lengteSec > 0) {
      sound.lengthMs = qint64{*lengteSec} * 1000;
    }
    sound.mixMs = std::max(0, sound.storedMixMs);
    return std::nullopt;
  }

  Candidates FromList() {
    std::vector<const BlockSpot*> fit;
    Candidates sounds;
    for (const BlockSpot& spot : block_.spots) {
      PlannedSound sound{SoundKind::Spot, spot.id, spot.naam, spot.facts.path, spot.mixMs};
      std::optional<LeftOut> reason = ReasonAgainst(spot.facts, moment_);
      if (!reason) reason = ApplyFile(sound, spot.facts.lengteSec);
      if (reason) {
        LeaveOut(sound, *reason);
      } else {
        fit.push_back(&spot);
        sounds.push_back(std::move(sound));
      }
    }
    return Choose(fit, sounds);
  }

  // Chooses the wanted number of the playable spots, in playing order.
  Candidates Choose(const std::vector<const BlockSpot*>& fit, const Candidates& sounds) {
    std::vector<std::size_t> order(fit.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const bool random = block_.several && block_.random;
    if (random) {
      Shuffle(order, seed_);
    } else {
      std::stable_sort(order.begin(), order.end(),
                       [&](std::size_t left, std::size_t right) { return PlayedLongerAgo(*fit[left], *fit[right]); });
    }
    const std::size_t count = std::min(order.size(), static_cast<std::size_t>(plan_.wanted));
    std::vector<std::size_t> rest(order.begin() + static_cast<std::ptrdiff_t>(count), order.end());
    order.resize(count);
    if (!random) std::sort(order.begin(), order.end());
    std::sort(rest.begin(), rest.end());
    for (const std::size_t at : rest)
      LeaveOut(sounds[at], LeftOut::NotItsTurn);
    Candidates chosen;
    for (const std::size_t at : order)
      chosen.push_back(sounds[at]);
    return chosen;
  }

  Candidates FromFiles() {
    Candidates sounds;
    for (int number = 1; number <= std::min(plan_.wanted, kMaxFiles); ++number) {
      const QString path = NumberedFileName(block_.pattern, moment_, number);
      PlannedSound sound{SoundKind::File, 0, GetFile(path), path, block_.patternMixMs};
      const std::optional<LeftOut> reason = path.isEmpty() ? LeftOut::NoFile : ApplyFile(sound, {});
      if (reason) {
        LeaveOut(sound, *reason);
      } else {
        sounds.push_back(std::move(sound));
      }
      if (path.isEmpty()) break;  // an incomplete pattern gives no name for any number
    }
    if (block_.several && block_.random) Shuffle(sounds, seed_);
    return sounds;
  }

  std::optional<PlannedSound> Jingle(const std::optional<BlockJingle>& jingle, SoundKind kind) {
    if (!jingle) return std::nullopt;
    PlannedSound sound{kind, jingle->id, jingle->naam, jingle->path, jingle->mixMs};
    std::optional<LeftOut> reason;
    if (!jingle->exists) {
      reason = LeftOut::JingleGone;
    } else if (!jingle->aktief) {
      reason = LeftOut::NotActive;
    } else if (jingle->path.isEmpty()) {
      reason = LeftOut::NoFile;
    } else {
      reason = ApplyFile(sound, jingle->lengteSec);
    }
    if (!reason) return sound;
    LeaveOut(sound, *reason);
    return std::nullopt;
  }

  void AddWithJingles(const Candidates& spots) {
    if (const auto opener = Jingle(block_.opener, SoundKind::Opener)) plan_.sounds.push_back(*opener);
    std::optional<PlannedSound> middle;
    if (spots.size() > 1) middle = Jingle(block_.middle, SoundKind::Middle);
    for (std::size_t at = 0; at < spots.size(); ++at) {
      if (at > 0 && middle) plan_.sounds.push_back(*middle);
      plan_.sounds.push_back(spots[at]);
    }
    if (const auto closer = Jingle(block_.closer, SoundKind::Closer)) plan_.sounds.push_back(*closer);
  }

  // Backwards, since the time available in a sound depends on its own mix point.
  void CutMixPoints() {
    plan_.sounds.back().mixMs = 0;
    for (std::size_t at = plan_.sounds.size() - 1; at-- > 0;) {
      PlannedSound& sound = plan_.sounds[at];
      const PlannedSound& next = plan_.sounds[at + 1];
      qint64 longest = sound.lengthMs.value_or(sound.mixMs);
      if (next.lengthMs) longest = std::min(longest, *next.lengthMs - next.mixMs);
      sound.mixMs = static_cast<qint32>(std::min<qint64>(sound.mixMs, std::max<qint64>(0, longest)));
    }
  }

  void SetStarts() {
    std::optional<qint64> start = 0;
    for (PlannedSound& sound : plan_.sounds) {
      sound.startMs = start;
      if (start && sound.lengthMs) {
        *start += *sound.lengthMs - sound.mixMs;
      } else {
        start.reset();
      }
    }
  }

  const Block& block_;
  const QDateTime& moment_;
  quint32 seed_;
  const LookUpFile& lookUp_;
  BlockPlan plan_;
};

}  // namespace

int Block::WantedSpots() const {
  if (!several) return 1;
  const int wanted = std::max(1, count);
  return most > 0 ? std::min(wanted, most) : wanted;
}

std::optional<qint64> BlockPlan::LengthMs() const {
  if (sounds.empty()) return 0;
  const PlannedSound& last = sounds.back();
  if (!last.startMs || !last.lengthMs) return std::nullopt;
  return *last.startMs + *last.lengthMs;
}

BlockPlan PlanBlock(const Block& block, const QDateTime& moment, quint32 seed, const LookUpFile& lookUp) {
  return Planner(block, moment, seed, lookUp).Plan();
}

quint32 SeedOf(qint32 blockID, const QDateTime& moment) {
  const auto hours = static_cast<quint32>(moment.date().toJulianDay() * 24 + moment.time().hour());
  return hours * 2654435761U + static_cast<quint32>(blockID);
}
