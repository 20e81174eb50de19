// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dao {

// A name in double quotes for SQLite, with any characters.
QString QuotedName(const QString& name);

// A text literal: in double quotes, those in the text doubled.
QString TextLiteral(const QString& text);

// The dialect's UCase and LCase: letter by letter, so that the length does not change.
QString UCase(const QString& text);
QString LCase(const QString& text);

// A statement for error texts, shortened when it is long.
QString Shown(const QString& sql);
[[noreturn]] void ThrowSyntaxError(const QString& sql, const QString& reason);

}  // namespace dao
