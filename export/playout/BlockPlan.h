// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/Block.h"

#include <functional>
#include <optional>
#include <vector>

// Which sounds a block holds at a moment. Every window and file that shows or plays a block asks here.

enum class SoundKind { Opener, Spot, File, Middle, Closer };

// Why a sound that belongs to a block does not play.
enum class LeftOut {
  NotActive,     // the spot or jingle
  NoFile,        // its record has no path, or the pattern gives no name
  FileMissing,   // nothing at that path
  Unreadable,    // the file holds no sound that can be read
  Over,          // the last day is past
  NotBegun,      // the first day is still to come
  OutsideHours,  // at this hour of the day
  NotItsTurn,    // it may play, but others come first and there are enough of them
  JingleGone,    // the block refers to a jingle that was removed
};

// Why a whole block is silent.
enum class Silence { None, BlockNotActive, NotFilled, NoSpots };

// What is known of an audio file.
struct SoundFile {
  runtime::Presence presence = runtime::Presence::There;
  std::optional<qint32> lengthMs{};  // exact; none: not measured
  bool readable = true;              // false: measured, and it holds no sound
};
// Looks a file up by its path text; nothing when it was not looked at. A file that was not looked at or is out of reach
// counts as there.
using LookUpFile = std::function<std::optional<SoundFile>(const QString& path)>;

struct PlannedSound {
  SoundKind kind = SoundKind::Spot;
  qint32 id = 0;  // of the item-spot or item-pingle; 0 for a file found by its name
  QString naam;
  QString path;
  qint32 storedMixMs = 0;            // as the catalogue has it
  qint32 mixMs = 0;                  // as it is played: see PlanBlock. 0 for the last sound
  std::optional<qint64> lengthMs{};  // measured, else the stored seconds; none: not known
  std::optional<qint64> startMs{};   // from the beginning of the block; none: a length before it is not known
  bool reachable = true;             // false: the drive or folder gave no answer, so nobody knows whether it is there
};

struct LeftOutSound {
  SoundKind kind = SoundKind::Spot;
  qint32 id = 0;
  QString naam;
  QString path;
  LeftOut reason = LeftOut::NotActive;
};

struct BlockPlan {
  std::vector<PlannedSound> sounds;  // in the order in which they start
  std::vector<LeftOutSound> leftOut;
  Silence silence = Silence::None;
  int spots = 0;   // spots and files among the sounds
  int wanted = 0;  // how many there should be

  bool IsSilent() const { return sounds.empty(); }
  bool IsShort() const { return spots < wanted; }
  std::optional<qint64> LengthMs() const;  // until the last sound has ended; none: not known
};

// The rule. Spots that are active, within their days and hours and have a file may play. One spot: the one played
// longest ago (never played first, then the lower play count, then the order of the list). Several: as many as the
// block asks for, in the order of the list, those played longest ago when there are more; with `random`, drawn and put
// in order by the seed. Found by name: the file of the moment, or those with -1, -2, ... in place of -x. Before them
// the opener, between them the middle jingle, behind them the closer. Without a spot or file that may play the block is
// silent.
//
// The next sound starts at the end of this one less its mix point. A mix point is cut so that no more than two sounds
// are heard at a time, where the lengths are known: to the length of its own sound, and to what the next one has left
// before its own mix point.
BlockPlan PlanBlock(const Block& block, const QDateTime& moment, quint32 seed, const LookUpFile& lookUp);

// The seed that belongs to an hour: whoever plays the block in that hour gets the same order.
quint32 SeedOf(qint32 blockID, const QDateTime& moment);
