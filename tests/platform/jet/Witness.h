#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/jet/Database.h"

/// Outside programs that read the same files, and our values in their notation.
namespace witness {

/// Folder of the real sample files; nothing when the environment does not name one.
std::optional<std::string> SampleFolder();
/// The real sample files that this library reads.
std::vector<std::string> SampleNames();
std::unique_ptr<jet::Database> OpenSample(const std::string& name);

/// Whether a program of that name is installed.
bool Has(const std::string& program);
/// What a command writes on its standard output.
std::string OutputOf(const std::string& command);
std::string ShellQuoted(const std::string& text);

std::vector<std::string> Split(const std::string& text, const std::string& separator);

/// Rows of text cells, as mdb-export writes them; null is "<null>".
using Cells = std::vector<std::vector<std::string>>;
Cells ExportWithMdbTools(const std::string& file, const std::string& table);
/// The same rows, read by this library.
Cells ExportWithJet(jet::Database& database, const std::u16string& table);

}  // namespace witness
