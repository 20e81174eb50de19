// SPDX-License-Identifier: MIT
#include "platform/dao/RowStatement.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool IsAboutOneRow(const QString& sql) {
  return dao::RowStatementOf(dao::Tokenise(sql)).has_value();
}

TEST(RowStatement, TheFormsOfTheScreens) {
  for (const QString& sql :
       {u"INSERT INTO t (a, b) VALUES (1, \"x\")"_s, u"insert into [t] values (NULL, -3, True, 'it''s');"_s,
        u"UPDATE t SET a = 1, t.b = \"x\" WHERE ID = 41"_s, u"UPDATE t SET a = NULL WHERE t.ID = -2"_s,
        u"DELETE FROM t WHERE ID = 5"_s, u"DELETE * FROM t WHERE t.ID = 5"_s, u"SELECT * FROM t WHERE ID = 5"_s,
        u"SELECT t.* From t WHERE t.ID = 5"_s, u"SELECT t.a, b AS Code FROM t WHERE t.ID = 5"_s,
        u"Select MAX(ID) AS LaatsteID FROM t"_s, u"select max([ID]) as [m n] from [t];"_s})
    EXPECT_TRUE(IsAboutOneRow(sql)) << qPrintable(sql);
}

TEST(RowStatement, EverythingElseIsForTheEngine) {
  for (const QString& sql : {u""_s,
                             u"INSERT INTO t (a) VALUES (1.5)"_s,
                             u"INSERT INTO t (a) VALUES (1e3)"_s,
                             u"INSERT INTO t (a) VALUES (1 + 2)"_s,
                             u"INSERT INTO t (a) VALUES (1234567890123456)"_s,
                             u"INSERT INTO t (a, A) VALUES (1, 2)"_s,
                             u"INSERT INTO t (a) SELECT b FROM u"_s,
                             u"INSERT INTO t IN \"x.mdb\" VALUES (1)"_s,
                             u"INSERT INTO t (a) VALUES (1) WHERE ID = 1"_s,
                             u"INSERT INTO select (a) VALUES (1)"_s,
                             u"INSERT INTO t (caf\u00E9) VALUES (1)"_s,
                             u"INSERT INTO t (t.a) VALUES (1)"_s,
                             u"INSERT INTO sqlite_x VALUES (1)"_s,
                             u"UPDATE t SET a = b WHERE ID = 1"_s,
                             u"UPDATE t SET a = 1"_s,
                             u"UPDATE t SET u.a = 1 WHERE ID = 1"_s,
                             u"UPDATE t SET a = 1 WHERE ID > 1"_s,
                             u"UPDATE t SET a = 1 WHERE ID = 1 AND b = 2"_s,
                             u"UPDATE t SET a = 1 WHERE ID = \"1\""_s,
                             u"UPDATE t SET a = 1 WHERE ID = NULL"_s,
                             u"UPDATE t SET a = 1, a = 2 WHERE ID = 1"_s,
                             u"DELETE FROM t"_s,
                             u"DELETE FROM t WHERE u.ID = 1"_s,
                             u"SELECT * FROM t"_s,
                             u"SELECT a FROM t, u WHERE ID = 1"_s,
                             u"SELECT u.a FROM t WHERE ID = 1"_s,
                             u"SELECT a b FROM t WHERE ID = 1"_s,
                             u"SELECT DISTINCT a FROM t WHERE ID = 1"_s,
                             u"SELECT MAX(a) FROM t WHERE ID = 1"_s,
                             u"SELECT MAX(a) AS m FROM t WHERE ID = 1"_s,
                             u"SELECT MAX(a) FROM t"_s,
                             u"SELECT MAX(a + 1) AS m FROM t"_s,
                             u"SELECT MAX(a) AS m, b FROM t"_s,
                             u"SELECT MAX(DISTINCT a) AS m FROM t"_s,
                             u"SELECT MIN(a) AS m FROM t"_s,
                             u"SELECT MAX FROM t WHERE ID = 1"_s,
                             u"SELECT t.*, a FROM t WHERE ID = 1"_s,
                             u"SELECT a FROM t WHERE ID = 1 ORDER BY a"_s})
    EXPECT_FALSE(IsAboutOneRow(sql)) << qPrintable(sql);
}

TEST(RowStatement, ValuesAreThoseOfTheLiterals) {
  const QString sql = u"INSERT INTO t VALUES ('it''s', \"\"\"\", 007, - 5, TRUE, FALSE, NULL, '')"_s;
  const auto row = dao::RowStatementOf(dao::Tokenise(sql));
  ASSERT_TRUE(row);
  const std::vector<dao::ValueView> expected = {std::u16string_view(u"it's"),
                                                std::u16string_view(u"\""),
                                                std::int64_t{7},
                                                std::int64_t{-5},
                                                std::int64_t{-1},
                                                std::int64_t{0},
                                                dao::ValueView(),
                                                std::u16string_view()};
  ASSERT_EQ(row->values.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_TRUE(dao::Owned(row->values[i]) == dao::Owned(expected[i])) << i;
}

}  // namespace
