// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Appends one line to "Audio.tae" in the export folder (the file is created when missing): the path of an audio file
// that was added to the catalogue or attached to a record. Characters outside Windows-1252 are written as question
// marks, and the user gets a message about them. Throws runtime::Error.
void AppendToAudioList(const QString& path);
