// SPDX-License-Identifier: MIT
#include "tests/fuzz/EditDamaged.h"

#include "platform/files/MemoryFileSystem.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Error.h"
#include "tests/fuzz/EditBases.h"
#include "tests/platform/jet/support/FreeMapImage.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace jet::fuzz {

namespace {

constexpr const char* kFuzzPath = "fuzz.mdb";
constexpr unsigned kMaxDamages = 8;
constexpr int kMaxDeleted = 8;  // at once
constexpr int kMaxStatements = 4;

// Reads numbers from the input; zeros after its end.
class Recipe {
 public:
  explicit Recipe(std::span<const std::uint8_t> input) : input_(input) {}

  bool AtEnd() const { return input_.empty(); }
  std::uint8_t Byte() {
    if (input_.empty()) return 0;
    const std::uint8_t byte = input_.front();
    input_ = input_.subspan(1);
    return byte;
  }
  std::uint32_t Number(int bytes) {
    std::uint32_t number = 0;
    for (int i = 0; i < bytes; ++i)
      number = number << 8 | Byte();
    return number;
  }

 private:
  std::span<const std::uint8_t> input_;
};

// A random offset in a page, mostly in its head or in the rows at its end.
std::size_t PlaceInPage(Recipe& recipe) {
  const std::uint32_t place = recipe.Number(2);
  switch (place >> 14) {
    case 0:
      return place % 64;
    case 1:
      return kPageSize - 1 - place % 1024;
    default:
      return place % kPageSize;
  }
}

// A nearly valid page number, row pointer or first page.
std::uint32_t NumberNear(std::size_t pages, Recipe& recipe) {
  switch (recipe.Byte() % 6) {
    case 0:
      return recipe.Byte() % static_cast<std::uint32_t>(pages + 2);
    case 1:
      return static_cast<std::uint32_t>(recipe.Byte()) % static_cast<std::uint32_t>(pages) << 8 | recipe.Byte() % 16;
    case 2:
      return 8U * recipe.Byte();
    case 3:
      return ~0U - recipe.Number(2);
    case 4:
      return (1U << 19) - 64 + recipe.Byte();  // near the page count of the largest file
    default:
      return recipe.Number(4);
  }
}

// The offset in the file of a usage map's row, or of another byte when the page has none.
std::size_t PlaceOfMapRow(const Bytes& file, std::size_t page, Recipe& recipe) {
  const std::uint8_t* bytes = &file[page * kPageSize];
  const std::size_t slots = std::min<std::size_t>(LoadU16(bytes + 12), 255);
  const std::size_t slot = slots == 0 ? 0 : recipe.Byte() % slots;
  return page * kPageSize + std::min<std::size_t>(LoadU16(bytes + kDataPageHead + 2 * slot) & 0x1FFF, kPageSize - 8);
}

// Changes a usage map (its kind, first page, a bitmap page or a bit) or a definition's pointer to a map.
void DamageMap(Bytes& file, Recipe& recipe) {
  const std::size_t pages = file.size() / kPageSize;
  std::vector<std::size_t> holders = {1, 1, 1};  // the map of free pages matters most
  std::vector<std::size_t> definitions;
  for (std::size_t page = 2; page < pages; ++page) {
    const std::uint8_t* bytes = &file[page * kPageSize];
    if (bytes[0] == static_cast<std::uint8_t>(PageType::Data) && LoadU32(bytes + 4) == kUsageMapOwner)
      holders.push_back(page);
    if (bytes[0] == static_cast<std::uint8_t>(PageType::Definition)) definitions.push_back(page);
  }
  const std::size_t holder = holders[recipe.Byte() % holders.size()];
  const std::size_t row = PlaceOfMapRow(file, holder, recipe);
  switch (recipe.Byte() % 5) {
    case 0:
      file[row] = recipe.Byte() % 3;
      return;
    case 1:
      Store(&file[row + 1], NumberNear(pages, recipe));
      return;
    case 2: {  // an existing page
      const std::size_t page = recipe.Byte() % (pages + 2);
      file[std::min(row + 5 + page / 8, file.size() - 1)] ^= static_cast<std::uint8_t>(1U << (page % 8));
      return;
    }
    case 3: {
      const std::size_t entry = row + 1 + 4 * (recipe.Byte() % 17U);
      if (entry + 4 <= file.size()) Store(&file[entry], NumberNear(pages, recipe));
      return;
    }
    default: {
      if (definitions.empty()) return;
      const std::size_t definition = definitions[recipe.Byte() % definitions.size()] * kPageSize;
      const std::size_t stream = std::clamp<std::size_t>(LoadU32(&file[definition + 8]), 64, kPageSize - 4);
      const std::size_t at = recipe.Byte() % 2 == 0 ? 55 + 4 * (recipe.Byte() % 2U) : recipe.Number(2) % stream;
      Store(&file[definition + at], NumberNear(pages, recipe));
    }
  }
}

// Stores the same free pages in a layout of other programs.
void LayOutFreeMap(Bytes& file, unsigned layout, Recipe& recipe) {
  test::FreeMapImage image(file);
  if (layout == 5 || layout == 7) image.PutWindow(recipe.Byte() % (image.PageCount() / 8) * 8);
  if (layout == 6) image.PutBitmapPages();
  if (layout == 7) image.LeaveNoRoom();
}

void DamageOnce(Bytes& file, Recipe& recipe) {
  const std::size_t at = recipe.Byte() % (file.size() / kPageSize) * kPageSize + PlaceInPage(recipe);
  const std::uint8_t what = recipe.Byte();
  if (what / 8 % 2 == 1) return DamageMap(file, recipe);
  const std::uint8_t kind = what % 8;
  const std::size_t room = file.size() - at;
  switch (kind) {
    case 0:
      file[at] ^= static_cast<std::uint8_t>(1U << (recipe.Byte() % 8));
      return;
    case 1:
      file[at] = recipe.Byte();
      return;
    case 2:
      if (room >= 2) Store(&file[at], static_cast<std::uint16_t>(recipe.Number(2)));
      return;
    case 3:
      if (room >= 4) Store(&file[at], recipe.Number(1));  // a small number: a page, a count
      return;
    case 4:
      if (room >= 4) Store(&file[at], recipe.Number(4));
      return;
    case 5:
      file[at] = static_cast<std::uint8_t>(file[at] + 1 - 2 * (recipe.Byte() % 2));
      return;
    case 6: {  // replaced by another page
      const std::size_t from = recipe.Byte() % (file.size() / kPageSize) * kPageSize;
      std::copy_n(file.begin() + static_cast<std::ptrdiff_t>(from), kPageSize,
                  file.begin() + static_cast<std::ptrdiff_t>(at / kPageSize * kPageSize));
      return;
    }
    default:
      std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(at), std::min<std::size_t>(room, recipe.Byte()),
                  std::uint8_t{0});
  }
}

