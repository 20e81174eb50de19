// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"
#include "platform/runtime/Probe.h"

#include <QList>

#include <optional>
#include <variant>

// A record of the current catalogue whose sound file is not at its path.
struct MissingAudio {
  std::variant<ItemSpotRow, ItemPingleRow> row;  // everything that an update of it writes
  runtime::Presence presence = runtime::Presence::NotThere;

  bool IsSpot() const { return std::holds_alternative<ItemSpotRow>(row); }
  qint32 Id() const;
  const QString& Naam() const;
  const QString& Path() const;
  const std::optional<qint32>& LengteSec() const;
};

// Item-spots first, each kind by ID. Records without a path are left out. Throws runtime::Error.
QList<MissingAudio> FindMissingAudio();

// Gives the record another path (path text) through the write layer and adds the line to Audio.tae, as its editor
// would. False after an error, which was reported:
// WasExecuted and WaitsForLog (data/Writes.h) show whether the path is written. Throws runtime::Error when the line
// cannot be added.
bool UpdatePath(MissingAudio& sound, const QString& path);
