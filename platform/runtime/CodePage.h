// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace runtime {

// Windows-1252, the 8-bit code page of the system's text files. The bytes 81 8D 8F 90 9D, which the page leaves
// undefined, map to the code points of the same value, so that any bytes survive a round trip.
QString FromCodePage(const QByteArray& bytes);

// A character outside the code page becomes "?".
QByteArray ToCodePage(const QString& text);
// Appends to `bytes` in the same way; returns false when a character was replaced by "?".
bool AppendCodePage(QStringView text, QByteArray& bytes);

}  // namespace runtime
