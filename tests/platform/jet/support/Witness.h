// SPDX-License-Identifier: MIT
#pragma once

#include "tests/platform/jet/support/TableText.h"

#include <optional>
#include <string>
#include <vector>

// Outside programs that read the same files, for comparison.
namespace witness {

enum class Reader { MdbTools, MdbReader };

std::string NameOf(Reader reader);
// The test name for a parameter.
std::string TestNameOf(Reader reader);
// Why the reader cannot be used, as a sentence for GTEST_SKIP; nothing when it can.
std::optional<std::string> WhyAbsent(Reader reader);
// All user tables in the file; none when the reader cannot read it. Starts a process (about 0.1 s); mdbtools one more
// per table.
Tables ReadWith(Reader reader, const std::string& file, const std::string& password = {});

// Whether a program of that name is installed.
bool Has(const std::string& program);
// The standard output of a command.
std::string OutputOf(const std::string& command);
std::string ShellQuoted(const std::string& text);

}  // namespace witness
