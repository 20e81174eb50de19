// SPDX-License-Identifier: MIT
#pragma once

// Reads the settings file into `global`, and its section [Drives] into runtime::SetDrives (relative folders count from
// the program's folder). Called once, by the main window's load, before any database is opened. An error is shown under
// the name "GetSettings"; what was read before it stays set, the rest keeps its defaults.
void GetSettings();
