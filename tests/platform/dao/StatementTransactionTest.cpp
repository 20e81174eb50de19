// SPDX-License-Identifier: MIT
#include "platform/dao/StatementTransaction.h"

#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::StatementTransaction;

namespace {

const QString kSpotRows = u"SELECT ID, Naam, Aktief FROM tblSpots ORDER BY ID"_s;

// As another program sees the database: each thread has its own openings.
QStringList SeenByOthers(const SpotScratch& s) {
  QStringList rows;
  std::thread([&] { rows = Rows(s.Open(), kSpotRows); }).join();
  return rows;
}

std::vector<dao::Value> Spot(int id, const QString& naam) {
  return {std::int64_t{id}, naam.toStdU16String(), std::int64_t{1}, 45658.0, {}};
}

TEST(StatementTransaction, StatementsAreThereTogetherAfterCommit) {
  const SpotScratch s;
  const QStringList before = Rows(s.Open(), kSpotRows);
  StatementTransaction transaction(s.Open());
  EXPECT_EQ(transaction.Execute(u"UPDATE tblSpots SET Naam = \"Peer\" WHERE ID = 1"_s), 1);
  EXPECT_EQ(transaction.Execute(u"DELETE FROM tblSpots WHERE ID = 2"_s), 1);
  EXPECT_EQ(transaction.Execute(u"INSERT INTO tblSpots (ID, Naam, Aktief) SELECT ID + 10, Naam, 0 FROM tblSpots"_s), 2);
  const QStringList after{u"1|Peer|1"_s, u"3|Cola|1"_s, u"11|Peer|0"_s, u"13|Cola|0"_s};
  dao::Recordset own = transaction.OpenRecordset(u"SELECT Naam FROM tblSpots WHERE ID = 11"_s);
  EXPECT_EQ(own.Field(u"Naam"_s).toString(), u"Peer"_s);
  EXPECT_EQ(SeenByOthers(s), before);
  transaction.Commit();
  EXPECT_EQ(SeenByOthers(s), after);
  EXPECT_EQ(Rows(s.Open(), kSpotRows), after);
}

TEST(StatementTransaction, WithoutCommitNothingIsLeft) {
  const SpotScratch s;
  const QStringList before = Rows(s.Open(), kSpotRows);
  {
    StatementTransaction transaction(s.Open());
    transaction.Execute(u"DELETE FROM tblSpots"_s);
    transaction.CreateTable(Spots(u"tblNieuw"_s));
    transaction.Insert(u"tblNieuw"_s, Spot(1, u"weg"_s));
  }
  EXPECT_EQ(Rows(s.Open(), kSpotRows), before);
  EXPECT_FALSE(s.Open().TableNames().contains(u"tblNieuw"_s));
}

TEST(StatementTransaction, AfterAFailureNothingOfItCanBeCommitted) {
  const SpotScratch s;
  const QStringList before = Rows(s.Open(), kSpotRows);
  {
    StatementTransaction transaction(s.Open());
    transaction.Execute(u"UPDATE tblSpots SET Naam = \"Peer\" WHERE ID = 1"_s);
    EXPECT_FALSE(ErrorOf([&] { transaction.Execute(u"UPDATE tblSpots SET ID = 3 WHERE ID = 1"_s); }).isEmpty() &&
                 ErrorOf([&] { transaction.OpenRecordset(kSpotRows); }).isEmpty());
    EXPECT_FALSE(ErrorOf([&] { transaction.Commit(); }).isEmpty());
  }
  EXPECT_EQ(Rows(s.Open(), kSpotRows), before);
}

TEST(StatementTransaction, ATableMadeInItTakesRows) {
  const SpotScratch s;
  StatementTransaction transaction(s.Open());
  EXPECT_FALSE(transaction.HasTable(u"tblNieuw"_s));
  transaction.CreateTable(Spots(u"tblNieuw"_s));
  EXPECT_TRUE(transaction.HasTable(u"TBLNIEUW"_s));
  transaction.Insert(u"tblNieuw"_s, Spot(7, u"zeven"_s));
  transaction.Execute(u"INSERT INTO tblNieuw (ID, Naam) VALUES (8, \"acht\")"_s);
  transaction.Insert(u"tblNieuw"_s, Spot(9, u"negen"_s));
  EXPECT_EQ(transaction.Highest(u"tblNieuw"_s, u"ID"_s), 9);
  transaction.Commit();
  EXPECT_EQ(Rows(s.Open(), u"SELECT Naam FROM tblNieuw ORDER BY ID"_s),
            (QStringList{u"zeven"_s, u"acht"_s, u"negen"_s}));
}

TEST(StatementTransaction, RowsAreConvertedAsThoseOfAStatement) {
  const SpotScratch s;
  StatementTransaction transaction(s.Open());
  const std::vector<dao::Value> row{std::u16string(u"4"), std::int64_t{12}, 1.0, std::int64_t{45658}, {}};
  transaction.Insert(u"tblSpots"_s, row);
  const auto found = transaction.Find(u"tblSpots"_s, u"id"_s, 4);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].values,
            (std::vector<dao::Value>{std::int64_t{4}, std::u16string(u"12"), std::int64_t{1}, 45658.0, dao::Value()}));
  const QString error = ErrorOf([&] {
    transaction.Update(u"tblSpots"_s, found[0].id, std::array{dao::FieldValue{1, QString(60, u'x').toStdU16String()}});
  });
  EXPECT_TRUE(error.contains(u"'Naam'"_s)) << error.toStdString();
}

