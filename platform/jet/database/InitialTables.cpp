// SPDX-License-Identifier: MIT
#include "platform/jet/database/InitialTables.h"

#include "platform/jet/table/Catalog.h"

namespace jet {

namespace {

using Type = ColumnType;

constexpr std::uint32_t kQueriesTable = 4;
constexpr std::uint32_t kRelationshipsTable = 5;

const EngineTable kTables[] = {
    {kObjectsTable,
     {{u"Id", Type::Long},
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
     {1, 0}},
    {kAccessTable,
     {{u"ObjectId", Type::Long}, {u"SID", Type::Binary, true}, {u"ACM", Type::Long}, {u"FInheritable", Type::Boolean}},
     {{u"ObjectId", {0}, 0x88}},
     {0}},
    {kQueriesTable,
     {{u"ObjectId", Type::Long},
      {u"Attribute", Type::Byte},
      {u"Order", Type::Binary},
      {u"Name1", Type::Text},
      {u"Name2", Type::Text},
      {u"Expression", Type::Memo},
      {u"Flag", Type::Integer},
      {u"LvExtra", Type::Long}},
     {{u"ObjectIdAttribute", {0, 1, 2}, 0x81, true}},
     {0}},
    {kRelationshipsTable,
     {{u"szRelationship", Type::Text},
      {u"grbit", Type::Long},
      {u"ccolumn", Type::Long},
      {u"icolumn", Type::Long},
      {u"szObject", Type::Text},
      {u"szColumn", Type::Text},
      {u"szReferencedObject", Type::Text},
      {u"szReferencedColumn", Type::Text}},
     {{u"szRelationship", {0}, 0x82}, {u"szObject", {4}, 0x82}, {u"szReferencedObject", {6}, 0x82}},
     {1, 2, 0}}};

}  // namespace

std::span<const EngineTable> InitialTables() {
  return kTables;
}

}  // namespace jet
