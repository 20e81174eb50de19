// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>

// The manual page of spotrooster-db in troff, made from the texts of --help so that both always agree.
void WriteManualPage(std::ostream& out);
