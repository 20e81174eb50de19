// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Theme.h"

#include <QString>
#include <QStringList>

#include <optional>

// Options from the command line and the environment.
struct StartOptions {
  bool showVersion = false;
  bool showHelp = false;
  std::optional<desktop::Variant> theme;
  QString folder;  // host path of the program's folder
};

// `arguments`: without the program's name and without Qt's own options. `environmentFolder`: the value of
// SPOTROOSTER_FOLDER. `ownFolder`: the folder of the executable. Throws runtime::Error for an unknown option, a missing
// value or a wrong theme.
StartOptions ParseStartOptions(const QStringList& arguments, const QString& environmentFolder,
                               const QString& ownFolder);

QString HelpText();
