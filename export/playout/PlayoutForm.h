// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// The files from which a playout system plays blocks.

enum class PlayoutForm {
  Liquidsoap,  // a playlist that tells Liquidsoap's cross when the next sound starts
  Rivendell,   // shell scripts that import the spots as carts and put the blocks together as logs
  M3u,         // a playlist for anything else; it cannot carry mix points
};

// Nothing for a name that is none of "liquidsoap", "rivendell" and "m3u".
std::optional<PlayoutForm> PlayoutFormOf(const QString& name);

struct PlannedBlock {
  Block block;
  BlockPlan plan;  // its sounds have paths that lead to this host: see CanBeWritten
};

struct PlayoutFile {
  QString name;  // letters, digits, "-" and "." only
  QByteArray content;
};

// Whether a playlist can hold the path, and it leads somewhere on this host. A path with a line end or another control
// character cannot be written into a line.
bool CanBeWritten(const QString& path);

// One file a block, and where the form needs it one with all sounds. Each begins with lines that say whose it is.
std::vector<PlayoutFile> PlayoutFilesOf(PlayoutForm form, const std::vector<PlannedBlock>& blocks);

// "blok-12.m3u".
QString PlayoutFileName(PlayoutForm form, qint32 blockID);
// Whether a name is one that this form gives, and whether the content is that of a file made here.
bool IsPlayoutFileName(PlayoutForm form, const QString& name);
bool IsPlayoutFile(const QByteArray& content);

// Parts of the forms.
namespace playout {

inline constexpr char kMark[] = "# Spotrooster";

// A text for people: one line, without what either language takes for its own.
QString PlainTitle(const QString& text);
// As one word of a shell, whatever stands in it.
QByteArray ShellWord(const QString& text);

QByteArray LiquidsoapPlaylist(const PlannedBlock& planned);
QByteArray M3uPlaylist(const PlannedBlock& planned);
QByteArray RivendellLog(const PlannedBlock& planned);
// Imports each sound of all blocks once. Throws runtime::Error when a number does not fit those of carts.
QByteArray RivendellCarts(const std::vector<PlannedBlock>& blocks);

}  // namespace playout
