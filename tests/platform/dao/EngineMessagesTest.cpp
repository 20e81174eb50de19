// SPDX-License-Identifier: MIT
// Messages of SQLite, as its current version gives them, reach the user in Dutch.
#include "platform/dao/EngineMessages.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

TEST(EngineMessages, EachErrorOfAStatementIsInDutch) {
  const SpotScratch s;
  const std::vector<std::pair<QString, QString>> cases = {
      {u"SELECT ID FROM weg"_s, u"de tabel 'weg' bestaat niet"_s},
      {u"SELECT weg FROM tblSpots"_s, u"het veld 'weg' bestaat niet"_s},
      {u"SELECT *"_s, u"er is geen tabel genoemd"_s},
      {u"SELECT ID FROM tblSpots WHERE ID = = 1"_s, u"syntaxisfout bij '='"_s},
      {u"SELECT ID FROM tblSpots WHERE"_s, u"de instructie is niet volledig"_s},
      {u"SELECT ID FROM tblSpots WHERE ID = \"x\" \"y\""_s, u"syntaxisfout bij 'y'"_s},
      {u"SELECT ID FROM tblSpots a INNER JOIN tblSpots b ON a.ID = b.ID"_s, u"het veld 'ID' komt in meer dan een"_s},
      {u"SELECT UCase(Naam, ID) AS x FROM tblSpots"_s, u"de functie UCASE krijgt een verkeerd aantal waarden"_s},
      {u"SELECT ID FROM tblSpots WHERE MAX(ID) = 1"_s, u"de functie MAX is hier niet toegestaan"_s},
      {u"SELECT ID FROM tblSpots WHERE ID IN (SELECT ID, Naam FROM tblSpots)"_s, u"een subquery geeft 2 velden"_s},
      {u"SELECT ID FROM tblSpots WHERE ID = (SELECT ID, Naam FROM tblSpots)"_s, u"geeft meer dan een veld"_s},
      {u"SELECT ID FROM tblSpots UNION SELECT ID, Naam FROM tblSpots"_s, u"niet even veel velden"_s},
      {u"SELECT SUM(9223372036854775807 * 1) AS x FROM tblSpots WHERE ID = 0"_s, QString()}};
  for (const auto& [sql, expected] : cases) {
    const QString error = ErrorOf([&s, &statement = sql] { s.Open().OpenRecordset(statement); });
    EXPECT_TRUE(error.contains(expected)) << qPrintable(sql) << ": " << qPrintable(error);
    EXPECT_TRUE(expected.isEmpty() || error.endsWith(u'\n' + sql)) << qPrintable(error);
  }
}

TEST(EngineMessages, TheErrorHasThePathTextAndTheStatement) {
  dao::Statement statement;
  statement.source = u"SELECT x"_s;
  EXPECT_EQ(dao::StatementError(statement, u"D:\\a.mdb"_s, u"out of memory"_s),
            u"De SQL-instructie kan niet worden uitgevoerd op 'D:\\a.mdb': er is onvoldoende geheugen.\nSELECT x"_s);
}

// Newer versions of SQLite say more.
TEST(EngineMessages, MessagesOfNewerVersionsAreInDutch) {
  EXPECT_TRUE(dao::StatementError({}, u"D:\\a.mdb"_s, u"no such function: LEFT"_s)
                  .contains(u"de functie LEFT bestaat niet."_s));
  const QString advice = u" - should this be a string literal in single-quotes?"_s;
  for (const QString& message : {u"no such column: a b"_s, QString(u"no such column: \"a b\""_s + advice)}) {
    const QString error = dao::StatementError({}, u"D:\\a.mdb"_s, message);
    EXPECT_TRUE(error.contains(u"het veld 'a b' bestaat niet."_s)) << qPrintable(error);
  }
}

TEST(EngineMessages, ParametersAndQuotedNamesAreShownAsWritten) {
  dao::Statement statement;
  statement.texts = {u"een"_s, u"t\"wee"_s};
  const auto reason = [&](const QString& message) { return dao::StatementError(statement, u"x"_s, message); };
  EXPECT_TRUE(reason(u"near \"?2\": syntax error"_s).contains(u"bij 't\"wee'"_s));
  EXPECT_TRUE(reason(u"near \"?3\": syntax error"_s).contains(u"bij '?3'"_s));
  EXPECT_TRUE(reason(u"near \"\"a\"\"b\"\": syntax error"_s).contains(u"bij 'a\"b'"_s));
}

TEST(EngineMessages, AnUnknownMessageIsShownAsItIs) {
  EXPECT_TRUE(dao::StatementError({}, u"x"_s, u"database disk image is malformed"_s).contains(u"is malformed"_s));
}

TEST(EngineMessages, WrongNumbersOfValuesAreCounted) {
  const SpotScratch s;
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblSpots (ID, Naam) VALUES (9)"_s).contains(u"1 waarden voor 2"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblSpots VALUES (9)"_s).contains(u"1 waarden voor 5 velden"_s));
}

}  // namespace
