// SPDX-License-Identifier: MIT
#include "platform/jet/database/NewDatabase.h"

#include "platform/jet/database/InitialRows.h"
#include "platform/jet/database/InitialTables.h"
#include "platform/jet/database/TableCreator.h"
#include "platform/jet/pages/Header.h"
#include "platform/jet/pages/RowPage.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/rows/StoredTableBuilder.h"
#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

constexpr std::uint32_t kFirstPages = 14;  // pages before the first rows
constexpr std::uint32_t kMapsOfTables = 6;
constexpr std::uint32_t kFirstRoot = 7;
constexpr std::uint16_t kMaxBytes = 510;
constexpr std::uint8_t kEngineFlag = 0x10;
constexpr std::uint8_t kObfuscatedFlag = 0x20;

class Builder {
 public:
  Builder() : pages_(nothing_), space_(pages_), maps_(pages_, space_, kMapsOfTables) {}

  Bytes Build(double now) {
    for (std::uint32_t page = 0; page < kFirstPages; ++page)
      pages_.Append();
    MakeHeader();
    FormatFreePagesMap(pages_, kFirstPages);  // pages 14 and 15 are allocated by the first rows
    RowPage::Format(pages_.Change(kMapsOfTables), kUsageMapOwner);
    for (const EngineTable& table : InitialTables())
      MakeTable(table);
    AddEngineRows(pages_, now);
    Bytes file;
    for (std::uint32_t number = 0; number < pages_.PageCount(); ++number) {
      const PageRef page = pages_.Read(number);
      file.insert(file.end(), page->begin(), page->end());
    }
    return file;
  }

 private:
  void MakeHeader();
  void MakeTable(const EngineTable& table);
  StoredColumn MakeColumn(const EngineColumn& column, std::uint16_t number, StoredTable& def,
                          std::uint16_t& fixedBytes);
  void MakeIndexes(const EngineTable& table, StoredTable& def);

  NoPages nothing_;
  Transaction pages_;
  PageSpace space_;
  UsageMapAllocator maps_;
  std::uint32_t nextRoot_ = kFirstRoot;
};

void Builder::MakeHeader() {
  // The creation date belongs to the SIDs: see Sids.
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

StoredColumn Builder::MakeColumn(const EngineColumn& column, std::uint16_t number, StoredTable& def,
                                 std::uint16_t& fixedBytes) {
  ColumnDefinition definition;
  definition.name = column.name;
  definition.type = column.type;
  definition.size = column.type == ColumnType::Text ? kMaxBytes / 2 : kMaxBytes;
  StoredColumn made = LayOutColumn(definition, number, def.variableColumns, fixedBytes);
  made.display = 0;
  made.extraFlags = 0;
  made.flags |= static_cast<std::uint8_t>(kEngineFlag | (column.obfuscated ? kObfuscatedFlag : 0));
  return made;
}

void Builder::MakeIndexes(const EngineTable& table, StoredTable& def) {
  for (const EngineIndex& index : table.indexes) {
    StoredIndex real;
    for (const std::uint16_t column : index.columns)
      real.fields.push_back({column, true});
    real.flags = index.flags;
    real.root = nextRoot_++;
    real.map = maps_.Add();
    FormatIndexRoot(pages_, real.root, def.page);
    UsageMapEditor(pages_, real.map).Add(space_, real.root);
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

void Builder::MakeTable(const EngineTable& table) {
  StoredTable def;
  def.page = table.page;
  def.system = true;
  def.ownedMap = maps_.Add();
  def.freeMap = maps_.Add();
  std::uint16_t fixedBytes = 0;
  for (const EngineColumn& column : table.columns)
    def.columns.push_back(MakeColumn(column, static_cast<std::uint16_t>(def.columns.size()), def, fixedBytes));
  def.maxColumns = static_cast<std::uint16_t>(def.columns.size());
  // The maps of long-value columns are ordered by column name.
  for (const char16_t* name :
       {u"Database", u"Connect", u"RmtInfoLong", u"Lv", u"LvProp", u"LvModule", u"LvExtra", u"Expression"}) {
    for (StoredColumn& column : def.columns) {
      if (column.name != name || !column.IsLong()) continue;
      column.ownedMap = maps_.Add();
      column.freeMap = maps_.Add();
    }
  }
  MakeIndexes(table, def);
  WriteStoredTable(pages_, space_, table.page, BuildStoredTable(def, BlockOrder::ByName));
}

}  // namespace

void FormatFreePagesMap(Transaction& pages, std::uint32_t taken) {
  constexpr std::uint32_t kMapPage = 1;
  RowPage::Format(pages.Change(kMapPage), kMapPage);
  RowPage page(pages, kMapPage, kMapPage);
  Bytes global(MapLayout::kNewMapBytes, 0xFF);
  std::fill_n(global.begin(), MapLayout::kInlineHead, std::uint8_t{0});
  for (std::uint32_t number = 0; number < taken; ++number) {
    std::uint8_t& byte = global[MapLayout::kInlineHead + number / 8];
    byte = static_cast<std::uint8_t>(byte & ~(1U << number % 8));
  }
  page.Add(global);
  page.Add(Bytes(MapLayout::kNewMapBytes));
}

Bytes NewDatabase(double now) {
  return Builder().Build(now);
}

}  // namespace jet
