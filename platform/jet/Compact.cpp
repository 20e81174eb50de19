#include "platform/jet/Compact.h"

#include "platform/files/AtomicFile.h"
#include "platform/jet/Check.h"
#include "platform/jet/Codec.h"
#include "platform/jet/Error.h"
#include "platform/jet/Properties.h"
#include "platform/jet/Utf8.h"

#include <memory>
#include <vector>

namespace jet {

namespace {

constexpr std::int32_t kDatabaseObject = 2;  // MSysDb

/// Removes a file that was not finished.
class Unfinished {
 public:
  Unfinished(FileSystem& files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}
  ~Unfinished() {
    if (kept_) return;
    try {
      files_.Remove(path_);
    } catch (const Error&) {
      // What went wrong before is what the user hears of.
    }
  }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  void Keep() { kept_ = true; }

 private:
  FileSystem& files_;
  std::filesystem::path path_;
  bool kept_ = false;
};

/// Only tables can be carried over; what else is there must not get lost.
void CheckOnlyTables(Database& source) {
  for (const CatalogEntry& entry : source.Objects().Entries()) {
    const bool isEngineTable = entry.IsTable() && entry.id >= 2 && entry.id <= 5;
    const bool isFrame = entry.type == CatalogEntry::kContainer || entry.type == kDatabaseObject;
    if (isEngineTable || isFrame || entry.IsUserTable()) continue;
    throw Error(ErrorCode::Unsupported, "Het bestand '" + source.Name() + "' bevat '" + ToUtf8(entry.name) +
                                            "', dat bij het comprimeren verloren zou gaan.");
  }
}

ColumnSet AllColumns(const Table& table) {
  ColumnSet columns(table.Definition().columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i] = i;
  return columns;
}

std::vector<PropertySet> PropertiesIn(Database& database, const std::u16string& table) {
  const auto block = ReadPropertyBlock(database.Source(), database.Objects().FindTable(table)->row);
  return block && !block->empty() ? ParseProperties(*block) : std::vector<PropertySet>();
}

void KeepAutonumber(Database& target, const std::u16string& name, std::uint32_t last) {
  std::uint8_t* at = target.Shared().Changes().Change(target.OpenTable(name).Def().page).data() + kAutonumberAt;
  if (LoadU32(at) < last) Store(at, last);
}

void CopyTable(Database& source, Database& target, const std::u16string& name) {
  const Table from = source.OpenTable(name);
  TableDefinition definition = from.Definition();
  // Only what no file made by us has: the other side of a relation cannot be carried over.
  for (const IndexDefinition& index : definition.indexes) {
    if (index.foreign) throw Error(ErrorCode::Unsupported, "De tabel '" + ToUtf8(name) + "' heeft relaties.");
  }
  target.CreateTable(definition, PropertiesIn(source, name));
  const auto writer =
      std::make_unique<TableWriter>(target.Shared().Changes(), target.OpenTable(name).Def(), definition);
  const Table to = target.OpenTable(name);
  const ColumnSet columns = AllColumns(from);
  TableCursor rows = from.Scan(columns);
  while (rows.Next()) {
    std::vector<Value> row = rows.Values();
    const RowId copy = writer->Insert(row);
    if (to.Fetch(copy, columns) != rows.Values()) {
      throw Error(ErrorCode::Damaged, "Een rij van tabel '" + ToUtf8(name) + "' is niet goed overgenomen.");
    }
  }
  KeepAutonumber(target, name, from.Def().lastAutonumber);
}

void CopyAll(Database& source, const std::filesystem::path& path, FileSystem& files) {
  Database::Create(path, files);
  OpenOptions options;
  options.writable = true;
  const auto target = Database::Open(path, options, files);
  WriteTurn turn(*target);
  for (const std::u16string& name : source.TableNames())
    CopyTable(source, *target, name);
  turn.Commit();
  for (const std::u16string& name : source.TableNames()) {
    if (source.OpenTable(name).CountRows() == target->OpenTable(name).CountRows()) continue;
    throw Error(ErrorCode::Damaged, "De tabel '" + ToUtf8(name) + "' is niet volledig overgenomen.");
  }
  const auto findings = CheckDatabase(*target);
  if (HasProblem(findings)) throw Error(ErrorCode::Damaged, findings.front().text);
}

void KeepOld(const std::filesystem::path& path, FileSystem& files) {
  std::filesystem::path kept = path;
  kept += ".bak";
  const auto file = files.Open(path, OpenMode::Read);
  Bytes content(file->Size());
  content.resize(file->ReadAt(0, content));
  files::WriteFile(kept, {reinterpret_cast<const char*>(content.data()), content.size()}, files);
}

}  // namespace

void CompactInto(const std::filesystem::path& source, const std::filesystem::path& target, const OpenOptions& options,
                 FileSystem& files) {
  const auto database = Database::Open(source, options, files);
  const ReadTurn reading(*database);
  CheckOnlyTables(*database);
  if (files.Exists(target)) Database::Create(target, files);  // says that it is there
  Unfinished unfinished(files, target);
  CopyAll(*database, target, files);
  unfinished.Keep();
}

void Compact(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files) {
  OpenOptions writable = options;
  writable.writable = true;
  const auto database = Database::Open(path, writable, files);
  const WriteTurn nobodyElse(*database);
  CheckOnlyTables(*database);
  std::filesystem::path temporary = path;
  temporary.replace_extension(".compact.mdb");
  if (files.Exists(temporary)) files.Remove(temporary);  // left by one that was killed
  Unfinished unfinished(files, temporary);
  CopyAll(*database, temporary, files);
  KeepOld(path, files);
  files.CopyPermissions(path, temporary);
  files.Rename(temporary, path);
  unfinished.Keep();
  files.SyncFolderOf(path);
}

}  // namespace jet
