// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// What is asked before an export while working offline; only "yes" lets it start.
QString EarlierExportsQuestion();

// The checks before an export to this folder (path text), each told to the user when it fails: offline, that the
// earlier files were processed with the companion tool; a destination; a folder that is there. True when the export may
// start.
bool MayExport(const QString& destination);
