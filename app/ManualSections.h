// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// The heading of the manual's section about the window with that object name; empty when there is none.
QString ManualSectionOf(const QString& window);
// The headings that ManualSectionOf returns.
QStringList ManualSections();
