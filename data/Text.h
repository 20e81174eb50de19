// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

// Every double quote and apostrophe replaced by one blank, then trimmed of blanks at both ends.
QString RemReservedChr(const QString& text);

// True for NULL, an invalid QVariant, and a text that is empty after trimming blanks. A number is never empty.
bool IsKull(const QVariant& value);

// The part of a path after its last backslash; the complete text when it has none.
QString GetFile(const QString& path);
