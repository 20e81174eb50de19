// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// The statements in the export files of a folder, in the order of the files' names; each must end as it should. Throws
// std::runtime_error for a file that is not complete.
QStringList StatementsInFiles(const QString& folder);
