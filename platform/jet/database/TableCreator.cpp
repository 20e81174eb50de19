// SPDX-License-Identifier: MIT
#include "platform/jet/database/TableCreator.h"

#include "platform/jet/database/CatalogWriter.h"
#include "platform/jet/index/IndexNode.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTableBuilder.h"
#include "platform/jet/rows/StoredTableFormat.h"
#include "platform/jet/values/Error.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/StoredText.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <string>
#include <vector>

namespace jet {

namespace {

constexpr std::size_t kMaxIndexes = 32;
constexpr std::size_t kMaxIndexFields = 10;
constexpr std::size_t kMaxNameCharacters = 64;
constexpr std::uint16_t kMaxTextCharacters = 255;
constexpr std::uint8_t kAlwaysSet = 0x02;
constexpr std::uint8_t kIndexAlwaysSet = 0x80;
constexpr std::uint8_t kCompressed = 0x01;
constexpr std::uint8_t kNoCascade = 4;

[[noreturn]] void Refuse(const std::string& what) {
  throw Error(ErrorCode::OutOfRange, what);
}

void CheckName(std::u16string_view name) {
  const bool isLong = name.empty() || name.size() > kMaxNameCharacters;
  const bool isForbidden = std::any_of(name.begin(), name.end(), [](char16_t character) {
    return character < 0x20 || std::u16string_view(u".![]`").find(character) != std::u16string_view::npos;
  });
  if (isLong || isForbidden || name.front() == u' ') Refuse("'" + ToUtf8(name) + "' kan geen naam zijn.");
}

template <typename Item>
void CheckReferences(const std::vector<Item>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    CheckName(items[i].name);
    for (std::size_t j = 0; j < i; ++j) {
      if (SameName(items[i].name, items[j].name))
        Refuse("de naam '" + ToUtf8(items[i].name) + "' komt twee keer voor.");
    }
  }
}

void CheckTable(const TableDefinition& table) {
  CheckName(table.name);
  CheckReferences(table.columns);
  CheckReferences(table.indexes);
  if (table.columns.empty() || table.columns.size() > table_definition::kMaxColumns)
    Refuse("een tabel heeft 1 tot 255 velden.");
  if (table.indexes.size() > kMaxIndexes) Refuse("een tabel heeft maximaal 32 indexen.");
  for (const ColumnDefinition& column : table.columns) {
    if (column.type == ColumnType::SystemBinary)
      Refuse("het veld '" + ToUtf8(column.name) + "' is van een onbekende soort.");
    const bool sized = column.type == ColumnType::Text || column.type == ColumnType::Binary;
    const std::uint16_t most = column.type == ColumnType::Text ? kMaxTextCharacters : 2 * kMaxTextCharacters;
    if (sized && (column.size == 0 || column.size > most))
      Refuse("het veld '" + ToUtf8(column.name) + "' heeft een verkeerde grootte.");
  }
  for (const IndexDefinition& index : table.indexes) {
    if (index.fields.empty() || index.fields.size() > kMaxIndexFields) Refuse("een index heeft 1 tot 10 velden.");
    for (const IndexDefinition::Field& field : index.fields) {
      if (field.column >= table.columns.size()) Refuse("een index noemt een veld dat er niet is.");
      if (table.columns[field.column].type == ColumnType::Ole) Refuse("een OLE-veld kan niet in een index staan.");
    }
  }
}

std::uint8_t IndexFlags(const IndexDefinition& index) {
  std::uint8_t flags = kIndexAlwaysSet;
  if (index.unique || index.primary) flags |= StoredIndex::kUnique;
  if (index.required || index.primary) flags |= StoredIndex::kRequired;
  if (index.ignoreNulls && !index.primary) flags |= StoredIndex::kIgnoreNulls;
  return flags;
}

void LayIndexes(const TableDefinition& table, StoredTable& def) {
  for (std::size_t i = 0; i < table.indexes.size(); ++i) {
    const IndexDefinition& index = table.indexes[i];
    StoredIndex real;
    for (const IndexDefinition::Field& field : index.fields)
      real.fields.push_back({static_cast<std::uint16_t>(field.column), !field.descending});
    real.flags = IndexFlags(index);
    def.realIndexes.push_back(real);
    LogicalIndexDef logical;
    logical.name = index.name;
    logical.number = static_cast<std::int32_t>(i);
    logical.realIndex = static_cast<std::uint32_t>(i);
    logical.cascadeUpdates = kNoCascade;
    logical.cascadeDeletes = kNoCascade;
    if (index.primary) logical.role = LogicalIndexDef::Role::PrimaryKey;
    def.logicalIndexes.push_back(logical);
  }
  std::sort(def.logicalIndexes.begin(), def.logicalIndexes.end(),
            [](const LogicalIndexDef& a, const LogicalIndexDef& b) { return NameLess(a.name, b.name); });
}

bool IsVariable(ColumnType type) {
  return type == ColumnType::Text || type == ColumnType::Memo || type == ColumnType::Ole || type == ColumnType::Binary;
}

Property Flag(const char16_t* name, bool value) {
  return {name, static_cast<std::uint8_t>(ColumnType::Boolean), true, Bytes{static_cast<std::uint8_t>(value ? 1 : 0)}};
}

Property Text(const char16_t* name, const std::u16string& value) {
  return {name, static_cast<std::uint8_t>(ColumnType::Memo), true, EncodeText(value, false)};
}

}  // namespace

