#include "tests/platform/jet/Witness.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/jet/Utf8.h"

namespace witness {

namespace {

const std::string kCell = "<~>";
const std::string kRow = "<|>";
const std::string kNull = "<null>";

std::string Hex(const std::uint8_t* bytes, std::size_t count) {
  std::string text;
  char pair[3];
  for (std::size_t i = 0; i < count; ++i) {
    std::snprintf(pair, sizeof pair, "%02X", bytes[i]);
    text += pair;
  }
  return text;
}

std::string Printed(int digits, double number) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*g", digits, number);
  return text.data();
}

// Scaled integers without floating point: 35000 with four decimals is 3.5000.
std::string Scaled(bool negative, std::string digits, std::size_t scale) {
  if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
  if (scale > 0) digits.insert(digits.size() - scale, ".");
  return (negative ? "-" : "") + digits;
}

// Days since 1899-12-30 as yyyy-mm-dd hh:mm:ss (civil-from-days, proleptic Gregorian).
std::string Date(double days) {
  const double whole = days < 0 ? std::ceil(days) : std::floor(days);
  auto seconds = static_cast<long>(std::lround(std::abs(days - whole) * 86400));
  long day = static_cast<long>(whole) + 719468 - 25569 + seconds / 86400;
  seconds %= 86400;
  const long era = (day >= 0 ? day : day - 146096) / 146097;
  const long ofEra = day - era * 146097;
  const long year = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
  const long ofYear = ofEra - (365 * year + year / 4 - year / 100);
  const long month = (5 * ofYear + 2) / 153;
  std::array<char, 160> text{};
  std::snprintf(text.data(), text.size(), "%04ld-%02ld-%02ld %02ld:%02ld:%02ld", year + era * 400 + (month >= 10),
                month < 10 ? month + 3 : month - 9, ofYear - (153 * month + 2) / 5 + 1, seconds / 3600,
                seconds / 60 % 60, seconds % 60);
  return text.data();
}

std::string GuidText(const jet::Guid& guid) {
  static constexpr int kOrder[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
  std::string text = "{";
  for (const int place : kOrder)
    text += place < 0 ? "-" : Hex(&guid.bytes[static_cast<std::size_t>(place)], 1);
  return text + "}";
}

struct Printer {
  jet::ColumnType type;

  std::string operator()(std::monostate) const { return kNull; }
  std::string operator()(bool value) const { return value ? "1" : "0"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  std::string operator()(double value) const {
    if (type == jet::ColumnType::Date) return Date(value);
    return Printed(type == jet::ColumnType::Single ? 8 : 16, value);
  }
  std::string operator()(jet::Currency value) const {
    // The lowest amount has no positive counterpart.
    const auto bits = static_cast<std::uint64_t>(value.scaled);
    return Scaled(value.scaled < 0, std::to_string(value.scaled < 0 ? 0 - bits : bits), 4);
  }
  std::string operator()(const jet::Decimal& value) const {
    return Scaled(value.negative, std::to_string(value.low), value.scale);
  }
  std::string operator()(const std::u16string& value) const { return jet::ToUtf8(value); }
  std::string operator()(const jet::Bytes& value) const { return Hex(value.data(), value.size()); }
  std::string operator()(const jet::Guid& value) const { return GuidText(value); }
};

}  // namespace

std::optional<std::string> SampleFolder() {
  const char* folder = std::getenv("SPOTROOSTER_MDB_SAMPLES");
  return folder != nullptr && *folder != '\0' ? std::optional<std::string>(folder) : std::nullopt;
}

std::vector<std::string> SampleNames() {
  return {"access2000_empty", "adox_empty",  "alltypes_big", "composite_index", "deleted_rows",
          "encoded",          "index_flags", "many_columns", "northwind",       "numeric",
          "overflow_rows",    "password",    "relations",    "unicode_text"};
}

std::unique_ptr<jet::Database> OpenSample(const std::string& name) {
  jet::OpenOptions options;
  if (name == "password") options.password = u"password";
  return jet::Database::Open(*SampleFolder() + "/" + name + ".mdb", options);
}

bool Has(const std::string& program) {
  return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
  std::string output;
  std::array<char, 65536> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) {
    output.append(buffer.data(), count);
  }
  return output;
}

std::string ShellQuoted(const std::string& text) {
  return "'" + text + "'";
}

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + separator.size()) {
    parts.push_back(text.substr(start, end - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

Cells ExportWithMdbTools(const std::string& file, const std::string& table) {
  const std::string rows = OutputOf("mdb-export -H -Q -b hex -d " + ShellQuoted(kCell) + " -R " + ShellQuoted(kRow) +
                                    " -0 " + ShellQuoted(kNull) + " -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' " +
                                    ShellQuoted(file) + " " + ShellQuoted(table) + " 2>/dev/null");
  Cells cells;
  for (const std::string& row : Split(rows, kRow))
    cells.push_back(Split(row, kCell));
  cells.pop_back();  // behind the last separator
  return cells;
}

Cells ExportWithJet(jet::Database& database, const std::u16string& table) {
  const jet::Table source = database.OpenTable(table);
  jet::ColumnSet all;
  for (std::size_t i = 0; i < source.Definition().columns.size(); ++i)
    all.push_back(i);
  Cells cells;
  jet::TableCursor rows = source.Scan(all);
  while (rows.Next()) {
    std::vector<std::string>& row = cells.emplace_back();
    for (const std::size_t i : all)
      row.push_back(std::visit(Printer{source.Definition().columns[i].type}, rows.Values()[i]));
  }
  return cells;
}

}  // namespace witness
