// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Statement.h"

#include <QString>

namespace dao {

// What the user is told when the SQL engine gives this (English) message about the statement on that file.
QString StatementError(const Statement& statement, const QString& pathText, const QString& message);

}  // namespace dao
