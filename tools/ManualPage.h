// SPDX-License-Identifier: MIT
#pragma once

#include <ostream>

// The manual page of spotrooster-db in troff, made from what --help shows, so that the two never differ.
void WriteManualPage(std::ostream& out);
