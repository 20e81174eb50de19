// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// The statements in the export files of a folder, in the order of the file names. Throws std::runtime_error for an
// incomplete file.
QStringList StatementsInFiles(const QString& folder);
