// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// What an export wrote.
struct ExportedLog {
  QString path;             // of the file
  int changes = 0;          // in the file, as users count them
  QStringList sameNumbers;  // new records with the same number, each as "item-spot 42 (Apotheek, Garage)"
  QString warning;          // about them, for the user
};

// The values that all screens share. Set at start-up; the settings dialog changes `online`. User-interface thread only.
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

  // Set at start-up.
  QString localDatabasePath;
  QString serverDatabasePath;
  QString workDatabasePath;
  qint16 stationNumber = 0;  // 0 = none
  QString stationName;
  bool online = false;  // false until it is read from the local database

  // Passed from one screen to the next.
  QString gstrSelectedID;               // a record's ID in decimal, "NIEUW", or a folder path
  QString gstrOpruimenID;               // a record's ID in decimal, for the cleanup dialogs
  QVariant lastAnswer;                  // to the last question: a button's number, or a text
  bool lastResult = false;              // of the last write
  std::optional<ExportedLog> exported;  // by the export window, until the main window has shown it
};

extern Globals global;

inline constexpr char16_t kNewRecord[] = u"NIEUW";
