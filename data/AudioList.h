#pragma once
#include <QString>

// Appends one line, the path of an audio file newly taken into the catalogue or newly attached to a record, to
// "Audio.tae" in the export folder (made when missing). Throws runtime::Error.
void AppendToAudioList(const QString& path);
