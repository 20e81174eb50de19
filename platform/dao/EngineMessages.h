// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Statement.h"

#include <QString>

namespace dao {

// The Dutch error text for an English message of SQLite about a statement on the database at `pathText`.
QString StatementError(const Statement& statement, const QString& pathText, const QString& message);

}  // namespace dao