StoredColumn LayOutColumn(const ColumnDefinition& column, std::uint16_t number, std::uint16_t& variables,
                          std::uint16_t& fixedBytes) {
  StoredColumn def;
  def.name = column.name;
  def.rawType = static_cast<std::uint8_t>(column.type);
  def.number = number;
  def.display = number;
  def.variableIndex = variables;
  def.precision = column.precision;
  def.scale = column.scale;
  def.flags = kAlwaysSet;
  if (IsVariable(column.type)) {
    ++variables;
    if (column.type == ColumnType::Text) def.length = static_cast<std::uint16_t>(2 * column.size);
    if (column.type == ColumnType::Binary) def.length = column.size;
    if (def.IsText()) def.extraFlags = kCompressed;
    return def;
  }
  def.flags |= column_flag::kFixed;
  if (column.autonumber) {
    def.flags |= column.type == ColumnType::Guid ? column_flag::kGuidAutonumber : column_flag::kAutonumber;
  }
  def.length = 1;
  if (column.type == ColumnType::Boolean) return def;
  def.length = static_cast<std::uint16_t>(TypeSize(column.type));
  def.fixedOffset = fixedBytes;
  fixedBytes = static_cast<std::uint16_t>(fixedBytes + def.length);
  return def;
}

void FormatIndexRoot(Transaction& pages, std::uint32_t root, std::uint32_t table) {
  IndexNode empty;
  empty.table = table;
  empty.Save(pages, root);
}

std::vector<PropertySet> PropertiesOf(const TableDefinition& table) {
  std::vector<PropertySet> sets;
  for (const ColumnDefinition& column : table.columns) {
    PropertySet set;
    set.column = column.name;
    if (column.required) set.properties.push_back(Flag(u"Required", true));
    const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
    if (isText && !column.allowZeroLength) set.properties.push_back(Flag(u"AllowZeroLength", false));
    if (!column.defaultValue.empty()) set.properties.push_back(Text(u"DefaultValue", column.defaultValue));
    if (!column.validationRule.empty()) set.properties.push_back(Text(u"ValidationRule", column.validationRule));
    if (!set.properties.empty()) sets.push_back(set);
  }
  return sets;
}

StoredTable TableCreator::AssignLayout(const TableDefinition& table) {
  StoredTable def;
  def.page = space_.Allocate();
  std::uint16_t fixedBytes = 0;
  UsageMapAllocator maps(pages_, space_);
  def.ownedMap = maps.Add();
  def.freeMap = maps.Add();
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    def.columns.push_back(
        LayOutColumn(table.columns[i], static_cast<std::uint16_t>(i), def.variableColumns, fixedBytes));
    StoredColumn& column = def.columns.back();
    if (!column.IsLong()) continue;
    column.ownedMap = maps.Add();
    column.freeMap = maps.Add();
  }
  def.maxColumns = static_cast<std::uint16_t>(def.columns.size());
  LayIndexes(table, def);
  for (StoredIndex& index : def.realIndexes) {
    index.map = maps.Add();
    index.root = space_.Allocate();
    FormatIndexRoot(pages_, index.root, def.page);
    UsageMapEditor(pages_, index.map).Add(space_, index.root);
  }
  return def;
}

void TableCreator::Make(const TableDefinition& table) {
  Make(table, PropertiesOf(table));
}

void TableCreator::Make(const TableDefinition& table, const std::vector<PropertySet>& properties) {
  try {
    CheckTable(table);
    const StoredTable def = AssignLayout(table);
    WriteStoredTable(pages_, space_, def.page, BuildStoredTable(def, BlockOrder::ByNumber));
    AddTableToCatalogue(pages_, table.name, def.page, properties);
  } catch (const Error& error) {
    throw Error(error.Code(), "Tabel '" + ToUtf8(table.name) + "': " + error.what());
  }
}

}  // namespace jet
