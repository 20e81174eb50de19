// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/ResultRows.h"
#include "platform/dao/RowStatement.h"
#include "platform/dao/Storage.h"

#include <memory>
#include <optional>

namespace dao {

// Carry out a statement about one row without the SQL engine, which spends more time on compiling such a statement than
// the storage on its row. Result, changes and errors are those of the engine. Nothing, with nothing changed, where the
// engine must do it: a wrong name, a number of values that does not fit, a field without a unique index.
// The storage must be inside a transaction.
std::optional<int> ChangeRow(const RowStatement& statement, Storage& storage);  // rows changed
std::shared_ptr<const ResultRows> SelectRow(const RowStatement& statement, Storage& storage);

}  // namespace dao
