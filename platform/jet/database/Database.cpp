// SPDX-License-Identifier: MIT
#include "platform/jet/database/Database.h"

#include "platform/files/AtomicFile.h"
#include "platform/jet/database/CatalogWriter.h"
#include "platform/jet/database/NewDatabase.h"
#include "platform/jet/database/TableCreator.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/storage/LockFile.h"
#include "platform/jet/table/PageClaims.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <cerrno>

namespace jet {

namespace {

void CheckPassword(const Header& header, const std::u16string& given, const std::string& fileName) {
  if (header.password.empty() || header.password == given) return;
  const std::string file = "het bestand '" + fileName + "'";
  throw Error(ErrorCode::Password, given.empty() ? "Voor " + file + " is een wachtwoord nodig."
                                                 : "Het wachtwoord voor " + file + " is niet juist.");
}

// With a damaged property block the table is still readable, without properties.
CachedTableShape::Properties ReadProperties(PageSource& pages, RowId catalogRow) {
  auto properties = std::make_shared<std::vector<PropertySet>>();
  try {
    const auto block = ReadPropertyBlock(pages, catalogRow);
    if (block && !block->empty()) *properties = ParseProperties(*block);
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Damaged) throw;
  }
  return properties;
}

}  // namespace

std::unique_ptr<Database> Database::Open(const std::filesystem::path& path, const OpenOptions& options,
                                         FileSystem& files) {
  return std::unique_ptr<Database>(new Database(path, options, files));
}

void Database::Create(const std::filesystem::path& path, FileSystem& files) {
  if (files.Exists(path)) throw SystemError("aanmaken", path.string(), EEXIST);
  LockFile::CheckName(path);
  Bytes content = NewDatabase(Now());
  MarkChange(std::span(content).first<kPageSize>());
  files::WriteFile(path, {reinterpret_cast<const char*>(content.data()), content.size()}, files);
}

Database::Database(const std::filesystem::path& path, const OpenOptions& options, FileSystem& files)
    : storage_(
          Storage::Open(path, {options.cachedPages, !options.writable, options.wait, FindDoubtfulFreePages}, files)) {
  CheckPassword(DatabaseHeader(), options.password, Name());
}

std::string Database::Context() const {
  return "Het bestand '" + Name() + "' is beschadigd: ";
}

const Catalog& Database::Objects() {
  const ReadTurn reading(*this);
  return InContext([this] { return Context(); },
                   [&]() -> const Catalog& { return catalog_.Get(Source(), Catalog::Read); });
}

std::vector<std::u16string> Database::TableNames() {
  std::vector<std::u16string> names;
  for (const CatalogEntry& entry : Objects().Entries()) {
    if (entry.IsUserTable()) names.push_back(entry.name);
  }
  std::sort(names.begin(), names.end(), NameLess);
  return names;
}

bool Database::HasTable(std::u16string_view name) {
  return Objects().FindTable(name) != nullptr;
}

Table Database::OpenTable(std::u16string_view name) {
  const ReadTurn reading(*this);
  const CatalogEntry* entry = Objects().FindTable(name);
  if (entry == nullptr) {
    throw Error(ErrorCode::NotFound, "De tabel '" + ToUtf8(name) + "' bestaat niet in het bestand '" + Name() + "'.");
  }
  return OpenTable(*entry);
}

Table Database::OpenTable(const CatalogEntry& entry) {
  const ReadTurn reading(*this);
  const std::string context = Context() + "tabel '" + ToUtf8(entry.name) + "', ";
  return InContext(context, [&] {
    const auto& properties =
        properties_[entry.row].Get(Source(), [&](PageSource& pages) { return ReadProperties(pages, entry.row); });
    return Table(Source(), shapes_[entry.row].Get(Source(), entry, properties), context);
  });
}

std::unique_ptr<TableWriter> Database::OpenWriter(std::u16string_view name) {
  return OpenWriter(OpenTable(name));
}

std::unique_ptr<TableWriter> Database::OpenWriter(const Table& table) {
  return std::make_unique<TableWriter>(storage_->Changes(), table.Shape());
}

void Database::CreateTable(const TableDefinition& table) {
  CreateTable(table, PropertiesOf(table));
}

void Database::CreateTable(const TableDefinition& table, const std::vector<PropertySet>& properties) {
  if (HasTable(table.name)) {
    throw Error(ErrorCode::Duplicate,
                "De tabel '" + ToUtf8(table.name) + "' bestaat al in het bestand '" + Name() + "'.");
  }
  TableCreator(storage_->Changes()).Make(table, properties);
}

}  // namespace jet
