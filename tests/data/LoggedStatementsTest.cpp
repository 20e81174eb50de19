// SPDX-License-Identifier: MIT
// The log read along with the rows that its statements changed gives what a query for each row gives.
#include "data/LoggedStatements.h"

#include "data/Globals.h"
#include "data/OfflineBasis.h"
#include "data/Statements.h"
#include "data/Writes.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

QString Shown(qint32 id, const QString& statement, const std::optional<basis::Entry>& entry) {
  return QString::number(id) + u'|' + statement + u'|' +
         (entry ? QString::fromUtf8(basis::Encode(*entry)) : u"unknown"_s);
}

QStringList Visited(std::optional<qint32> last = std::nullopt) {
  QStringList all;
  VisitLog(global.localDatabasePath, last,
           [&](const LoggedStatement& logged) { all += Shown(logged.id, logged.sqlSyntax, logged.entry); });
  return all;
}

class LoggedStatements : public testing::Test {
 protected:
  // The first statement makes the table of the basis.
  void Fill() {
    station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (4, \"Spot\", 1)"_s);
    Update_tblItemSpots_Aktief(4, 0, global.localDatabasePath, u"tblCopie_ItemSpots"_s);
    station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
    station_.OnLocal(u"DELETE FROM tblOfflineBasis"_s);
    const auto storage = dao::OpenStorage(global.localDatabasePath);
    const auto turn = storage->Begin(dao::Access::Write);
    const auto log = storage->OpenTable(u"tblOfflineLog"_s);
    const auto kept = storage->OpenTable(basis::OfflineTableName());
    for (int id = -kRows / 2; id < kRows / 2; ++id) {
      if (Below(10) == 0) continue;
      const QString statement = Statement();
      log->Insert({std::int64_t{id}, statements::LogText(statement).toStdU16String()});
      for (int copies = Below(3); copies > 0; --copies)
        Keep(*kept, id, Below(4) == 0 ? Statement() : statement);
    }
    Keep(*kept, std::nullopt, Statement());
    turn->Commit();
  }

  void Keep(dao::Table& table, std::optional<qint32> logID, const QString& statement) {
    // Not in the order of the numbers: the lowest of equal ones counts.
    const std::int64_t id = (++keptCount_ * 7919) % 100003;
    basis::Entry entry{u"tblItemSpots"_s, u"ID"_s, id, {u"ID"_s}, {{std::int64_t{id}}}, {}, {}};
    const QString text = Below(8) == 0 ? u"{onleesbaar"_s : QString::fromUtf8(basis::Encode(entry));
    table.Insert({id, logID ? dao::Value(std::int64_t{*logID}) : dao::Value(),
                  Below(15) == 0 ? dao::Value() : dao::Value(statement.toStdU16String()), text.toStdU16String()});
  }

  // Some differ only in what the log replaces.
  QString Statement() {
    static const QStringList kNames{u"Jan's"_s, u"Jan*s"_s, u" Jan"_s, u"jan's"_s};
    return u"%1UPDATE tblItemSpots SET Naam = \"%2\" WHERE ID = %3"_s.arg(Below(9) == 0 ? u"  "_s : u""_s,
                                                                          kNames[Below(4)], QString::number(Below(2)));
  }

  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }

  // By a query for the log and one for each of its rows.
  QStringList Queried(const QString& where = {}) const {
    QStringList all;
    for (dao::Recordset rows = station_.LocalRows(u"SELECT * FROM tblOfflineLog "_s + where + u" ORDER BY ID"_s);
         !rows.Eof(); rows.MoveNext()) {
      const qint32 id = runtime::ToLong(rows.Field(u"ID"_s));
      const QString text = rows.Field(u"SqlSyntax"_s).toString();
      all += Shown(id, runtime::TrimBlanks(text), EntryOf(id, text));
    }
    return all;
  }
  std::optional<basis::Entry> EntryOf(qint32 id, const QString& text) const {
    dao::Recordset rows = station_.LocalRows(
        u"SELECT * FROM tblOfflineBasis WHERE LogID = %1 AND SqlSyntax IS NOT NULL ORDER BY ID"_s.arg(id));
    for (; !rows.Eof(); rows.MoveNext()) {
      if (statements::LogText(rows.Field(u"SqlSyntax"_s).toString()) != text) continue;
      try {
        return basis::Decode(rows.Field(u"Basis"_s).toString().toUtf8());
      } catch (const runtime::Error&) {
        return std::nullopt;
      }
    }
    return std::nullopt;
  }

  static constexpr int kRows = 400;
  Station station_{Station::Mode::Offline};
  std::mt19937 random_{5};
  std::int64_t keptCount_ = 0;
};

}  // namespace

TEST_F(LoggedStatements, AreThoseOfQueries) {
  EXPECT_EQ(Visited(), QStringList());
  Fill();
  const QStringList expected = Queried();
  EXPECT_GT(expected.size(), kRows / 2);
  EXPECT_GT(expected.filter(u"keyField"_s).size(), kRows / 4);
  EXPECT_GT(expected.filter(u"unknown"_s).size(), kRows / 10);
  EXPECT_EQ(Visited(), expected);
  EXPECT_EQ(Visited(20), Queried(u"WHERE ID <= 20"_s));
  EXPECT_EQ(Visited(-kRows), QStringList());
}

// A log of another program may have no key.
TEST_F(LoggedStatements, RowsWithOneNumberOrWithoutAreVisitedOneByOne) {
  const QString path = global.localDatabasePath + u"-zonder.mdb"_s;
  dao::CreateDatabase(path, [](dao::Database& database) {
    dao::TableDef log;
    log.name = u"tblOfflineLog"_s;
    log.fields.resize(2);
    log.fields[0].name = u"ID"_s;
    log.fields[1].name = u"SqlSyntax"_s;
    log.fields[1].type = dao::FieldType::Memo;
    database.CreateTable(log);
    const QStringList rows{u"2, \"tweede\""_s, u"1, \"eerste\""_s, u"NULL, \"zonder\""_s, u"2, \" nog een \""_s,
                           u"1, NULL"_s};
    for (const QString& row : rows)
      database.Execute(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES ("_s + row + u')');
  });
  QStringList all;
  VisitLog(path, 1, [&](const LoggedStatement& logged) { all += Shown(logged.id, logged.sqlSyntax, logged.entry); });
  EXPECT_EQ(all, (QStringList{u"0|zonder|unknown"_s, u"1|eerste|unknown"_s, u"1||unknown"_s}));
  all.clear();
  VisitLogRows(path, std::nullopt, [&](const LogRow& row) { all += row.sqlSyntax.toString(); });
  EXPECT_EQ(all, (QStringList{u"zonder"_s, u"eerste"_s, u""_s, u"tweede"_s, u" nog een "_s}));
}
