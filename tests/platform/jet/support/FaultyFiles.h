// SPDX-License-Identifier: MIT
#pragma once

#include "tests/platform/files/support/FaultyFiles.h"

namespace jet::test {

using files::test::Fault;
using files::test::FaultyFiles;

}  // namespace jet::test
