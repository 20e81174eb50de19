// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class ProgramLock;
class frmMain;

// The one program of the folder named by the global programFolder; to be kept while it runs. Null when another one runs
// there: the user has been told.
std::unique_ptr<ProgramLock> TakeProgramLock();

// The start procedure: shows the splash screen, loads the main window, closes the splash screen and shows the main
// window, which it returns. Where no station was ever made, one is offered in between; then the window loads again. The
// global programFolder must be set.
std::unique_ptr<frmMain> Start();

// Makes every screen known to the others. To be called once, before Start.
void RegisterScreens();
