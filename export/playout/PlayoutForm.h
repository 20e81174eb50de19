// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

// The files that a playout system needs to play blocks.

enum class PlayoutForm {
  Liquidsoap,  // a playlist with the start of each next sound for Liquidsoap's cross operator
  Rivendell,   // shell scripts that import the spots as carts and make a log of each block
  M3u,         // a playlist for other players; without mix points
};

// For "liquidsoap", "rivendell" and "m3u"; empty for other names.
std::optional<PlayoutForm> PlayoutFormOf(const QString& name);

struct PlannedBlock {
  Block block;
  BlockPlan plan;  // all its sounds have paths for which CanBeWritten is true
};

struct PlayoutFile {
  QString name;  // letters, digits, "-" and "." only
  QByteArray content;
};

// Whether the path can be mapped to a path of this host and written as one line of a playlist (no control characters).
bool CanBeWritten(const QString& path);

// One file per block and, for Rivendell, one with all sounds. Each begins with lines that identify its origin.
std::vector<PlayoutFile> PlayoutFilesOf(PlayoutForm form, const std::vector<PlannedBlock>& blocks);

// "blok-12.m3u".
QString PlayoutFileName(PlayoutForm form, qint32 blockID);
// Whether this form uses such a name, and whether Spotrooster wrote this content.
bool IsPlayoutFileName(PlayoutForm form, const QString& name);
bool IsPlayoutFile(const QByteArray& content);

// Parts of the forms.
namespace playout {

inline constexpr char kMark[] = "# Spotrooster";

// A title as one line, without characters that are special in any of the forms.
QString PlainTitle(const QString& text);
// Quotes any text as one word of a shell command.
QByteArray ShellWord(const QString& text);

QByteArray LiquidsoapPlaylist(const PlannedBlock& planned);
QByteArray M3uPlaylist(const PlannedBlock& planned);
QByteArray RivendellLog(const PlannedBlock& planned);
// Imports each sound of all blocks once. Throws runtime::Error for an ID outside the range of cart numbers.
QByteArray RivendellCarts(const std::vector<PlannedBlock>& blocks);

}  // namespace playout
