// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

namespace runtime {

// Every path text of the system is a Windows-style path ("D:\Audio\x.wav", "\\studio\spots\x.wav"), because catalogue
// and export are shared with Windows machines. These functions are the one door to the host's file system.

// The mapping of drives and shares to host folders, as section [Drives] of the settings file tells:
// "D" = "/srv/audio", "\\studio\spots" = "/mnt/spots". Keys without regard to letter case, an optional colon or closing
// backslash ignored. Relative folders count from baseFolder. An empty map stands for Z = "/".
void SetDrives(const QMap<QString, QString>& folders, const QString& baseFolder = {});
// The mapped drives in order, as path texts ("D:", "\\studio\spots").
QStringList Drives();

// The host path of a path text. A text that is already a host path passes unchanged. Names that do not exist as written
// are matched without regard to letter case, as on Windows (the first in order when several match).
// Error: a drive or share that is not mapped, a path that climbs out of its mapping ("..").
QString HostPath(const QString& text);
// The same for deleting: several matches, none of them exact, are an Error.
QString HostPathExactly(const QString& text);

// The host folder that the text's drive or share is mapped to ("/" for a host path): what must be reachable first.
QString HostRoot(const QString& text);

// The way back, by the longest mapped folder; a path outside of every mapping comes back unchanged.
QString PathText(const QString& hostPath);
// True when PathText finds a mapping.
bool IsMapped(const QString& hostPath);

}  // namespace runtime
