// SPDX-License-Identifier: MIT
// Writes the seed files for fuzzing the reader: small databases that together have every structure of the format, and
// the real ones (*.mdb) in the folder SPOTROOSTER_MDB_SAMPLES, if it is set.
// usage: jet_seeds FOLDER
#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/SpotsImage.h"
#include "tests/platform/jet/support/RandomRows.h"
#include "tests/platform/jet/support/SampleTable.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using jet::Bytes;

constexpr std::size_t kPage = 4096;
constexpr std::size_t kName = 7;       // in a row of AllKindsTable
constexpr std::size_t kMaxPages = 20;  // of a real file

// Turns the map into one with a bitmap page.
void MakeReferenceMap(DatabaseImage& image, jet::RowId map) {
  const std::uint32_t bitmap = image.NewPage();
  DatabaseImage::Page& bits = image.At(bitmap);
  DatabaseImage::Page& holder = image.At(jet::PageOf(map));
  const std::size_t slot = 14 + 2 * jet::SlotOf(map);
  const auto row = holder.begin() + ((holder[slot] | holder[slot + 1] << 8) & 0x1FFF);
  bits = {5, 1};
  std::copy_n(row + 5, 64, bits.begin() + 4);
  std::fill_n(row, 69, std::uint8_t{0});
  row[0] = 1;
  row[1] = static_cast<std::uint8_t>(bitmap);
}

// Gives the key of "Spots" a tree of three levels: two nodes with two leaves each.
void MakeDeepTree(SpotsImage& spots) {
  std::uint32_t nodes[2];
  std::uint32_t leaves[4];
  for (std::uint32_t& page : nodes)
    page = spots.image.AddIndexPage(spots.spots, 1);
  for (std::uint32_t& page : leaves)
    page = spots.image.AddIndexPage(spots.spots, 1);
  const auto put = [&](std::uint32_t page, const std::vector<Bytes>& entries, std::uint32_t previous,
                       std::uint32_t next, std::uint32_t tail = 0, bool node = false) {
    spots.image.PutIndexPage(page, spots.spots, entries, previous, next, tail, node);
  };
  put(leaves[0], {spots.IdEntry(1), spots.IdEntry(2)}, 0, leaves[1]);
  put(leaves[1], {spots.IdEntry(3), spots.IdEntry(4)}, leaves[0], leaves[2]);
  put(leaves[2], {spots.IdEntry(5)}, leaves[1], leaves[3]);
  put(leaves[3], {spots.IdEntry(6)}, leaves[2], 0);
  put(nodes[0], {spots.IdEntry(2) + SpotsImage::Child(leaves[0])}, 0, nodes[1], leaves[1], true);
  put(nodes[1], {spots.IdEntry(5) + SpotsImage::Child(leaves[2])}, nodes[0], 0, leaves[3], true);
  put(spots.root, {spots.IdEntry(4) + SpotsImage::Child(nodes[0])}, 0, 0, nodes[1], true);
  spots.image.At(spots.root)[26] = 2;
  for (const std::uint32_t page : spots.leaves)
    spots.image.AddToMap(DatabaseImage::MapOfIndex(spots.spots, 1), page, false);
  for (const std::uint32_t page : spots.leaves)
    spots.image.AddToMap(0x100, page);
}

Bytes DeepTree() {
  SpotsImage spots;
  MakeDeepTree(spots);
  return spots.image.File();
}

Bytes ReferenceMaps() {
  SpotsImage spots;
  MakeReferenceMap(spots.image, spots.spots.maps << 8);
  MakeReferenceMap(spots.image, DatabaseImage::MapOfIndex(spots.spots, 1));
  return spots.image.File();
}

// A definition over three pages.
Bytes WideTable() {
  DatabaseImage image;
  std::vector<DatabaseImage::Column> columns;
  for (std::uint16_t i = 0; i < 100; ++i)
    columns.push_back({"ColumnNumber" + std::to_string(i), 10, 2, i, i, 100});
  DatabaseImage::Table table = image.AddTable("Wide", columns);
  image.AddRow(table, RowBytes(2, {}, {Utf16("first"), Utf16("second")}, 3));
  image.SetRowCount(table, 1, 0);
  return image.File();
}

