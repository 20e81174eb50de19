// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Why a database could not be read, to be shown in place of a count.
struct UnreadableReason {
  QString brief;  // a few words, such as "de gedeelde database ontbreekt"
  QString full;   // the description of the error; it names the file
};

// The reason for an error on the database at that path text, found by checking the path. May wait for a drive as long
// as runtime::Probe does. `whose`: "de gedeelde database". Any thread.
UnreadableReason ReasonFor(const QString& databasePath, const QString& whose, const QString& description);

// What users call the database of the current mode, such as "de gedeelde database".
QString CatalogueWords();
