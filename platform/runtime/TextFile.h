// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace runtime {

// All paths here are path texts (see HostPath.h); every Error names the file and the reason.

// The complete content. Throws Error when the file does not exist, is not readable, or is larger than `limit` bytes.
QByteArray ReadFile(const QString& pathText, qint64 limit = 64 << 20);

// Writes the file atomically: under a temporary name, synced, renamed, the folder synced. An earlier file of the same
// name is unchanged until the rename.
void WriteFile(const QString& pathText, const QByteArray& content);

// Appends one line (Windows-1252, carriage return and line feed) to a file that is created when missing, and syncs it.
// After a failure the file has its previous length.
void AppendLine(const QString& pathText, const QString& line);

// Removes one regular file. Throws Error when it does not exist, is not a regular file, or when several names match.
void DeleteFile(const QString& pathText);

// True when the path text is a folder that can be reached.
bool IsFolder(const QString& pathText);

}  // namespace runtime
