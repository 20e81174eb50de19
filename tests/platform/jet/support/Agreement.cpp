// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/Agreement.h"

#include "tests/platform/jet/support/Witness.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <vector>

namespace witness {

namespace {

constexpr std::size_t kMaxShown = 199'999;  // bytes of a text that mdbtools outputs

bool IsOf(const std::string& field, const std::string& type) {
  return field.find(": " + type) != std::string::npos;
}

std::string UpToZero(const std::string& hex) {
  std::size_t at = 0;
  while (at < hex.size() && hex.compare(at, 2, "00") != 0)
    at += 2;
  return hex.substr(0, at);
}

// The digits alone: readers differ in braces, hyphens and case, and one outputs hexadecimal bytes.
std::string PlainGuid(std::string cell) {
  if (cell.rfind("7B", 0) == 0 && cell.size() > 36) {
    std::string text;
    for (std::size_t i = 0; i < cell.size(); i += 2)
      text += static_cast<char>(std::stoi(cell.substr(i, 2), nullptr, 16));
    cell = text;
  }
  std::erase_if(cell, [](unsigned char letter) { return std::isxdigit(letter) == 0; });
  std::transform(cell.begin(), cell.end(), cell.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return cell;
}

std::string Moment(Reader reader, const std::string& cell) {
  const bool isEarly = cell < "1899-12-31" || cell.rfind("1900-01-00", 0) == 0;
  if (reader == Reader::MdbTools) return isEarly || cell > "9999-12-30" ? "<not told>" : cell;
  return isEarly && cell.find(" 00:00:00") == std::string::npos ? "<not told>" : cell;
}

std::string Comparable(Reader reader, const std::string& field, const std::string& cell) {
  if (cell.empty() || cell == "<null>") return "<null>";
  if (IsOf(field, "DateTime")) return Moment(reader, cell);
  if (IsOf(field, "Replication ID")) return PlainGuid(cell);
  if (!IsOf(field, "Binary"))
    return reader == Reader::MdbTools && !IsOf(field, "OLE") ? cell.substr(0, kMaxShown) : cell;
  const std::string bytes = UpToZero(cell);
  return bytes.empty() ? "<null>" : bytes;
}

// `fields`: as read by this library.
TableText Comparable(Reader reader, TableText table, const std::vector<std::string>& fields) {
  for (std::vector<std::string>& row : table.rows) {
    for (std::size_t i = 0; i < row.size() && i < fields.size(); ++i)
      row[i] = Comparable(reader, fields[i], row[i]);
  }
  return table;
}

std::string Shown(const std::string& cell) {
  return "'" + cell.substr(0, 80) + "' (" + std::to_string(cell.size()) + " bytes)";
}

std::string FirstDifference(const TableText& theirs, const TableText& ours) {
  if (theirs.rows.size() != ours.rows.size())
    return std::to_string(theirs.rows.size()) + " rows, not " + std::to_string(ours.rows.size());
  for (std::size_t row = 0; row < ours.rows.size(); ++row) {
    for (std::size_t i = 0; i < ours.fields.size(); ++i) {
      const std::string& there = theirs.rows[row].at(i);
      const std::string& here = ours.rows[row].at(i);
      if (there != here) return ours.fields[i] + " is " + Shown(there) + ", not " + Shown(here);
    }
  }
  return {};
}

}  // namespace

std::string Disagreements(jet::Database& database, const std::string& file, const std::string& password) {
  const Tables ours = ReadWithJet(database);
  std::string found;
  for (const Reader reader : {Reader::MdbTools, Reader::MdbReader}) {
    if (WhyAbsent(reader)) continue;
    Tables theirs = ReadWith(reader, file, password);
    for (const auto& [name, table] : ours) {
      Tables pair = {{"theirs", Comparable(reader, theirs[name], table.fields)},
                     {"ours", Comparable(reader, table, table.fields)}};
      pair = Sorted(std::move(pair));
      const std::string difference = FirstDifference(pair["theirs"], pair["ours"]);
      if (!difference.empty())
        found.append(NameOf(reader)).append(", table ").append(name).append(": ").append(difference) += '\n';
    }
  }
  return found;
}

std::string Disagreements(jet::Database& database, const jet::Bytes& content, const std::string& password) {
  const auto path = std::filesystem::temp_directory_path() / ("jet-agree-" + std::to_string(::getpid()) + ".mdb");
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
  std::string found = Disagreements(database, path.string(), password);
  std::filesystem::remove(path);
  return found;
}

}  // namespace witness
