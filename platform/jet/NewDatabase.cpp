// A database from nothing: sixteen pages, as the original engine lays them.
#include <cmath>
#include <cstring>

#include "platform/jet/Codec.h"
#include "platform/jet/DataPage.h"
#include "platform/jet/Header.h"
#include "platform/jet/MapPage.h"
#include "platform/jet/MapRow.h"
#include "platform/jet/RowPage.h"
#include "platform/jet/SystemTables.h"
#include "platform/jet/TableDefBuilder.h"
#include "platform/jet/TableMaker.h"
#include "platform/jet/TableWriter.h"

namespace jet {

namespace {

using Type = ColumnType;

constexpr std::uint32_t kFirstPages = 14;  // what stands before the first rows
constexpr std::uint32_t kMapsOfTables = 6;
constexpr std::uint32_t kFirstRoot = 7;
constexpr std::uint16_t kMostBytes = 510;
constexpr std::uint8_t kEngineFlag = 0x10;
constexpr std::uint8_t kObfuscatedFlag = 0x20;

struct EngineColumn {
  const char16_t* name;
  Type type;
  bool obfuscated = false;
};

struct EngineIndex {
  const char16_t* name;
  std::vector<std::uint16_t> columns;
  std::uint8_t flags;
  bool primary = false;
};

struct EngineTable {
  std::vector<EngineColumn> columns;  // by number
  std::vector<EngineIndex> indexes;   // by number; roots follow each other
  std::vector<std::size_t> byName;    // places in `indexes`
};

const EngineTable kObjects = {{{u"Id", Type::Long},
                               {u"ParentId", Type::Long},
                               {u"Name", Type::Text},
                               {u"Type", Type::Integer},
                               {u"DateCreate", Type::Date},
                               {u"DateUpdate", Type::Date},
                               {u"Owner", Type::Binary, true},
                               {u"Flags", Type::Long},
                               {u"Database", Type::Memo},
                               {u"Connect", Type::Memo},
                               {u"ForeignName", Type::Text},
                               {u"RmtInfoShort", Type::Binary},
                               {u"RmtInfoLong", Type::Ole},
                               {u"Lv", Type::Ole},
                               {u"LvProp", Type::Ole},
                               {u"LvModule", Type::Ole},
                               {u"LvExtra", Type::Ole}},
                              {{u"ParentIdName", {1, 2}, 0x81}, {u"Id", {0}, 0x81, true}},
                              {1, 0}};

const EngineTable kAccess = {
    {{u"ObjectId", Type::Long}, {u"SID", Type::Binary, true}, {u"ACM", Type::Long}, {u"FInheritable", Type::Boolean}},
    {{u"ObjectId", {0}, 0x88}},
    {0}};

const EngineTable kQueries = {{{u"ObjectId", Type::Long},
                               {u"Attribute", Type::Byte},
                               {u"Order", Type::Binary},
                               {u"Name1", Type::Text},
                               {u"Name2", Type::Text},
                               {u"Expression", Type::Memo},
                               {u"Flag", Type::Integer},
                               {u"LvExtra", Type::Long}},
                              {{u"ObjectIdAttribute", {0, 1, 2}, 0x81, true}},
                              {0}};

const EngineTable kRelationships = {
    {{u"szRelationship", Type::Text},
     {u"grbit", Type::Long},
     {u"ccolumn", Type::Long},
     {u"icolumn", Type::Long},
     {u"szObject", Type::Text},
     {u"szColumn", Type::Text},
     {u"szReferencedObject", Type::Text},
     {u"szReferencedColumn", Type::Text}},
    {{u"szRelationship", {0}, 0x82}, {u"szObject", {4}, 0x82}, {u"szReferencedObject", {6}, 0x82}},
    {1, 2, 0}};

/// Nothing at all, for a Transaction that makes a whole file.
class NoPages final : public PageSource {
 public:
  std::uint32_t PageCount() override { return 0; }
  PageRef Read(std::uint32_t) override { return nullptr; }
};

class Builder {
 public:
  explicit Builder(double now) : now_(now), pages_(nothing_), space_(pages_), maps_(pages_, space_, kMapsOfTables) {}

  Bytes Build() {
    for (std::uint32_t page = 0; page < kFirstPages; ++page)
      pages_.Append();
    MakeHeader();
    MakeGlobalMap();
    RowPage::Format(pages_, kMapsOfTables, kUsageMapOwner);
    const std::pair<std::uint32_t, const EngineTable*> tables[] = {
        {2, &kObjects}, {3, &kAccess}, {4, &kQueries}, {5, &kRelationships}};
    for (const auto& [page, table] : tables)
      MakeTable(page, *table);
    MakeObjects();
    MakePermissions();
    Bytes file;
    for (std::uint32_t number = 0; number < pages_.PageCount(); ++number) {
      const PageRef page = pages_.Read(number);
      file.insert(file.end(), page->begin(), page->end());
    }
    return file;
  }

 private:
  void MakeHeader();
  void MakeGlobalMap();
  void MakeTable(std::uint32_t page, const EngineTable& table);
  ColumnDef MakeColumn(const EngineColumn& column, std::uint16_t number, TableDef& def, std::uint16_t& fixedBytes);
  void MakeIndexes(const EngineTable& table, TableDef& def);
  void MakeObjects();
  void MakePermissions();
  TableWriter Writer(std::uint32_t page);

