// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/Witness.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>

namespace witness {

namespace {

const std::string kCell = "<~>";
const std::string kRow = "<|>";
const std::string kTableEnd = "<#>";
const std::string kModules = SPOTROOSTER_WITNESS_MODULES;
const std::string kScript = SPOTROOSTER_WITNESS_SCRIPT;

// The parts that end with the separator.
std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + separator.size())
    parts.push_back(text.substr(start, end - start));
  return parts;
}

std::vector<std::string> CellsOf(const std::string& row) {
  return Split(row + kCell, kCell);
}

// "\t[Name]\t\t\tText (50) NOT NULL, " is a field of mdb-schema.
std::vector<std::string> FieldsOfSchema(const std::string& schema) {
  std::vector<std::string> fields;
  for (const std::string& line : Split(schema, "\n")) {
    const std::size_t end = line.find("]\t\t\t");
    if (line.rfind("\t[", 0) != 0 || end == std::string::npos) continue;
    std::string type = line.substr(end + 4);
    type.erase(type.find_last_not_of(", ") + 1);
    // It reports a text length for memo and OLE, and every Boolean as required.
    for (const std::string_view known : {"Memo/Hyperlink (255)", "OLE (255)", "Boolean NOT NULL"}) {
      if (type.rfind(known, 0) == 0) type.erase(known.find(' '), known.size() - known.find(' '));
    }
    fields.push_back(line.substr(2, end - 2) + ": " + type);
  }
  return fields;
}

TableText ReadTableWithMdbTools(const std::string& file, const std::string& table) {
  TableText text;
  text.fields = FieldsOfSchema(OutputOf("mdb-schema --no-indexes --no-relations --not-null -T " + ShellQuoted(table) +
                                        " " + ShellQuoted(file) + " access 2>/dev/null"));
  const std::string rows = OutputOf("mdb-export -H -Q -b hex -d " + ShellQuoted(kCell) + " -R " + ShellQuoted(kRow) +
                                    " -0 '<null>' -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' " + ShellQuoted(file) +
                                    " " + ShellQuoted(table) + " 2>/dev/null");
  for (const std::string& row : Split(rows, kRow))
    text.rows.push_back(CellsOf(row));
  return text;
}

Tables ReadWithMdbTools(const std::string& file) {
  Tables tables;
  for (const std::string& table : Split(OutputOf("mdb-tables -1 " + ShellQuoted(file) + " 2>/dev/null"), "\n")) {
    if (!table.empty()) tables.emplace(table, ReadTableWithMdbTools(file, table));
  }
  return tables;
}

Tables ReadWithMdbReader(const std::string& file, const std::string& password) {
  const std::string output = OutputOf("node " + ShellQuoted(kScript) + " " + ShellQuoted(kModules) + " " +
                                      ShellQuoted(file) + " " + ShellQuoted(password) + " 2>/dev/null");
  Tables tables;
  for (const std::string& table : Split(output, kTableEnd)) {
    const std::vector<std::string> lines = Split(table, kRow);
    TableText& text = tables[lines.at(0)];
    text.fields = Split(lines.at(1), kCell);
    for (std::size_t i = 2; i < lines.size(); ++i)
      text.rows.push_back(Split(lines[i], kCell));
  }
  return tables;
}

}  // namespace

std::string NameOf(Reader reader) {
  return reader == Reader::MdbTools ? "mdbtools" : "mdb-reader";
}

std::string TestNameOf(Reader reader) {
  return reader == Reader::MdbTools ? "MdbTools" : "MdbReader";
}

std::optional<std::string> WhyAbsent(Reader reader) {
  const bool present = reader == Reader::MdbTools
                           ? Has("mdb-export") && Has("mdb-schema")
                           : Has("node") && std::filesystem::exists(kModules + "/node_modules/mdb-reader");
  if (present) return std::nullopt;
  return NameOf(reader) + " is not installed; scripts/setup test does it";
}

Tables ReadWith(Reader reader, const std::string& file, const std::string& password) {
  return reader == Reader::MdbTools ? ReadWithMdbTools(file) : ReadWithMdbReader(file, password);
}

bool Has(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  std::string output;
  std::array<char, 65536> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get()))
    output.append(buffer.data(), count);
  return output;
}

std::string ShellQuoted(const std::string& text) {
  return "'" + text + "'";
}

}  // namespace witness
