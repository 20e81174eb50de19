// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QHash>
#include <QStringList>

#include <vector>

// Known facts of audio files, by path text.
using SoundFiles = QHash<QString, SoundFile>;

enum class Look {
  Presence,  // whether the files exist
  Measure,   // also their exact length
};

// Checks the files, several in parallel; a drive that does not respond costs runtime::kProbeWait once. Any thread that
// may block.
SoundFiles LookAtFiles(const QStringList& paths, Look look);

// Look-up in `files`, which must outlive the result.
LookUpFile In(const SoundFiles& files);

// All files that the plans of these blocks at that moment may depend on, without duplicates.
QStringList FilesOf(const std::vector<Block>& blocks, const QDateTime& moment);
