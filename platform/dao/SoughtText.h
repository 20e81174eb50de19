// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Tokens.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace dao {

// The condition UCase(field) = "text" of a SELECT from one table, by which the editors look for a name that exists
// already. A storage may use it to leave out rows; the engine compares those that it gives.
struct SoughtText {
  QString field;
  QString text;
};

// For "... FROM table WHERE UCase(field) = "text"", also with " AND NOT field = number" after it. Nothing for any other
// statement.
std::optional<SoughtText> SoughtTextIn(const std::vector<Token>& tokens);

}  // namespace dao
