#include "platform/jet/Database.h"

#include <algorithm>

#include "platform/jet/Damage.h"
#include "platform/jet/Names.h"
#include "platform/jet/Properties.h"
#include "platform/jet/Utf8.h"

namespace jet {

namespace {

void CheckPassword(const Header& header, const std::u16string& given, const std::string& fileName) {
  if (header.password.empty() || header.password == given) return;
  const std::string file = "het bestand '" + fileName + "'";
  throw Error(ErrorCode::Password, given.empty() ? "Voor " + file + " is een wachtwoord nodig."
                                                 : "Het wachtwoord voor " + file + " is niet juist.");
}

// A damaged property block costs the properties, not the table.
std::vector<PropertySet> ReadProperties(PageSource& pages, RowId catalogRow) {
  try {
    const auto block = ReadPropertyBlock(pages, catalogRow);
    return block && !block->empty() ? ParseProperties(*block) : std::vector<PropertySet>();
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::Damaged) throw;
    return {};
  }
}

}  // namespace

std::unique_ptr<Database> Database::Open(const std::filesystem::path& path, const OpenOptions& options,
                                         FileSystem& files) {
  return Open(files.Open(path, OpenMode::Read), options);
}

std::unique_ptr<Database> Database::Open(std::unique_ptr<File> file, const OpenOptions& options) {
  return std::unique_ptr<Database>(new Database(std::move(file), options));
}

Database::Database(std::unique_ptr<File> file, const OpenOptions& options)
    : file_(std::move(file)), pages_(*file_, options.cachedPages) {
  CheckPassword(pages_.DatabaseHeader(), options.password, Name());
}

std::string Database::Context() const {
  return "Het bestand '" + Name() + "' is beschadigd: ";
}

const Catalog& Database::Objects() {
  if (!catalog_) catalog_ = InContext(Context(), [&] { return Catalog::Read(pages_); });
  return *catalog_;
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
  const CatalogEntry* entry = Objects().FindTable(name);
  if (entry == nullptr) {
    throw Error(ErrorCode::NotFound, "De tabel '" + ToUtf8(name) + "' bestaat niet in het bestand '" + Name() + "'.");
  }
  const std::string context = Context() + "tabel '" + ToUtf8(entry->name) + "', ";
  return InContext(context, [&] {
    TableDef def = ReadTableDef(pages_, static_cast<std::uint32_t>(entry->id));
    TableDefinition definition = Describe(entry->name, def, ReadProperties(pages_, entry->row));
    return Table(pages_, std::move(def), std::move(definition), context);
  });
}

}  // namespace jet
