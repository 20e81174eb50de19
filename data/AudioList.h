// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Appends one line, the path of an audio file newly taken into the catalogue or newly attached to a record, to
// "Audio.tae" in the export folder (made when missing). Tells the user of characters that became a question mark there.
// Throws runtime::Error.
void AppendToAudioList(const QString& path);
