// SPDX-License-Identifier: MIT
#pragma once

// Reads the settings file into `global`, and passes its section [Drives] to runtime::SetDrives (relative folders are
// relative to the program folder). Called once by the main window, before any database is opened. An error is shown in
// a box titled "GetSettings"; values read before it are set, the others keep their defaults.
void GetSettings();
