// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

// Every double quote and apostrophe replaced by one blank, then trimmed of blanks at both ends.
QString RemReservedChr(const QString& text);

// True for NULL, for a value never set, and for a text that is empty once its blanks are trimmed. A number is never
// empty.
bool IsKull(const QVariant& value);

// The part of a path behind its last backslash; the whole text when it holds none.
QString GetFile(const QString& path);