// The rows of the table that no statement uses, with the error that ended the reading.
struct OtherRows {
  std::vector<std::vector<Value>> rows;
  std::string error;
  bool operator==(const OtherRows&) const = default;
  std::string Summary() const { return std::to_string(rows.size()) + " rows " + error; }
};

OtherRows ReadOthers(Database& database) {
  OtherRows others;
  try {
    const Table table = database.OpenTable(u"tblItems");
    ColumnSet all;
    for (std::size_t i = 0; i < table.Definition().columns.size(); ++i)
      all.push_back(i);
    TableCursor cursor = table.Scan(all);
    while (cursor.Next())
      others.rows.push_back(cursor.Values());
  } catch (const Error& error) {
    others.error = error.what();
  }
  return others;
}

// An index with a key that cannot be built is only half checked ("niet alle na te rekenen"): its file counts as
// damaged, too.
std::string Problems(Database& database) {
  std::string problems;
  for (const Finding& finding : CheckDatabase(database)) {
    const bool halfChecked = finding.text.find("na te rekenen") != std::string::npos;
    if (!finding.remark || halfChecked) problems += finding.text + '\n';
  }
  return problems;
}

// Whether the table that no statement uses had no problem. The list of problems may be truncated.
bool WasSound(const OtherRows& others, const std::string& problems) {
  const auto tells = [&](const char* words) { return problems.find(words) != std::string::npos; };
  return others.error.empty() && !tells("'tblItems'") && !tells("nog meer bevindingen");
}

// An error about a value, thrown before any change: the statement continues.
bool IsRefusal(ErrorCode code) {
  return code == ErrorCode::Duplicate || code == ErrorCode::Required || code == ErrorCode::Relation ||
         code == ErrorCode::TooLong || code == ErrorCode::OutOfRange || code == ErrorCode::UnknownCharacter;
}

// The rows of the table that the statements change, by RowId.
using Model = std::map<RowId, std::vector<Value>>;

Model ReadSpots(Database& database) {
  Model rows;
  const Table table = database.OpenTable(u"tblSpots");
  ColumnSet all;
  for (std::size_t i = 0; i < table.Definition().columns.size(); ++i)
    all.push_back(i);
  TableCursor cursor = table.Scan(all);
  while (cursor.Next())
    rows[cursor.Id()] = cursor.Values();
  return rows;
}

class Editing {
 public:
  // `model` is updated with each change.
  Editing(Database& database, Recipe& recipe, Model& model) : database_(database), recipe_(recipe), model_(model) {}

  void Statement() {
    WriteTurn turn(database_);
    const std::uint8_t what = recipe_.Byte();
    const std::uint8_t kind = what % 8;
    if (what % 64 == 63) {
      database_.OpenWriter(u"tblSpots")->DeleteAll();
      model_.clear();
    } else if (kind == 7) {
      MakeTable();
    } else {
      EditRows(kind);
    }
    turn.Commit();
  }

 private:
  void MakeTable() {
    TableDefinition table;
    table.name = u"tbl" + std::u16string(1, static_cast<char16_t>(u'A' + recipe_.Byte() % 26));
    ColumnDefinition column;
    column.name = u"Nr";
    table.columns = {column};
    IndexDefinition key;
    key.name = u"PrimaryKey";
    key.primary = true;
    key.fields = {{0, false}};
    table.indexes = {key};
    database_.CreateTable(table);
  }