  double now_;
  NoPages nothing_;
  Transaction pages_;
  PageSpace space_;
  MapPage maps_;
  std::uint32_t nextRoot_ = kFirstRoot;
};

void Builder::MakeHeader() {
  // The creation date goes with the SIDs: see Sids.
  constexpr std::uint8_t kCreated[] = {0x3E, 0x85, 0xD3, 0x3B, 0x3E, 0xAB, 0xE4, 0x40};
  constexpr std::uint32_t kCreatedDay = 0xA559;
  constexpr std::uint32_t kEngineBuild = 9756;
  PageBytes& page = pages_.Change(0);
  page[1] = 1;
  std::memcpy(&page[4], "Standard Jet DB", 15);
  Store(&page[0x14], std::uint32_t{1});
  Store(&page[0x18], std::uint32_t{0x100});
  Store(&page[0x1C], std::uint32_t{0x101});
  for (std::uint32_t i = 0; i < 4; ++i)
    Store(&page[0x20 + 4 * i], 2 + i);
  Store(&page[0x3C], std::uint16_t{1252});
  for (std::size_t i = 0; i < 10; ++i)
    Store(&page[0x42 + 4 * i], kCreatedDay);
  Store(&page[0x6A], kEngineBuild);
  Store(&page[0x6E], std::uint32_t{0x0409});
  std::memcpy(&page[0x72], kCreated, sizeof kCreated);
  ApplyHeaderMask(page);
  Store(&page[0x98], std::uint32_t{0x654});
  std::memcpy(&page[0x9C], "4.0", 3);
  for (std::size_t at = kCommitCounters; at < kPageSize; at += 2)
    Store(&page[at], std::uint16_t{0x0100});
  Store(&page[kCommitCounters], std::uint16_t{0x0101});
}

void Builder::MakeGlobalMap() {
  constexpr std::uint32_t kMapPage = 1;
  RowPage::Format(pages_, kMapPage, kMapPage);
  RowPage page(pages_, kMapPage, kMapPage);
  Bytes global(MapRow::kFreshBytes, 0xFF);
  std::fill_n(global.begin(), MapRow::kInlineHead + 1, std::uint8_t{0});
  global[MapRow::kInlineHead + 1] = 0xC0;  // pages 14 and 15 are taken when the first rows come
  page.Add(global);
  page.Add(Bytes(MapRow::kFreshBytes));
}

ColumnDef Builder::MakeColumn(const EngineColumn& column, std::uint16_t number, TableDef& def,
                              std::uint16_t& fixedBytes) {
  ColumnDefinition definition;
  definition.name = column.name;
  definition.type = column.type;
  definition.size = column.type == Type::Text ? kMostBytes / 2 : kMostBytes;
  ColumnDef made = LayColumn(definition, number, def.variableColumns, fixedBytes);
  made.display = 0;
  made.extraFlags = 0;
  made.flags |= static_cast<std::uint8_t>(kEngineFlag | (column.obfuscated ? kObfuscatedFlag : 0));
  return made;
}

void Builder::MakeIndexes(const EngineTable& table, TableDef& def) {
  for (const EngineIndex& index : table.indexes) {
    RealIndexDef real;
    for (const std::uint16_t column : index.columns)
      real.fields.push_back({column, true});
    real.flags = index.flags;
    real.root = nextRoot_++;
    real.map = maps_.Add();
    FormatIndexRoot(pages_, real.root, def.page);
    MapRow(pages_, real.map).Add(space_, real.root);
    def.realIndexes.push_back(real);
  }
  for (const std::size_t place : table.byName) {
    LogicalIndexDef logical;
    logical.name = table.indexes[place].name;
    logical.number = static_cast<std::int32_t>(place);
    logical.realIndex = static_cast<std::uint32_t>(place);
    logical.cascadeUpdates = 4;
    logical.cascadeDeletes = 4;
    if (table.indexes[place].primary) logical.role = LogicalIndexDef::Role::PrimaryKey;
    def.logicalIndexes.push_back(logical);
  }
}

void Builder::MakeTable(std::uint32_t page, const EngineTable& table) {
  TableDef def;
  def.page = page;
  def.system = true;
  def.ownedMap = maps_.Add();
  def.freeMap = maps_.Add();
  std::uint16_t fixedBytes = 0;
  for (const EngineColumn& column : table.columns)
    def.columns.push_back(MakeColumn(column, static_cast<std::uint16_t>(def.columns.size()), def, fixedBytes));
  def.maxColumns = static_cast<std::uint16_t>(def.columns.size());
  // The maps of long-value columns follow each other in the order of the names.
  for (const char16_t* name :
       {u"Database", u"Connect", u"RmtInfoLong", u"Lv", u"LvProp", u"LvModule", u"LvExtra", u"Expression"}) {
    for (ColumnDef& column : def.columns) {
      if (column.name != name || !column.IsLong()) continue;
      column.ownedMap = maps_.Add();
      column.freeMap = maps_.Add();
    }
  }
  MakeIndexes(table, def);
  WriteTableDef(pages_, space_, page, BuildTableDef(def, BlockOrder::ByName));
}

TableWriter Builder::Writer(std::uint32_t page) {
  TableDef def = ReadTableDef(pages_, page);
  TableDefinition definition = Describe(u"", def, {});
  return TableWriter(pages_, std::move(def), std::move(definition));
}

void Builder::MakeObjects() {
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
  TableWriter writer = Writer(2);
  for (const Object& object : kRows) {
    const Bytes owner = object.ownedByAdmin ? NewDatabaseSids().admin : NewDatabaseSids().engine;
    // In the order of the column numbers, as the definition lists what has no display positions.
    std::vector<Value> row(kObjects.columns.size());
    const std::vector<Value> first = {object.id, object.parent, std::u16string(object.name), object.type, now_, now_,
                                      owner,     kSystemObject};
    std::copy(first.begin(), first.end(), row.begin());
    writer.Insert(row);
  }
}

void Builder::MakePermissions() {
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
  TableWriter writer = Writer(3);
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

Bytes NewDatabase(double now) {
  return Builder(now).Build();
}

}  // namespace jet
