// SPDX-License-Identifier: MIT
#pragma once

class QApplication;

// Sets Dutch for dates, numbers and Qt's own texts (if its translations are installed), whatever the desktop's
// language.
void InstallDutchTranslation(QApplication& application);
