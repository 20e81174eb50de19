// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

// Sample windows that hold every control in its states. The caller owns what is made.
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
