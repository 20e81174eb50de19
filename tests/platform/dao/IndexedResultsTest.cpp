// SPDX-License-Identifier: MIT
// An index never changes a result: each random query gives the same rows on a table with indexes and on one without.
#include "platform/dao/Storage.h"
#include "tests/platform/dao/Scratch.h"
#include "tests/support/Cluster.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

class IndexedResults : public testing::Test {
 protected:
  IndexedResults() {
    const QList<dao::FieldDef> fields = {Field(u"ID"_s, FieldType::Long),       Field(u"Vlag"_s, FieldType::Boolean),
                                         Field(u"Klein"_s, FieldType::Byte),    Field(u"Kort"_s, FieldType::Integer),
                                         Field(u"Geld"_s, FieldType::Currency), Field(u"Enkel"_s, FieldType::Single),
                                         Field(u"Dubbel"_s, FieldType::Double), Field(u"Dag"_s, FieldType::Date),
                                         Field(u"Tekst"_s, FieldType::Text, 20)};
    dao::TableDef indexed{u"tblMet"_s, fields, {Key({u"ID"_s})}};
    for (qsizetype i = 1; i < fields.size(); ++i)
      indexed.indexes += Index(u"Op"_s + fields[i].name, {fields[i].name});
    indexed.indexes += Index(u"Samen"_s, {u"Kort"_s, u"Klein"_s, u"Tekst"_s});
    dao::IndexDef falling = Index(u"Dalend"_s, {u"Klein"_s, u"ID"_s});
    falling.fields[0].direction = dao::Direction::Descending;
    dao::IndexDef sparse = Index(u"ZonderNull"_s, {u"Dubbel"_s, u"Dag"_s});
    sparse.ignoreNull = true;
    indexed.indexes += falling;
    indexed.indexes += sparse;
    database_.CreateTable(indexed);
    database_.CreateTable({u"tblZonder"_s, fields, {}});
    for (int id = 1; id <= kRows; ++id) {
      QStringList values{QString::number(id)};
      for (qsizetype i = 1; i < fields.size(); ++i)
        values += RandomValue(fields[i].name);
      database_.Execute(u"INSERT INTO tblMet VALUES (%1)"_s.arg(values.join(u", "_s)));
    }
    database_.Execute(u"INSERT INTO tblZonder SELECT * FROM tblMet"_s);
  }

  unsigned Pick(unsigned count) { return static_cast<unsigned>(random_()) % count; }

  // A literal of few different values, so that conditions match rows.
  QString RandomValue(const QString& field) {
    if (Pick(6) == 0) return field == u"Vlag"_s ? u"0"_s : u"NULL"_s;
    if (field == u"Vlag"_s) return Pick(2) == 0 ? u"True"_s : u"False"_s;
    if (field == u"Tekst"_s) {
      static const QStringList kTexts = {u"\"\""_s,  u"\"a\""_s,         u"\"A\""_s, u"\"ab\""_s,
                                         u"\"b\""_s, u"\"caf\u00E9\""_s, u"\"1\""_s, u"\"10\""_s};
      return kTexts[Pick(static_cast<unsigned>(kTexts.size()))];
    }
    if (field == u"Dag"_s) return QString::number(45658 + Pick(4) * 0.25);
    if (field == u"Geld"_s || field == u"Enkel"_s || field == u"Dubbel"_s) return QString::number(Pick(8) * 0.25);
    return QString::number(Pick(6));
  }

  // A value of any kind, also of those that do not match the field.
  QString RandomKey(const QString& field) {
    static const QStringList kOthers = {u"NULL"_s, u"1.5"_s, u"\"1\""_s,           u"-1"_s,
                                        u"300"_s,  u"0.1"_s, u"100000000000000"_s, u"True"_s};
    return Pick(3) == 0 ? kOthers[Pick(static_cast<unsigned>(kOthers.size()))] : RandomValue(field);
  }

  QString RandomField() {
    static const QStringList kFields = {u"ID"_s,    u"Vlag"_s,   u"Klein"_s, u"Kort"_s, u"Geld"_s,
                                        u"Enkel"_s, u"Dubbel"_s, u"Dag"_s,   u"Tekst"_s};
    return kFields[Pick(static_cast<unsigned>(kFields.size()))];
  }

  QString RandomCondition() {
    const QString field = RandomField();
    static const QStringList kSigns = {u"="_s, u"="_s, u"="_s, u"<"_s, u">="_s, u"<>"_s};
    switch (Pick(6)) {
      case 0:
        return field + u" IS NULL"_s;
      case 1:
        return u"%1 IN (%2, %3)"_s.arg(field, RandomKey(field), RandomKey(field));
      case 2:
        return u"%1 BETWEEN %2 AND %3"_s.arg(field, RandomKey(field), RandomKey(field));
      default:
        return u"%1 %2 %3"_s.arg(field, kSigns[Pick(6)], RandomKey(field));
    }
  }

