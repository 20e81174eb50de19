// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

// Sample windows with every control in its states. The caller owns the windows.
namespace samples {

QWidget* MakeList();
QWidget* MakeEmptyList();
QWidget* MakeEditor();
QWidget* MakeItem();
QWidget* MakeSettings();
QWidget* MakeMain();
QWidget* MakeBusy();
QWidget* MakeIcons();
QWidget* MakeMenu();
QWidget* MakeChoices();
QWidget* MakeCalendar();

}  // namespace samples
