// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The program's version, "major.minor.revision".
QString Version();
// As the user sees it: "Versie 1.2.15".
QString VersionText();
