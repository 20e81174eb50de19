// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Bytes.h"

namespace jet::test {

// A database with a table "Teksten" (Id, Tekst) of `rows` memos that all reference the same chain of `pieces` pieces,
// each a page long.
Bytes SharedChain(int rows, int pieces);

}  // namespace jet::test
