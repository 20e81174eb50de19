// SPDX-License-Identifier: MIT
#pragma once

class QApplication;

// The program speaks Dutch whatever the desktop speaks: dates and numbers, and the texts that Qt itself brings, as far
// as its translations are installed.
void InstallDutchTranslation(QApplication& application);
