// SPDX-License-Identifier: MIT
#include "platform/jet/database/InitialRows.h"

#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/table/Definition.h"
#include "platform/jet/table/Properties.h"
#include "platform/jet/table/TableWriter.h"
#include "platform/jet/values/Value.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace jet {

namespace {

TableWriter Writer(Transaction& pages, std::uint32_t page) {
  StoredTable def = ReadStoredTable(pages, page);
  TableDefinition definition = Describe(u"", def, {});
  return TableWriter(pages, std::make_shared<TableShape>(TableShape{std::move(def), std::move(definition), nullptr}));
}

void AddObjects(Transaction& pages, double now) {
  struct Object {
    std::int64_t id;
    std::int64_t parent;
    const char16_t* name;
    std::int64_t type;
    bool ownedByAdmin = false;
  };
  constexpr Object kRows[] = {{0x0F000001, 0x0F000000, u"Tables", 3},
                              {0x0F000002, 0x0F000000, u"Databases", 3},
                              {0x0F000003, 0x0F000000, u"Relationships", 3},
                              {0x10000000, 0x0F000002, u"MSysDb", 2, true},
                              {2, 0x0F000001, u"MSysObjects", 1},
                              {3, 0x0F000001, u"MSysACEs", 1},
                              {4, 0x0F000001, u"MSysQueries", 1},
                              {5, 0x0F000001, u"MSysRelationships", 1}};
  constexpr std::int64_t kSystemObject = INT32_MIN;
  TableWriter writer = Writer(pages, kObjectsTable);
  for (const Object& object : kRows) {
    const Bytes owner = object.ownedByAdmin ? NewDatabaseSids().admin : NewDatabaseSids().engine;
    // In the order of the column numbers, as in the definition of a table without display positions.
    std::vector<Value> row(writer.Definition().columns.size());
    const std::vector<Value> first = {object.id, object.parent, std::u16string(object.name), object.type, now, now,
                                      owner,     kSystemObject};
    std::copy(first.begin(), first.end(), row.begin());
    writer.Insert(row);
  }
}

void AddPermissions(Transaction& pages) {
  struct Permission {
    std::int64_t object;
    const Bytes& sid;
    std::int64_t rights;
    bool inheritable;
  };
  const Sids& sids = NewDatabaseSids();
  const Permission rows[] = {{2, sids.admin, 0x60000, false},
                             {3, sids.admin, 0x60000, false},
                             {4, sids.admin, 0x60000, false},
                             {5, sids.admin, 0xE0000, false},
                             {0x0F000001, sids.creator, 0xF00FE, true},
                             {0x0F000001, sids.admin, 0x60001, false},
                             {0x0F000003, sids.creator, 0xF00FE, true},
                             {0x0F000003, sids.admin, 0x60001, false},
                             {0x0F000002, sids.admin, 0x60000, false},
                             {0x10000000, sids.admin, 0x6000E, false},
                             {0x10000000, sids.users, 0xE, false},
                             {4, sids.users, 0x14, false},
                             {5, sids.users, 0x14, false},
                             {2, sids.users, 0x14, false},
                             {0x0F000001, sids.users, 0xFFEFF, true},
                             {0x0F000003, sids.users, 0xFFFFF, true}};
  TableWriter writer = Writer(pages, kAccessTable);
  for (const Permission& permission : rows) {
    std::vector<Value> row = {permission.object, permission.sid, permission.rights, permission.inheritable};
    writer.Insert(row);
  }
}

}  // namespace

const Sids& NewDatabaseSids() {
  static const Sids sids = {{0x65, 0x89}, {0x64, 0x8B}, {0x65, 0x8E}, {0x65, 0x8B}};
  return sids;
}

void AddEngineRows(Transaction& pages, double now) {
  AddObjects(pages, now);
  AddPermissions(pages);
}

}  // namespace jet
