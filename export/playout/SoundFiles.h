// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QHash>
#include <QStringList>

#include <vector>

// What is known of audio files, by path text.
using SoundFiles = QHash<QString, SoundFile>;

enum class Look {
  Presence,  // whether they are there
  Measure,   // their exact length too
};

// Looks at the files, several at a time; a drive that does not answer costs runtime::kProbeWait once. Any thread that
// may wait.
SoundFiles LookAtFiles(const QStringList& paths, Look look);

// Looks files up there. `files` must outlive it.
LookUpFile In(const SoundFiles& files);

// Every file on which the plans of these blocks at that moment may depend, each once.
QStringList FilesOf(const std::vector<Block>& blocks, const QDateTime& moment);