  QString RandomWhere() {
    QStringList parts;
    for (unsigned count = 1 + Pick(3); count > 0; --count)
      parts += RandomCondition();
    return u" WHERE "_s + parts.join(Pick(3) == 0 ? u" OR "_s : u" AND "_s);
  }

  // `query` with %1 for the table.
  QStringList ResultOn(const QString& table, const QString& query, bool isOrdered) {
    QStringList rows = Rows(database_, query.arg(table));
    if (!isOrdered) rows.sort();
    return rows;
  }
  void ExpectSame(const QString& query, bool isOrdered = false) {
    const QStringList indexed = ResultOn(u"tblMet"_s, query, isOrdered);
    ASSERT_EQ(indexed, ResultOn(u"tblZonder"_s, query, isOrdered)) << qPrintable(query);
    rows_ += indexed.size();
  }

  static constexpr int kRows = 120;
  std::mt19937 random_{17};
  Scratch scratch_;
  dao::Database database_ = scratch_.Open();
  qsizetype rows_ = 0;  // found by all queries
};

TEST_F(IndexedResults, ConditionsFindTheSameRows) {
  for (int i = 0; i < 600; ++i)
    ExpectSame(u"SELECT ID, Tekst FROM %1"_s + RandomWhere());
  EXPECT_GT(rows_, 5000);
}

TEST_F(IndexedResults, OrdersAreTheSame) {
  for (int i = 0; i < 150; ++i) {
    const QString field = RandomField();
    const QString direction = Pick(2) == 0 ? u" DESC"_s : QString();
    ExpectSame(u"SELECT %2 FROM %1"_s.arg(u"%1"_s, field) + RandomWhere() + u" ORDER BY "_s + field + direction, true);
  }
  for (const QString& order :
       {u"Klein DESC, ID"_s, u"Klein, ID DESC"_s, u"Kort, Klein, ID"_s, u"Dubbel, Dag, ID"_s, u"ID DESC"_s})
    ExpectSame(u"SELECT ID FROM %1 ORDER BY "_s + order, true);
}

TEST_F(IndexedResults, LargestAndSmallestAreTheSame) {
  for (const QString& field :
       {u"ID"_s, u"Vlag"_s, u"Klein"_s, u"Kort"_s, u"Geld"_s, u"Enkel"_s, u"Dubbel"_s, u"Dag"_s, u"Tekst"_s}) {
    for (const QString& function : {u"MAX"_s, u"MIN"_s, u"COUNT"_s}) {
      ExpectSame(u"SELECT %2(%3) AS x FROM %1"_s.arg(u"%1"_s, function, field));
      ExpectSame(u"SELECT %2(%3) AS x FROM %1"_s.arg(u"%1"_s, function, field) + RandomWhere());
    }
  }
}

TEST_F(IndexedResults, JoinsFindTheSamePairs) {
  for (const QString& field : {u"Klein"_s, u"Kort"_s, u"Geld"_s, u"Dag"_s, u"Tekst"_s}) {
    const QString other = RandomField();
    ExpectSame(u"SELECT a.ID, b.ID FROM %1 AS a INNER JOIN %1 AS b ON a.%2 = b.%2 WHERE a.%3 = %4"_s.arg(
        u"%1"_s, field, other, RandomValue(other)));
  }
}

TEST_F(IndexedResults, ChangesMatchTheSameRows) {
  for (int i = 0; i < 40; ++i) {
    const QString where = RandomWhere();
    const QString field = i % 2 == 0 ? u"Klein"_s : u"Tekst"_s;
    const QString change = u"UPDATE %1 SET %2 = %3"_s.arg(u"%1"_s, field, RandomValue(field)) + where;
    ASSERT_EQ(database_.Execute(change.arg(u"tblMet"_s)), database_.Execute(change.arg(u"tblZonder"_s)))
        << qPrintable(change);
    ExpectSame(u"SELECT * FROM %1"_s);
  }
  for (int i = 0; i < 20; ++i) {
    const QString deletion = u"DELETE FROM %1"_s + RandomWhere() + u" AND ID < %1"_s.arg(QString::number(i * 5));
    ASSERT_EQ(database_.Execute(QString(deletion).replace(u"%1"_s, u"tblMet"_s)),
              database_.Execute(QString(deletion).replace(u"%1"_s, u"tblZonder"_s)))
        << qPrintable(deletion);
    ExpectSame(u"SELECT * FROM %1"_s);
  }
}

}  // namespace
