// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

namespace runtime {

// Every path text of the system is a Windows-style path ("D:\Audio\x.wav", "\\studio\spots\x.wav"), because catalogue
// and export are shared with Windows machines. Only these functions convert between path texts and host paths.

// Sets the mapping of drives and shares to host folders, as in section [Drives] of the settings file:
// "D" = "/srv/audio", "\\studio\spots" = "/mnt/spots". Keys ignore letter case; a colon or trailing backslash is
// optional. Relative folders are resolved against baseFolder. An empty map means Z = "/".
void SetDrives(const QMap<QString, QString>& folders, const QString& baseFolder = {});
// The mapped drives in order, as path texts ("D:", "\\studio\spots").
QStringList Drives();

// The host path of a path text. A text that is already a host path is returned unchanged. Names that do not exist as
// written are matched without regard to letter case, as on Windows (the first in order when several match).
// Error: a drive or share that is not mapped, a path that leaves its mapping ("..").
QString HostPath(const QString& text);
// As HostPath, for deleting: several matches, none of them exact, are an Error.
QString HostPathExactly(const QString& text);

// The host folder that the text's drive or share is mapped to ("/" for a host path).
QString HostRoot(const QString& text);

// The path text of a host path, by the longest mapped folder; a path outside every mapping is returned unchanged.
QString PathText(const QString& hostPath);
// True when PathText finds a mapping.
bool IsMapped(const QString& hostPath);

}  // namespace runtime
