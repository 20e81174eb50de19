// SPDX-License-Identifier: MIT
#include "platform/jet/database/CatalogWriter.h"

#include "platform/jet/database/InitialRows.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/TableCursor.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Damage.h"

#include <ctime>
#include <variant>

namespace jet {

namespace {

constexpr std::int64_t kTablesContainer = 0x0F000001;
constexpr std::int64_t kMSysDb = 0x10000000;
constexpr std::int64_t kAllOfATable = 0xFFEFF;
constexpr std::int64_t kAllOfAnOwner = 0xF00FE;

TableWriter Writer(Transaction& pages, std::uint32_t page, const std::u16string& name) {
  StoredTable def = ReadStoredTable(pages, page);
  TableDefinition definition = Describe(name, def, {});
  return TableWriter(pages, std::make_shared<TableShape>(TableShape{std::move(def), std::move(definition), nullptr}));
}

void Set(const TableWriter& table, std::vector<Value>& row, std::u16string_view column, Value value) {
  const std::size_t place = table.Definition().FindColumn(column);
  if (place == TableDefinition::kNone) throw Damage("de catalogus mist een kolom");
  row[place] = std::move(value);
}

// The bytes in column `wanted` of all rows whose number in column `number` is `id`.
std::vector<Bytes> SidsOf(Transaction& pages, std::uint32_t table, std::u16string_view number, std::int64_t id,
                          std::u16string_view wanted) {
  const StoredTable def = ReadStoredTable(pages, table);
  std::vector<const StoredColumn*> columns(2);
  for (const StoredColumn& column : def.columns) {
    if (column.name == number) columns[0] = &column;
    if (column.name == wanted) columns[1] = &column;
  }
  if (columns[0] == nullptr || columns[1] == nullptr) throw Damage("de catalogus mist een kolom");
  std::vector<Bytes> found;
  TableCursor rows(pages, def, columns, "");
  while (rows.Next()) {
    const Bytes* sid = std::get_if<Bytes>(&rows.Values()[1]);
    if (rows.Values()[0] == Value(id) && sid != nullptr) found.push_back(*sid);
  }
  return found;
}

struct Permission {
  Bytes sid;
  std::int64_t rights;
};

// In a database made by this library the engine's own permissions; in others all rights for everyone who has any on
// tables.
std::vector<Permission> PermissionsOfNewTable(Transaction& pages) {
  const Sids& own = NewDatabaseSids();
  const std::vector<Bytes> sids = SidsOf(pages, kAccessTable, u"ObjectId", kTablesContainer, u"SID");
  if (sids == std::vector<Bytes>{own.creator, own.admin, own.users})
    return {{own.admin, kAllOfAnOwner}, {own.users, kAllOfATable}};
  std::vector<Permission> permissions;
  permissions.reserve(sids.size());
  for (const Bytes& sid : sids)
    permissions.push_back({sid, kAllOfATable});
  return permissions;
}

}  // namespace

void AddTableToCatalogue(Transaction& pages, std::u16string_view name, std::uint32_t page,
                         const std::vector<PropertySet>& properties) {
  const std::vector<Bytes> owner = SidsOf(pages, kObjectsTable, u"Id", kMSysDb, u"Owner");
  TableWriter objects = Writer(pages, kObjectsTable, u"MSysObjects");
  std::vector<Value> row(objects.Definition().columns.size());
  const double now = Now();
  Set(objects, row, u"Id", std::int64_t{page});
  Set(objects, row, u"ParentId", kTablesContainer);
  Set(objects, row, u"Name", std::u16string(name));
  Set(objects, row, u"Type", std::int64_t{CatalogEntry::kTable});
  Set(objects, row, u"DateCreate", now);
  Set(objects, row, u"DateUpdate", now);
  if (!owner.empty()) Set(objects, row, u"Owner", owner.front());
  Set(objects, row, u"Flags", std::int64_t{0});
  if (!properties.empty()) Set(objects, row, u"LvProp", BuildProperties(properties));
  objects.Insert(row);

  TableWriter access = Writer(pages, kAccessTable, u"MSysACEs");
  for (const Permission& permission : PermissionsOfNewTable(pages)) {
    std::vector<Value> entry(access.Definition().columns.size());
    Set(access, entry, u"ObjectId", std::int64_t{page});
    Set(access, entry, u"SID", permission.sid);
    Set(access, entry, u"ACM", permission.rights);
    Set(access, entry, u"FInheritable", false);
    access.Insert(entry);
  }
}

double Now() {
  constexpr double kSecondsPerDay = 86400;
  constexpr int kDaysUntil1970 = 25569;
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return kDaysUntil1970 + static_cast<double>(now + local.tm_gmtoff) / kSecondsPerDay;
}

}  // namespace jet