// A row of every kind of value, and one of nulls.
Bytes EveryKindInTwoRows() {
  DatabaseImage image;
  DatabaseImage::Table table = image.AddTable("Kinds",
                                              {{"Byte", 2, 3, 0, 0, 1},
                                               {"Integer", 3, 3, 1, 1, 2},
                                               {"Single", 6, 3, 2, 3, 4},
                                               {"Double", 7, 3, 3, 7, 8},
                                               {"Date", 8, 3, 4, 15, 8},
                                               {"Guid", 15, 3, 5, 23, 16},
                                               {"Decimal", 16, 3, 6, 39, 17},
                                               {"Binary", 9, 2, 7, 0, 20},
                                               {"Ole", 11, 2, 8, 1, 0},
                                               {"Late", 4, 2, 9, 2, 4}},
                                              {{"Guid", 5, 0x82, 0}, {"Date", 4, 0x82, 0, true}});
  const Bytes fixed = Le(7, 1) + Le(300, 2) + Le(0x3FC00000, 4) + Le(0x4004000000000000, 8) +
                      Le(0x40E1D5A000000000, 8) + Bytes(16, 0x11) + Bytes{0x80} + Le(0, 12) + Le(123, 4);
  image.AddRow(table, RowBytes(9, fixed, {Bytes{1, 2, 3}, LongHead(4, 2, 0) + Bytes{9, 8, 7, 6}}, 0b111001111));
  image.AddRow(table, RowBytes(10, Bytes(56, 0), {{}, {}, Le(5, 4)}, 0b1000000000));
  image.SetRowCount(table, 2, 0);
  return image.File();
}

jet::TableDefinition EveryKind() {
  jet::TableDefinition table = jet::test::AllKindsTable();
  table.columns.push_back(jet::test::Column(u"Datum", jet::ColumnType::Date));
  table.columns.push_back(jet::test::Column(u"Guid", jet::ColumnType::Guid));
  table.columns.push_back(jet::test::Column(u"Getal", jet::ColumnType::Decimal));
  table.columns.back().precision = 18;
  table.columns.back().scale = 2;
  return table;
}

// Random rows of every type: long values of all forms, moved and deleted rows, text keys.
Bytes WrittenTable(unsigned seed, int rows) {
  jet::test::FreshDatabase fresh;
  fresh.Create(EveryKind());
  jet::test::RandomRows random(seed);
  jet::WriteTurn turn(*fresh);
  const auto writer = fresh->OpenWriter(u"tblAlles");
  std::vector<jet::RowId> ids;
  for (int i = 0; i < rows; ++i) {
    std::vector<jet::Value> row = random.Row(writer->Definition());
    ids.push_back(writer->Insert(row));
  }
  std::vector<jet::Value> longer(writer->Definition().columns.size());
  std::vector<bool> changed(longer.size());
  longer[kName] = std::u16string(255, u'x');
  changed[kName] = true;
  for (std::size_t i = 0; i < ids.size(); i += 3)
    writer->Update(ids[i], longer, changed);
  for (std::size_t i = 1; i < ids.size(); i += 4)
    writer->Delete(ids[i]);
  turn.Commit();
  return fresh.Files().Get(jet::test::FreshDatabase::kPath);
}

void Put(const std::filesystem::path& folder, const std::string& name, const Bytes& file) {
  std::ofstream out(folder / name, std::ios::binary);
  out.write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
  if (!out.flush())
    throw std::filesystem::filesystem_error("write", folder / name, std::make_error_code(std::errc::io_error));
}

// A seed that is already damaged would reach little code.
void PutSound(const std::filesystem::path& folder, const std::string& name, const Bytes& file) {
  for (const jet::Finding& finding : jet::CheckDatabase(*OpenBytes(file))) {
    if (finding.remark) continue;
    std::fprintf(stderr, "%s: %s\n", name.c_str(), finding.Line().c_str());
    std::exit(1);
  }
  Put(folder, name, file);
}

void PutRealFiles(const std::filesystem::path& folder) {
  const char* samples = std::getenv("SPOTROOSTER_MDB_SAMPLES");
  if (samples == nullptr || *samples == '\0') return;
  for (const auto& entry : std::filesystem::directory_iterator(samples)) {
    if (entry.path().extension() != ".mdb") continue;
    std::ifstream in(entry.path(), std::ios::binary);
    Bytes file((std::istreambuf_iterator<char>(in)), {});
    file.resize(std::min(file.size(), kMaxPages * kPage));
    Put(folder, entry.path().stem().string(), file);
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return std::fputs("usage: jet_seeds FOLDER\n", stderr), 2;
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  PutSound(folder, "spots", SpotsImage().image.File());
  PutSound(folder, "deep", DeepTree());
  PutSound(folder, "maps", ReferenceMaps());
  PutSound(folder, "wide", WideTable());
  PutSound(folder, "kinds", EveryKindInTwoRows());
  PutSound(folder, "written", WrittenTable(1, 4));
  PutRealFiles(folder);
  return 0;
}
