// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace runtime {

// Windows-1252, the 8-bit code page of the system's text files. The bytes 81 8D 8F 90 9D, which the page leaves open,
// stand for the code points of the same value, so that any bytes survive a round trip.
QString FromCodePage(const QByteArray& bytes);

// What does not fit becomes "?".
QByteArray ToCodePage(const QString& text);
// The same behind what is there already; answers whether all of it fits.
bool AppendCodePage(QStringView text, QByteArray& bytes);

}  // namespace runtime
