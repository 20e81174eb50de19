// SPDX-License-Identifier: MIT
// Errors of a server in Dutch; needs no server.
#include "platform/dao/postgres/ServerError.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

const dao::ServerAddress& Address() {
  static const dao::ServerAddress kAddress(u"postgresql://localhost/x\\Zender.mdb"_s);
  return kAddress;
}

QString Connecting(const QString& reason, bool needsPassword = false) {
  return dao::ConnectionError(Address(), u"db1"_s, reason, needsPassword);
}

QString Refused(const QString& code, const QString& message = u"server\n  text"_s) {
  dao::Refusal refusal;
  refusal.code = code;
  refusal.message = message;
  refusal.table = u"tblSpots"_s;
  refusal.column = u"Naam"_s;
  return dao::RefusalError(Address(), refusal);
}

TEST(ServerMessages, EachCodeOfAFailedConnectionHasItsAdvice) {
  const std::vector<std::pair<QString, QString>> cases = {{u"28P01"_s, u"weigert het wachtwoord"_s},
                                                          {u"28000"_s, u"laat deze gebruiker"_s},
                                                          {u"3D000"_s, u"bestaat niet op de server"_s},
                                                          {u"53300"_s, u"geen plaats voor nog een verbinding"_s},
                                                          {u"57P03"_s, u"aan het starten of stoppen"_s}};
  for (const auto& [code, text] : cases) {
    EXPECT_TRUE(Connecting(u"FATAL:  %1: something"_s.arg(code)).contains(text)) << qPrintable(code);
    EXPECT_TRUE(Connecting(u"db1: schwerwiegend:  %1: etwas\nmore"_s.arg(code)).contains(text)) << qPrintable(code);
  }
}

TEST(ServerMessages, FailuresWithoutACodeAreDistinguishedToo) {
  EXPECT_TRUE(Connecting(QString(), true).contains(u"~/.pgpass"_s));
  EXPECT_TRUE(Connecting(u"SSL error: certificate verify failed"_s).contains(u"niet veilig"_s));
  EXPECT_TRUE(Connecting(u"server certificate for \"a\" does not match"_s).contains(u"niet veilig"_s));
  EXPECT_TRUE(Connecting(u"session is read-only"_s).contains(u"omgeschakeld"_s));
  EXPECT_TRUE(Connecting(u"server is in hot standby mode"_s).contains(u"omgeschakeld"_s));
  const QString unreachable = Connecting(u"connection refused\n\tIs the server running?"_s);
  EXPECT_TRUE(unreachable.contains(u"De databaseserver db1 van"_s) && unreachable.contains(u"offline verder"_s));
  EXPECT_TRUE(unreachable.endsWith(u"(connection refused Is the server running?)"_s)) << qPrintable(unreachable);
}

TEST(ServerMessages, EachCodeOfARefusedStatementHasItsAdvice) {
  const std::vector<std::pair<QString, QString>> cases = {
      {u"42501"_s, u"geen rechten"_s},
      {u"25006"_s, u"alleen-lezen"_s},
      {u"55P03"_s, u"in gebruik door een ander"_s},
      {u"57014"_s, u"deed te lang"_s},
      {u"53100"_s, u"vol of defect"_s},
      {u"58030"_s, u"vol of defect"_s},
      {u"57P01"_s, u"is verbroken"_s},
      {u"08006"_s, u"is verbroken"_s},
      {u"25P03"_s, u"is verbroken"_s},
      {u"3F000"_s, u"geen schema 'Zender'"_s},
      {u"42P01"_s, u"geen schema 'Zender'"_s},
      {u"23502"_s, u"'Naam' van de tabel 'tblSpots' moet een waarde"_s}};
  for (const auto& [code, text] : cases)
    EXPECT_TRUE(Refused(code).contains(text)) << qPrintable(code) << ": " << qPrintable(Refused(code));
  EXPECT_TRUE(Refused(u"XX000"_s).endsWith(u"weigert de opdracht: server text (XX000)"_s))
      << qPrintable(Refused(u"XX000"_s));
}

TEST(ServerMessages, EveryErrorHasThePath) {
  for (const QString& code :
       {u"42501"_s, u"25006"_s, u"55P03"_s, u"57014"_s, u"53100"_s, u"08006"_s, u"3F000"_s, u"XX000"_s})
    EXPECT_TRUE(Refused(code).contains(u"'postgresql://localhost/x\\Zender.mdb'"_s)) << qPrintable(code);
  EXPECT_TRUE(dao::ConnectionLostError(Address()).contains(u"Er is niets bewaard"_s));
}

class Duplicates : public testing::Test {
 protected:
  QString Text(const dao::IndexDef& index, const QString& detail) const {
    dao::Refusal refusal;
    refusal.detail = detail;
    return dao::DuplicateError(table_, index, refusal);
  }
  dao::TableDef table_ = scratch::Spots();
};

TEST_F(Duplicates, ADuplicateNumberOfTheKeyIsShownWithAdvice) {
  const QString text = Text(table_.indexes.first(), u"Key (\"ID\")=(42) already exists."_s);
  EXPECT_EQ(
      text,
      u"De waarde 42 van het veld 'ID' van de tabel 'tblSpots' bestaat al (index 'PrimaryKey'). Misschien nam een "
      "ander net dit nummer; druk nog eens op OK."_s);
}

TEST_F(Duplicates, AnotherIndexHasNoAdvice) {
  dao::IndexDef index = scratch::Index(u"OpAktief"_s, {u"Aktief"_s});
  EXPECT_TRUE(Text(index, u"Schl\u00FCssel \u00BB(\"Aktief\")=(1)\u00AB existiert bereits."_s)
                  .endsWith(u"(index 'OpAktief')."_s));
  EXPECT_TRUE(Text(index, u"Key (x)=(1) exists"_s).contains(u"De waarde 1 van"_s));
}

TEST_F(Duplicates, ATextIsNotShownBecauseTheServerComparesItsKey) {
  const dao::IndexDef index = scratch::Index(u"OpNaam"_s, {u"Naam"_s});
  EXPECT_TRUE(Text(index, u"Key (spotrooster_order_2)=(\\x0102) already exists."_s)
                  .startsWith(u"De waarde van het veld 'Naam'"_s));
}

}  // namespace
