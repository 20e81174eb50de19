// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace runtime {

// All paths here are path texts (see HostPath.h); every Error names the file and the reason.

// The whole file. Error when it is not there, not readable, or larger than `limit` bytes.
QByteArray ReadFile(const QString& pathText, qint64 limit = 64 << 20);

// Writes the file whole or not at all: under a temporary name, synced, renamed, the folder synced. An earlier file of
// the same name stays untouched until the rename.
void WriteFile(const QString& pathText, const QByteArray& content);

// Appends one line (Windows-1252, carriage return and line feed) to a file that is created when missing, and syncs it.
// All of the line or nothing is added.
void AppendLine(const QString& pathText, const QString& line);

// Removes one regular file. Error when it is not there, is a folder or anything else, or when several names match.
void DeleteFile(const QString& pathText);

// True when the path text names a folder that can be reached.
bool IsFolder(const QString& pathText);

}  // namespace runtime
