// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace dao {

// A name as the SQL engine takes it, whatever its letters.
QString QuotedName(const QString& name);

// The dialect's UCase and LCase: letter by letter, so that the length stays.
QString UCase(const QString& text);
QString LCase(const QString& text);

// A statement as error texts show it: shortened when it is long.
QString Shown(const QString& sql);
[[noreturn]] void ThrowSyntaxError(const QString& sql, const QString& reason);

}  // namespace dao
