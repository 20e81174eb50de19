// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// The question before an export while working offline; only "yes" starts the export.
QString EarlierExportsQuestion();

// Checks before an export to this folder (path text); each failure is shown to the user. Offline: the earlier files
// were processed with the companion tool. Always: a destination was given and the folder exists. True when the export
// may start.
bool MayExport(const QString& destination);