TEST(StatementTransaction, FindsByAFieldWithoutAnIndexToo) {
  const SpotScratch s;
  StatementTransaction transaction(s.Open());
  EXPECT_EQ(transaction.Find(u"tblSpots"_s, u"Aktief"_s, 1).size(), 2u);
  EXPECT_EQ(transaction.All(u"tblSpots"_s).size(), 3u);
  EXPECT_EQ(transaction.Highest(u"tblSpots"_s, u"Aktief"_s), 1);
  EXPECT_FALSE(ErrorOf([&] { transaction.Find(u"tblSpots"_s, u"Geen"_s, 1); }).isEmpty());
}

TEST(StatementTransaction, AStatementOfAnotherFileIsRefused) {
  const SpotScratch s;
  s.Another(u"tweede.mdb"_s).CreateTable(Spots());
  StatementTransaction transaction(s.Open());
  const QString into = u"INSERT INTO tblSpots IN \"%1\" SELECT * FROM tblSpots"_s.arg(s.Path(u"tweede.mdb"_s));
  EXPECT_FALSE(ErrorOf([&] { transaction.Execute(into); }).isEmpty());
  EXPECT_FALSE(ErrorOf([&] { transaction.Execute(kSpotRows); }).isEmpty());
  transaction.Execute(u"DELETE FROM tblSpots"_s);
  transaction.Commit();
  EXPECT_EQ(Rows(s.Open(), kSpotRows), QStringList());
}

// Row by row and by SQL in turn, so that neither works on what the other no longer has.
TEST(StatementTransaction, ManyChangesReadBackAsMade) {
  const SpotScratch s;
  std::map<int, QString> model{{1, u"Appel"_s}, {2, u"bier"_s}, {3, u"Cola"_s}};
  std::mt19937 random(20261122);
  StatementTransaction transaction(s.Open());
  for (int step = 0; step < 1500; ++step) {
    const int id = static_cast<int>(random() % 200);
    const QString naam = QString(static_cast<qsizetype>(random() % 40), u'a') + QString::number(step);
    const auto found = transaction.Find(u"tblSpots"_s, u"ID"_s, id);
    ASSERT_EQ(found.size(), model.count(id));
    if (found.empty()) {
      transaction.Insert(u"tblSpots"_s, Spot(id, naam));
      model[id] = naam;
    } else if (step % 3 == 0) {
      transaction.Delete(u"tblSpots"_s, std::array{found[0].id});
      model.erase(id);
    } else if (step % 7 == 0) {
      transaction.Execute(u"UPDATE tblSpots SET Naam = \"%1\" WHERE ID = %2"_s.arg(naam, QString::number(id)));
      model[id] = naam;
    } else {
      transaction.Update(u"tblSpots"_s, found[0].id, std::array{dao::FieldValue{1, naam.toStdU16String()}});
      model[id] = naam;
    }
  }
  transaction.Commit();
  QStringList expected;
  for (const auto& [id, naam] : model)
    expected += QString::number(id) + u'|' + naam;
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID, Naam FROM tblSpots ORDER BY ID"_s), expected);
}

}  // namespace
