// SPDX-License-Identifier: MIT
#include "platform/dao/DefaultValue.h"

#include "platform/jet/database/Database.h"
#include "tests/platform/dao/Scratch.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::ConstantOf;
using dao::ExpressionOf;

namespace {

// A table as another program may have created it: its second field has this default expression.
void MakeTableWithDefault(const QString& path, const std::u16string& expression) {
  jet::OpenOptions options;
  options.writable = true;
  const auto database = jet::Database::Open(path.toStdString(), options);
  jet::WriteTurn writing(*database);
  jet::TableDefinition table;
  table.name = u"t";
  table.columns.resize(2);
  table.columns[0].name = u"ID";
  table.columns[1].name = u"Soort";
  table.columns[1].defaultValue = expression;
  database->CreateTable(table);
  writing.Commit();
}

TEST(DefaultValue, ConstantsAreRead) {
  EXPECT_EQ(ConstantOf(u""_s), QVariant());
  EXPECT_EQ(ConstantOf(u" Null "_s), QVariant());
  EXPECT_EQ(ConstantOf(u"0"_s), QVariant(0));
  EXPECT_EQ(ConstantOf(u"=-12"_s), QVariant(-12));
  EXPECT_EQ(ConstantOf(u"1.5"_s), QVariant(1.5));
  EXPECT_EQ(ConstantOf(u"Yes"_s), QVariant(true));
  EXPECT_EQ(ConstantOf(u"=False"_s), QVariant(false));
  EXPECT_EQ(ConstantOf(u"\"een \"\"twee\"\"\""_s), QVariant(u"een \"twee\""_s));
  EXPECT_EQ(ConstantOf(u"#12/31/2005#"_s), QVariant(QDate(2005, 12, 31).startOfDay()));
}

TEST(DefaultValue, OtherExpressionsAreNotConstant) {
  for (const QString& expression :
       {u"Now()"_s, u"=Date()"_s, u"1+1"_s, u"\"a\" & \"b\""_s, u"[Naam]"_s, u"#vandaag#"_s})
    EXPECT_EQ(ConstantOf(expression), std::nullopt) << qPrintable(expression);
}

TEST(DefaultValue, ExpressionsRoundTrip) {
  for (const QVariant& value : {QVariant(), QVariant(true), QVariant(-7), QVariant(0.1), QVariant(u"a\"b"_s),
                                QVariant(QDateTime(QDate(2024, 2, 29), QTime(23, 59, 58)))})
    EXPECT_EQ(ConstantOf(ExpressionOf(value)), value) << qPrintable(ExpressionOf(value));
}

TEST(DefaultValue, ConstantIsStoredWhenAnInsertOmitsTheField) {
  const Scratch s;
  MakeTableWithDefault(s.Path(), u"=7");
  s.Open().Execute(u"INSERT INTO t (ID) VALUES (1)"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM t"_s), QStringList{u"1|7"_s});
}

TEST(DefaultValue, AComputedOneIsAnErrorUnlessTheInsertGivesTheField) {
  const Scratch s;
  MakeTableWithDefault(s.Path(), u"Rnd()");
  const QString error = ExecuteError(s.Open(), u"INSERT INTO t (ID) VALUES (1)"_s);
  EXPECT_TRUE(error.contains(u"'Soort'"_s) && error.contains(u"Rnd()"_s)) << qPrintable(error);
  EXPECT_EQ(s.Open().Execute(u"INSERT INTO t (ID, Soort) VALUES (1, 2)"_s), 1);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM t"_s), QStringList{u"1|2"_s});
}

}  // namespace
