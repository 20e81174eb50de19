// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

// The values that all screens share, under the names their users know. Start-up sets them; the settings dialog changes
// the mode. All on the user-interface thread.
struct Globals {
  QString programFolder;  // path text, without a closing backslash

  // From the settings file.
  QString databasePath;  // DatabasePath: folder of the server database
  QString exportPath;    // ExportPath: folder of the export files
  qint16 card = 0;       // output device of the audio preview
  qint16 buffers = 0;
  qint16 bufferSize = 0;  // bytes
  qint16 callback = 0;
  bool stationsOwnMode = false;  // StationsOwnMode: a station with a number reads its own online setting

  // Formed at start-up.
  QString localDatabasePath;
  QString serverDatabasePath;
  QString workDatabasePath;
  qint16 stationNumber = 0;  // 0 = none
  QString stationName;
  bool online = false;  // off until it was read for the first time

  // What one screen hands to the next.
  QString gstrSelectedID;    // a record's ID in decimal, "NIEUW", or a folder path
  QString gstrOpruimenID;    // a record's ID in decimal, for the cleanup dialogs
  QStringList droppedAudio;  // sound files (host paths) that wait to become new records
  QVariant lastAnswer;       // of the last question: a button's number, or a text
  bool lastResult = false;   // of the last write
};

extern Globals global;

inline constexpr char16_t kNewRecord[] = u"NIEUW";
