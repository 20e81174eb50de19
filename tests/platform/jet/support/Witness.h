// SPDX-License-Identifier: MIT
#pragma once

#include "tests/platform/jet/support/TableText.h"

#include <optional>
#include <string>
#include <vector>

// Outside programs that read the same files.
namespace witness {

enum class Reader { MdbTools, MdbReader };

std::string NameOf(Reader reader);
// The name for a test that is run beside each of them.
std::string TestNameOf(Reader reader);
// Why the reader cannot be asked here: a sentence for GTEST_SKIP; nothing when it can.
std::optional<std::string> WhyAbsent(Reader reader);
// All tables of users in the file. Both readers take about 0.1 s and a process for it, mdbtools one more a table. A
// file that the reader cannot read gives no tables.
Tables ReadWith(Reader reader, const std::string& file, const std::string& password = {});

// Whether a program of that name is installed.
bool Has(const std::string& program);
// What a command writes on its standard output.
std::string OutputOf(const std::string& command);
std::string ShellQuoted(const std::string& text);

}  // namespace witness
