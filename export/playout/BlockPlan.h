// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/Block.h"

#include <functional>
#include <optional>
#include <vector>

// Which sounds a block plays at a given moment. Every window and file that shows or plays a block uses this.

enum class SoundKind { Opener, Spot, File, Middle, Closer };

// Why a sound of a block does not play.
enum class LeftOut {
  NotActive,     // the spot or jingle
  NoFile,        // the record has no path, or the pattern gives no name
  FileMissing,   // nothing at that path
  Unreadable,    // the file has no readable audio
  Over,          // after the last day
  NotBegun,      // before the first day
  OutsideHours,  // the hour of the day is outside StartUur..EindUur
  NotItsTurn,    // allowed, but enough others come first
  JingleGone,    // the block refers to a jingle that was removed
};

// Why a block plays nothing.
enum class Silence { None, BlockNotActive, NotFilled, NoSpots };

// Known facts of an audio file.
struct SoundFile {
  runtime::Presence presence = runtime::Presence::There;
  std::optional<qint32> lengthMs{};  // exact; empty: not measured
  bool readable = true;              // false: measured, without readable audio
};
// Looks up a file by its path text; empty when the file was not checked. An unchecked or unreachable file counts as
// present.
using LookUpFile = std::function<std::optional<SoundFile>(const QString& path)>;

struct PlannedSound {
  SoundKind kind = SoundKind::Spot;
  qint32 id = 0;  // of the item-spot or item-pingle; 0 for a file found by name
  QString naam;
  QString path;
  qint32 storedMixMs = 0;            // value in the catalogue
  qint32 mixMs = 0;                  // value when played, see PlanBlock; 0 for the last sound
  std::optional<qint64> lengthMs{};  // measured, else from the stored seconds; empty: unknown
  std::optional<qint64> startMs{};   // from the start of the block; empty: an earlier length is unknown
  bool reachable = true;             // false: drive or folder not accessible, so existence is unknown
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
  std::optional<qint64> LengthMs() const;  // until the end of the last sound; empty: unknown
};

// Rules. A spot may play when it is active, within its days and hours, and has a file. One spot: the one played longest
// ago (never played first, then the lower play count, then list order). Several: as many as the block's count, in list
// order, those played longest ago when there are more; with `random`, chosen and ordered by the seed. Found by name:
// the file of the moment, or the files with -1, -2, ... in place of -x. The opener comes before the spots, the middle
// jingle between them, the closer after them. Without a playable spot or file the block is silent.
//
// A sound starts `mixMs` before the end of the previous one. Where lengths are known a mix point is limited so that at
// most two sounds overlap: to the length of its own sound, and to the time the next sound has before its own mix point.
BlockPlan PlanBlock(const Block& block, const QDateTime& moment, quint32 seed, const LookUpFile& lookUp);

// The seed of an hour: every player gets the same random order within that hour.
quint32 SeedOf(qint32 blockID, const QDateTime& moment);
