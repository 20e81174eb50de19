// SPDX-License-Identifier: MIT
#pragma once

#include "data/IniFile.h"

// The settings file, ovalis.ini in the program folder, and the names of its sections and keys.
IniFile SettingsFile();

namespace settings {
inline constexpr QStringView kFiles = u"Files";
inline constexpr QStringView kDatabasePath = u"DatabasePath";
inline constexpr QStringView kExportPath = u"ExportPath";
inline constexpr QStringView kAudioPlayers = u"Audio Players";
inline constexpr QStringView kCard = u"Card";
inline constexpr QStringView kBuffers = u"Buffers";
inline constexpr QStringView kBufferSize = u"Buffer_Size";
inline constexpr QStringView kCallback = u"Callback";
inline constexpr QStringView kSpotrooster = u"Spotrooster";
inline constexpr QStringView kStationsOwnMode = u"StationsOwnMode";
inline constexpr QStringView kDrives = u"Drives";
inline constexpr QStringView kBackup = u"Backup";
inline constexpr QStringView kEnabled = u"Enabled";
}  // namespace settings
