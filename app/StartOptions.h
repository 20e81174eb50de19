// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Theme.h"

#include <QString>
#include <QStringList>

#include <optional>

// What the command line and the environment ask of the program.
struct StartOptions {
  bool showVersion = false;
  bool showHelp = false;
  std::optional<desktop::Variant> theme;
  QString folder;  // host path of the program's folder
};

// `arguments` without the program's name, and without those that Qt itself takes. `environmentFolder`: the value of
// SPOTROOSTER_FOLDER, `ownFolder`: the folder of the executable. An unknown option, a missing value or a wrong theme is
// a runtime::Error.
StartOptions ParseStartOptions(const QStringList& arguments, const QString& environmentFolder,
                               const QString& ownFolder);

QString HelpText();
