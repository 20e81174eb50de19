// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The program's version, "major.minor.revision".
QString Version();
// For the user: "Versie 1.2.15".
QString VersionText();
