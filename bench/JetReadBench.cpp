// SPDX-License-Identifier: MIT
// Reading a database file: all fields of 100 000 rows of 12 fields, and the same as CSV through a pipe, compared with
// mdbtools and mdb-reader; 10 000 rows; one row by its key in tables of a thousand to a million rows. Processor time.
// usage: JetReadBench [scan FILE | csv FILE | make FILE ROWS | alone]
// scan and csv do one reading, for a profiler; alone leaves out the other programs.
#include "bench/Child.h"
#include "bench/Figures.h"
#include "platform/jet/database/Database.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Error.h"
#include "tools/TableCsv.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <variant>
#include <vector>

namespace {

using jet::ColumnType;

constexpr int kRuns = 3;
constexpr char16_t kTable[] = u"tblItemSpots";
const std::string kModules = SPOTROOSTER_WITNESS_MODULES;
const std::string kScript = SPOTROOSTER_READER_SCRIPT;

void Require(bool fine, const std::string& what) {
  if (fine) return;
  std::fprintf(stderr, "wrong: %s\n", what.c_str());
  std::exit(1);
}

jet::ColumnDefinition Column(const char16_t* name, ColumnType type, std::uint16_t size = 0) {
  jet::ColumnDefinition column;
  column.name = name;
  column.type = type;
  column.size = size;
  return column;
}

jet::TableDefinition ItemSpots() {
  jet::TableDefinition table;
  table.name = kTable;
  table.columns = {Column(u"ID", ColumnType::Long),        Column(u"Naam", ColumnType::Text, 100),
                   Column(u"Path", ColumnType::Text, 255), Column(u"Lengte", ColumnType::Long),
                   Column(u"MixPunt", ColumnType::Long),   Column(u"StartDatum", ColumnType::Date),
                   Column(u"EindDatum", ColumnType::Date), Column(u"StartUur", ColumnType::Integer),
                   Column(u"Aktief", ColumnType::Boolean), Column(u"Prijs", ColumnType::Currency),
                   Column(u"Opmerking", ColumnType::Memo), Column(u"Volume", ColumnType::Double)};
  jet::IndexDefinition key;
  key.name = u"PrimaryKey";
  key.primary = true;
  key.fields = {{0, false}};
  table.indexes = {key};
  return table;
}

std::u16string Numbered(const char16_t* text, std::size_t number) {
  std::u16string numbered = text;
  for (const char digit : std::to_string(number))
    numbered += static_cast<char16_t>(digit);
  return numbered;
}

std::vector<jet::Value> Spot(std::size_t id) {
  std::minstd_rand random(static_cast<unsigned>(id) + 1);
  const auto whole = [&](std::int64_t end) { return static_cast<std::int64_t>(random()) % end; };
  const double start = 45000.0 + static_cast<double>(whole(1000));
  return {static_cast<std::int64_t>(id),
          Numbered(u"Bakkerij Jansen zomeractie ", id),
          Numbered(u"D:\\Audio\\Spots\\2025\\bakkerij jansen\\zomeractie ", id) + u".mp3",
          10'000 + whole(50'000),
          whole(3'000),
          start,
          start + 30.25,
          whole(24),
          whole(10) != 0,
          jet::Currency{whole(10'000'000)},
          whole(4) == 0 ? jet::Value(std::u16string(u"niet na het nieuws; alleen op werkdagen")) : jet::Value(),
          static_cast<double>(whole(1'000'000)) / 1'000};
}

int Make(const std::string& path, std::size_t rows) {
  jet::Database::Create(path);
  jet::OpenOptions options;
  options.writable = true;
  const auto database = jet::Database::Open(path, options);
  jet::WriteTurn turn(*database);
  database->CreateTable(ItemSpots());
  const auto writer = database->OpenWriter(kTable);
  for (std::size_t id = 1; id <= rows; ++id) {
    std::vector<jet::Value> row = Spot(id);
    writer->Insert(row);
  }
  turn.Commit();
  return 0;
}

// In another process: its memory would otherwise be counted for the programs started from here.
std::string MakeFile(const std::string& self, const std::filesystem::path& folder, std::size_t rows) {
  std::string path = folder / (std::to_string(rows) + ".mdb");
  bench::RunChild({self, "make", path, std::to_string(rows)});
  Require(std::filesystem::exists(path), "no file was made");
  return path;
}

// The total over all fields of all rows, the same for every reader.
struct Sums {
  std::int64_t rows = 0;
  double numbers = 0;
  std::int64_t characters = 0;

  void operator()(std::monostate) {}
  void operator()(bool value) { numbers += value ? 1 : 0; }
  void operator()(std::int64_t value) { numbers += static_cast<double>(value); }
  void operator()(double value) { numbers += value; }
  void operator()(const jet::Currency& value) { numbers += static_cast<double>(value.scaled) / 10'000; }
  void operator()(const std::u16string& value) { characters += static_cast<std::int64_t>(value.size()); }
  template <typename Other>
  void operator()(const Other&) {
    Require(false, "a kind of value that the table does not have");
  }
  std::int64_t Key() const { return std::llround(numbers) + characters; }
};

Sums Expected(std::size_t rows) {
  Sums sums;
  for (std::size_t id = 1; id <= rows; ++id) {
    ++sums.rows;
    for (const jet::Value& value : Spot(id))
      std::visit([&](const auto& held) { sums(held); }, value);
  }
  return sums;
}

Sums ReadAll(const std::string& path) {
  const auto database = jet::Database::Open(path);
  const jet::ReadTurn reading(*database);
  const jet::Table table = database->OpenTable(kTable);
  jet::ColumnSet all;
  for (std::size_t i = 0; i < table.Definition().columns.size(); ++i)
    all.push_back(i);
  Sums sums;
  for (jet::TableCursor rows = table.Scan(all); rows.Next(); ++sums.rows) {
    for (const jet::Value& value : rows.Values())
      std::visit([&](const auto& held) { sums(held); }, value);
  }
  return sums;
}

int Scan(const std::string& path) {
  const Sums sums = ReadAll(path);
  for (std::int64_t i = 0; i < sums.rows; ++i)
    std::puts(i == 0 ? std::to_string(sums.Key()).c_str() : "");
  return 0;
}

int Csv(const std::string& path) {
  jet::OpenOptions options;
  options.cachedPages = 64;  // as the command
  const auto database = jet::Database::Open(path, options);
  const jet::ReadTurn reading(*database);
  CsvOf(database->OpenTable(kTable)).text.WriteTo(std::cout);
  std::cout.flush();
  return 0;
}

double MillisecondsOf(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// One reader of the file in its own process, and the expected total of its lines.
struct Reader {
  const char* name;
  std::vector<std::string> words;
  std::size_t lines;
  std::int64_t keySum;
};

// The run with the smallest processor time of several; nothing when the program does not exist.
bench::ChildRun Best(const Reader& reader) {
  bench::ChildRun best;
  for (int i = 0; i < kRuns; ++i) {
    const bench::ChildRun run = bench::RunChild(reader.words);
    if (run.lines == 0) return run;
    Require(run.lines == reader.lines && run.keySum == reader.keySum, std::string(reader.name) + ": rows or checksum");
    if (best.lines == 0 || run.cpuMs < best.cpuMs) best = run;
  }
  return best;
}

// The first reader is ours.
void Compare(const std::string& id, const char* title, const std::vector<Reader>& readers) {
  std::printf("%s\n", title);
  double ours = 0;
  for (const Reader& reader : readers) {
    const bench::ChildRun run = Best(reader);
    if (run.lines == 0) {
      std::printf("  %-34s not installed\n", reader.name);
      continue;
    }
    if (ours == 0) {
      ours = run.cpuMs;
      bench::Report(id + "-memory", std::to_string(std::lround(run.peakMegabytes)) + " MB");
    } else {
      bench::ReportTimes(id + '-' + reader.name, ours, reader.name, run.cpuMs);
    }
    std::printf("  %-34s %8.0f ms  %6.1f MB  ratio %.2f\n", reader.name, run.cpuMs, run.peakMegabytes,
                run.cpuMs / ours);
  }
}

void CompareReaders(const std::string& self, const std::string& path, std::size_t rows) {
  const std::int64_t sum = Expected(rows).Key();
  const auto ids = static_cast<std::int64_t>(rows * (rows + 1) / 2);
  const std::string table = "tblItemSpots";
  Compare("read-rows", "all fields of all rows",
          {{"this library", {self, "scan", path}, rows, sum},
           {"mdb-reader (npm)", {"node", kScript, kModules, path, table, "scan"}, rows, sum}});
  Compare("read-csv", "the same as text through a pipe",
          {{"this library, CSV", {self, "csv", path}, rows + 1, ids},
           {"mdb-export", {"mdb-export", path, table}, rows + 1, ids},
           {"mdb-json", {"mdb-json", path, table}, rows, ids},
           {"mdb-reader (npm), CSV", {"node", kScript, kModules, path, table, "csv"}, rows, ids}});
}

void TimeRows(const std::string& path, std::size_t rows) {
  const std::int64_t sum = Expected(rows).Key();
  double best = 0;
  for (int i = 0; i < 4 * kRuns; ++i) {
    const double ms = MillisecondsOf([&] { Require(ReadAll(path).Key() == sum, "sums of the rows"); });
    best = i == 0 ? ms : std::min(best, ms);
  }
  std::printf("%zu rows, opened and read: %.1f ms\n", rows, best);
  bench::Report("read-10000", bench::Milliseconds(best));
}

// Row by key: in an open database, and including opening it.
void TimeLookups(const std::string& path, std::size_t rows) {
  constexpr int kLookups = 2'000;
  std::minstd_rand random(3);
  const auto lookUp = [&](jet::Database& database) {
    const jet::ReadTurn reading(database);
    const jet::Table table = database.OpenTable(kTable);
    const auto id = static_cast<std::int64_t>(1 + random() % rows);
    const std::vector<jet::Value> key = {id};
    jet::KeyCursor found = table.Lookup(0, key);
    Require(found.Next(), "a key that is there");
    const auto row = table.Fetch(found.Id(), {0, 1, 2});
    Require(row && std::get<std::int64_t>(row->at(0)) == id, "the row of a key");
  };
  auto database = jet::Database::Open(path);
  const double open = MillisecondsOf([&] {
    for (int i = 0; i < kLookups; ++i)
      lookUp(*database);
  });
  database.reset();  // a second opening would share it
  const double opening = MillisecondsOf([&] {
    for (int i = 0; i < kLookups; ++i)
      lookUp(*jet::Database::Open(path));
  });
  std::printf("one row by key of %7zu: %.3f ms, opening a file that nobody has open included %.3f ms\n", rows,
              open / kLookups, opening / kLookups);
  bench::Report("row-by-key-" + std::to_string(rows), bench::Milliseconds(open / kLookups));
}

int Run(const std::string& self, bool alone) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("jet-read-bench-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  if (!alone) CompareReaders(self, MakeFile(self, folder, 100'000), 100'000);
  TimeRows(MakeFile(self, folder, 10'000), 10'000);
  for (const std::size_t rows : {1'000UL, 100'000UL, 1'000'000UL}) {
    const std::string path = folder / (std::to_string(rows) + ".mdb");
    TimeLookups(std::filesystem::exists(path) ? path : MakeFile(self, folder, rows), rows);
  }
  std::filesystem::remove_all(folder);
  return 0;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count == 3 && std::strcmp(arguments[1], "scan") == 0) return Scan(arguments[2]);
    if (count == 3 && std::strcmp(arguments[1], "csv") == 0) return Csv(arguments[2]);
    if (count == 4 && std::strcmp(arguments[1], "make") == 0) return Make(arguments[2], std::stoul(arguments[3]));
    const bool alone = count == 2 && std::strcmp(arguments[1], "alone") == 0;
    return Run(std::filesystem::read_symlink("/proc/self/exe"), alone);
  } catch (const jet::Error& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
