// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class ProgramLock;
class frmMain;

// Takes the lock of global.programFolder, to be held while the program runs. Null when another program holds it; the
// user has then seen a message.
std::unique_ptr<ProgramLock> TakeProgramLock();

// The start procedure: shows the splash screen, offers to make a station when there is none, loads the main window,
// closes the splash screen, shows the main window and returns it. global.programFolder must be set.
std::unique_ptr<frmMain> Start();

// From now on connecting to a server runs in another thread while the windows repaint; clicks and keys wait. Start
// calls this.
void WaitForServersBesideWindows();

// Registers all screens. Call once, before Start.
void RegisterScreens();
