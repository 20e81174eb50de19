#pragma once
#include <memory>

class frmMain;

// The start procedure: shows the splash screen, loads the main window, closes the splash screen and shows the main
// window, which it returns. The global programFolder must be set.
std::unique_ptr<frmMain> Start();

// Makes every screen known to the others. To be called once, before Start.
void RegisterScreens();