  void EditRows(std::uint8_t kind) {
    const auto writer = database_.OpenWriter(u"tblSpots");
    int count = kind < 4 ? 1 : 12;
    for (std::vector<RowId> rows = AllRows(); count > 0; --count) {
      try {
        EditOne(*writer, kind % 4, rows);
      } catch (const Error& error) {
        if (!IsRefusal(error.Code())) throw;
      }
    }
  }

  void EditOne(TableWriter& writer, int kind, std::vector<RowId>& rows) {
    if (kind == 0 || rows.empty()) {
      std::vector<Value> row = Row(writer);
      rows.push_back(writer.Insert(row));
      model_[rows.back()] = row;
      return;
    }
    const std::size_t place = recipe_.Byte() % rows.size();
    if (kind == 1) {
      const auto first = rows.begin() + static_cast<std::ptrdiff_t>(place);
      const auto count = std::min<std::ptrdiff_t>(1 + recipe_.Byte() % kMaxDeleted, rows.end() - first);
      const std::vector<RowId> going(first, first + count);
      rows.erase(first, first + count);
      writer.Delete(going);
      for (const RowId row : going)
        model_.erase(row);
      return;
    }
    std::vector<bool> changed(writer.Definition().columns.size());
    for (std::size_t i = 1; i < changed.size(); ++i)
      changed[i] = kind == 2 || i == 2;
    const std::vector<Value> row = Row(writer);
    writer.Update(rows[place], row, changed);
    std::vector<Value>& known = model_[rows[place]];
    known.resize(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (changed[i]) known[i] = row[i];
    }
  }

  std::vector<Value> Row(const TableWriter& writer) {
    const std::uint8_t seed = recipe_.Byte();
    const std::u16string name(1 + seed % 50, static_cast<char16_t>(u'a' + seed % 26));
    Value text;
    if (seed % 3 == 1) text = std::u16string(seed % 100, u'x');
    if (seed % 3 == 2) text = std::u16string(static_cast<std::size_t>(seed) * 40, u'\u20AC');
    std::vector<Value> row = SpotRow(Value{}, name, text);
    const std::vector<ColumnDefinition>& columns = writer.Definition().columns;
    row.resize(columns.size());  // a damaged definition may have another number, and other types
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (columns[i].type == ColumnType::Boolean && IsNull(row[i])) row[i] = false;  // as it is stored
    }
    return row;
  }

  std::vector<RowId> AllRows() {
    std::vector<RowId> rows;
    const Table table = database_.OpenTable(u"tblSpots");
    TableCursor cursor = table.Scan({});
    while (cursor.Next())
      rows.push_back(cursor.Id());
    return rows;
  }

  Database& database_;
  Recipe& recipe_;
  Model& model_;
};

void Edit(files::MemoryFileSystem& files, Recipe& recipe, EditOutcome& outcome) {
  const auto database = Database::Open(kFuzzPath, ForEditing(), files);
  outcome.opened = true;
  const std::string before = Problems(*database);
  outcome.damaged = !before.empty();
  const OtherRows others = ReadOthers(*database);
  Model model;
  if (before.empty()) model = ReadSpots(*database);
  for (int statement = 0; statement < kMaxStatements && (statement == 0 || !recipe.AtEnd()); ++statement) {
    const Bytes content = files.Get(kFuzzPath);
    Model changed = model;
    try {
      Editing(*database, recipe, changed).Statement();
      model = std::move(changed);
      ++outcome.committed;
    } catch (const Error&) {
      ++outcome.refused;
      if (files.Get(kFuzzPath) != content) throw std::logic_error("a refused statement changed the file");
    }
  }
  if (outcome.committed == 0) return;
  const OtherRows now = ReadOthers(*database);
  if (now != others && WasSound(others, before))
    throw std::logic_error("another table changed from " + others.Summary() + " to " + now.Summary());
  if (!before.empty()) return;
  const std::string after = Problems(*database);
  if (!after.empty()) throw std::logic_error("a sound file is not sound any more: " + after);
  if (ReadSpots(*database) != model) throw std::logic_error("a row of a sound file is not as it was last written");
}

}  // namespace

EditOutcome EditDamaged(std::span<const std::uint8_t> input) {
  Recipe recipe(input);
  const std::uint8_t first = recipe.Byte();
  Bytes file = first % 4 == 3 ? LargerBase() : SmallBase();
  LayOutFreeMap(file, first / (4 * (kMaxDamages + 1)), recipe);
  for (unsigned damages = first / 4 % (kMaxDamages + 1); damages > 0; --damages)
    DamageOnce(file, recipe);
  files::MemoryFileSystem files;
  files.Put(kFuzzPath, std::move(file));
  EditOutcome outcome;
  try {
    Edit(files, recipe, outcome);
  } catch (const Error&) {
    // It could not be opened or checked.
  }
  if (files.Names().size() != 1) throw std::logic_error("a file was left beside the database");
  return outcome;
}

}  // namespace jet::fuzz
