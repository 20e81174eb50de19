// SPDX-License-Identifier: MIT
// The types of values in a recordset, and reading rows one by one.
#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

class ResultTypes : public testing::Test {
 protected:
  ResultTypes() {
    dao::FieldDef numeric = Field(u"Getal"_s, FieldType::Numeric);
    numeric.scale = 2;
    database_.CreateTable({u"t"_s,
                           {Field(u"ID"_s, FieldType::Long), Field(u"Vlag"_s, FieldType::Boolean),
                            Field(u"Klein"_s, FieldType::Byte), Field(u"Geld"_s, FieldType::Currency),
                            Field(u"Enkel"_s, FieldType::Single), Field(u"Dubbel"_s, FieldType::Double),
                            Field(u"Dag"_s, FieldType::Date), Field(u"Tekst"_s, FieldType::Text, 20), numeric},
                           {Key({u"ID"_s})}});
    database_.Execute(u"INSERT INTO t VALUES (1, True, 2, 3, 4, 5, 45658, \"zes\", 7)"_s);
    database_.Execute(u"INSERT INTO t (ID) VALUES (2)"_s);
  }

  QVariant ValueOfFirst(const QString& expression) {
    return database_.OpenRecordset(u"SELECT %1 FROM t WHERE ID = 1"_s.arg(expression)).Field(0);
  }
  int TypeOfFirst(const QString& expression) { return ValueOfFirst(expression).typeId(); }

  Scratch scratch_;
  dao::Database database_ = scratch_.Open();
};

TEST_F(ResultTypes, AFieldHasTheTypeOfItsDefinition) {
  EXPECT_EQ(TypeOfFirst(u"ID"_s), QMetaType::Int);
  EXPECT_EQ(TypeOfFirst(u"Vlag"_s), QMetaType::Bool);
  EXPECT_EQ(TypeOfFirst(u"Klein"_s), QMetaType::Int);
  EXPECT_EQ(TypeOfFirst(u"Geld"_s), QMetaType::Double);
  EXPECT_EQ(TypeOfFirst(u"Enkel"_s), QMetaType::Double);
  EXPECT_EQ(TypeOfFirst(u"Dubbel"_s), QMetaType::Double);
  EXPECT_EQ(TypeOfFirst(u"Dag"_s), QMetaType::QDateTime);
  EXPECT_EQ(TypeOfFirst(u"Tekst"_s), QMetaType::QString);
  EXPECT_EQ(TypeOfFirst(u"Getal"_s), QMetaType::Double);
}

TEST_F(ResultTypes, NullIsAnInvalidVariantExceptInABoolean) {
  dao::Recordset rows = database_.OpenRecordset(u"SELECT * FROM t WHERE ID = 2"_s);
  for (int column = 1; column < rows.FieldNames().size(); ++column)
    EXPECT_EQ(rows.Field(column).isValid(), column == 1) << column;
  EXPECT_EQ(rows.Field(u"Vlag"_s), QVariant(false));
}

TEST_F(ResultTypes, AnExpressionHasTheTypeOfItsValue) {
  EXPECT_EQ(ValueOfFirst(u"ID + 1"_s), QVariant(2));
  EXPECT_EQ(ValueOfFirst(u"ID / 4"_s), QVariant(0.25));
  EXPECT_EQ(ValueOfFirst(u"\"x\""_s), QVariant(u"x"_s));
  EXPECT_EQ(ValueOfFirst(u"ID * 5000000000"_s), QVariant(qlonglong{5000000000}));
  EXPECT_EQ(ValueOfFirst(u"Vlag * 1"_s), QVariant(-1));
  EXPECT_EQ(ValueOfFirst(u"Dag * 1"_s), QVariant(45658.0));
}

TEST_F(ResultTypes, AnAliasKeepsTheTypeOfItsField) {
  EXPECT_EQ(TypeOfFirst(u"Vlag AS v"_s), QMetaType::Bool);
  EXPECT_EQ(TypeOfFirst(u"t.Dag AS d"_s), QMetaType::QDateTime);
}

TEST_F(ResultTypes, FieldsAreReadByNumberToo) {
  const dao::Recordset rows = database_.OpenRecordset(u"SELECT Tekst, ID FROM t WHERE ID = 1"_s);
  EXPECT_EQ(rows.Field(0), QVariant(u"zes"_s));
  EXPECT_EQ(rows.Field(1), QVariant(1));
  for (const int column : {-1, 2})
    EXPECT_TRUE(ErrorOf([&] { rows.Field(column); }).contains(u"nummer %1"_s.arg(column)));
}

TEST_F(ResultTypes, VisitReadsTheSameRows) {
  QStringList visited;
  database_.Visit(u"SELECT ID, Tekst, Dag FROM t ORDER BY ID"_s, [&](const dao::Row& row) {
    visited +=
        u"%1 %2 %3"_s.arg(row.Field(0).toInt()).arg(row.Text(1), row.Field(2).toDateTime().toString(u"dd-MM-yyyy"_s));
    EXPECT_EQ(row.Text(1).isNull(), row.Field(0).toInt() == 2);
    return true;
  });
  EXPECT_EQ(visited, (QStringList{u"1 zes 01-01-2025"_s, u"2  "_s}));
}

TEST_F(ResultTypes, VisitStopsWhenTheVisitReturnsFalse) {
  int rows = 0;
  database_.Visit(u"SELECT ID FROM t"_s, [&](const dao::Row&) { return ++rows < 1; });
  EXPECT_EQ(rows, 1);
  EXPECT_EQ(database_.Execute(u"DELETE FROM t"_s), 2);
}

TEST_F(ResultTypes, AnExceptionOfAVisitEndsIt) {
  EXPECT_THROW(
      database_.Visit(u"SELECT ID FROM t"_s, [](const dao::Row&) -> bool { throw runtime::Error(u"genoeg"_s); }),
      runtime::Error);
  EXPECT_EQ(database_.Execute(u"DELETE FROM t WHERE ID = 1"_s), 1);
}

TEST_F(ResultTypes, VisitTakesASelectOnly) {
  const QString error = ErrorOf([&] { database_.Visit(u"DELETE FROM t"_s, [](const dao::Row&) { return true; }); });
  EXPECT_TRUE(error.contains(u"alleen met SELECT"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(database_, u"SELECT ID FROM t"_s).size(), 2);
}

}  // namespace
