// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Version, program folder, station, mode and databases, one per line; for the version window.
QString InstallationText();

// For the station's administrator: InstallationText, the system, and the last errors of this run. Without passwords.
QString SupportText();
