// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace dao {

// Whether a bare word is a keyword of the dialect, in any letter case. Every other word is a name, even when it is a
// keyword of SQLite.
bool IsKeyword(QStringView word);
// Whether a word before a parenthesis is a function of the dialect.
bool IsFunction(QStringView word);

}  // namespace dao
