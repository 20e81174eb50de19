// SPDX-License-Identifier: MIT
// What is no export, or no longer one: a clear error that names the file and the line, and an unchanged database.
#include "platform/runtime/Error.h"
#include "tests/export/apply/Shared.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kGood = "UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1;\r\n";

class BadInput : public SharedStation {
 protected:
  BadInput() { Fill(); }

  QString Written(const QByteArray& content, const QString& name = u"20261122101500.tql"_s) const {
    QString path = Folder(u"A"_s) + u'/' + name;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return path;
  }
  // Refused with these words, and nothing was carried out, not even the good statement before.
  void ExpectRefused(const QByteArray& content, const QStringList& words) const {
    const QString path = Written(content);
    const QString error = ErrorOf(path);
    EXPECT_TRUE(error.contains(path)) << error.toStdString();
    for (const QString& word : words)
      EXPECT_TRUE(error.contains(word)) << word.toStdString() << " in " << error.toStdString();
    ExpectUnchanged();
  }
  void ExpectUnchanged() const {
    EXPECT_EQ(Rows(u"SELECT Aktief FROM tblItemSpots ORDER BY ID"_s), (QStringList{u"1"_s, u"1"_s, u"1"_s}));
    EXPECT_FALSE(dao::OpenDatabase(Server()).TableNames().contains(apply::ledger::kFiles));
  }
};

}  // namespace

TEST_F(BadInput, AStatementThatNoExportWritesIsRefusedByLine) {
  const QList<QByteArray> foreign{
      "DROP TABLE tblItems",
      "DELETE FROM tblItems WHERE ID = 1",
      "DELETE FROM tblItemPingles WHERE ID = 1",
      "DELETE FROM tblItemSpots",
      "DELETE FROM tblItemSpots WHERE Naam = 'x'",
      "DELETE FROM tblItemSpots WHERE ID = 1 OR 1 = 1",
      "DELETE FROM tblItemSpots WHERE tblItems.ID = 1",
      "DELETE FROM appMessages WHERE ID = 1",
      "UPDATE cdeInstellingen SET InitValue = '1' WHERE ID = 1",
      "UPDATE tblItemSpots SET Aktief = Aktief + 1 WHERE ID = 1",
      "UPDATE tblItemSpots INNER JOIN tblItems ON 1 = 1 SET Aktief = 0 WHERE ID = 1",
      "UPDATE tblItemSpots SET Aktief = 0",
      "UPDATE tblItemSpots SET ID = 9 WHERE ID = 1",
      "UPDATE tblItemSpots SET Geen = 9 WHERE ID = 1",
      "UPDATE tblItemSpots SET Aktief = 0, Aktief = 1 WHERE ID = 1",
      "UPDATE tblItemSpots SET Aktief = 99999999999 WHERE ID = 1",
      "UPDATE tblItemsItemSpots SET ItemSpotID = 9 WHERE ItemID = 1",
      "INSERT INTO tblItemSpots SELECT * FROM tblItems",
      "INSERT INTO tblItemSpots (Naam) VALUES ('x')",
      "INSERT INTO tblItemSpots (ID, Naam) VALUES (9)",
      "INSERT INTO tblItemsItemSpots (ItemID) VALUES (9)",
      "INSERT INTO tblCopie_ItemSpots (ID) VALUES (9)",
      "SELECT * FROM tblItems",
      "zomaar een tekst",
      "",
  };
  for (const QByteArray& statement : foreign)
    ExpectRefused(kGood + statement + ";\r\n", {u"regel 2"_s});
}

// Lines are counted through texts that hold line ends.
TEST_F(BadInput, TheLineIsThatOfTheFile) {
  ExpectRefused("UPDATE tblItemSpots SET Naam = 'een;\r\ntwee', Aktief = 0 WHERE ID = 1;\r\nDROP TABLE tblItems;\r\n",
                {u"regel 3"_s, u"DROP TABLE tblItems"_s});
}

TEST_F(BadInput, HalfAFileIsRefusedWhereverItEnds) {
  const QByteArray whole = kGood + "INSERT INTO tblItemSpots (ID, Naam) VALUES (9, 'a;\r\nb');\r\n";
  for (qsizetype length = 1; length < whole.size(); ++length) {
    if (length == kGood.size()) continue;  // a whole statement
    SCOPED_TRACE(length);
    ExpectRefused(whole.first(length), {u"regel"_s});
  }
}

TEST_F(BadInput, AnotherCodePageIsRefused) {
  ExpectRefused(kGood + "UPDATE tblItemSpots SET Naam = 'caf\xC3\xA9' WHERE ID = 1;\r\n", {u"UTF-8"_s});
  QByteArray wide;
  for (const char byte : kGood)
    wide += QByteArray{1, byte} + '\0';
  ExpectRefused(wide, {u"Windows-1252"_s});
}

TEST_F(BadInput, AHundredMegabytesAreRefused) {
  const QString path = Written({});
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_TRUE(file.resize(qint64{100} << 20));
  EXPECT_TRUE(ErrorOf(path).contains(path) && ErrorOf(path).contains(u"64 MB"_s)) << ErrorOf(path).toStdString();
  ExpectUnchanged();
}

TEST_F(BadInput, AFileThatIsNotThereIsNamed) {
  EXPECT_TRUE(ErrorOf(Folder(u"A"_s) + u"/20261122101500.tql"_s).contains(u"20261122101500.tql"_s));
}

TEST_F(BadInput, AnUnreadableBasisIsRefused) {
  const QString path = Written(kGood);
  for (const QByteArray& content : {QByteArray("onzin\n"), QByteArray(), QByteArray("{\"format\":\"iets\"}\n")}) {
    Written(content, u"20261122101500.tql.basis"_s);
    EXPECT_TRUE(ErrorOf(path).contains(path + u".basis"_s)) << ErrorOf(path).toStdString();
    ExpectUnchanged();
  }
}

TEST_F(BadInput, TheBasisOfAnotherFileIsRefused) {
  Workstation a = At(u"A"_s);
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  const QString first = a.Export();
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  const QString second = a.Export();
  QFile::remove(first + u".basis"_s);
  QFile::copy(second + u".basis"_s, first + u".basis"_s);
  EXPECT_TRUE(ErrorOf(first).contains(first + u".basis"_s)) << ErrorOf(first).toStdString();
  ExpectUnchanged();
}

// A line that is of another statement than the one beside it.
TEST_F(BadInput, ABasisWhoseLinesWereMovedIsRefused) {
  Workstation a = At(u"A"_s);
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  const QString path = a.Export();
  QFile file(path + u".basis"_s);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  QList<QByteArray> lines = file.readAll().split('\n');
  lines.swapItemsAt(1, 2);
  file.resize(0);
  file.write(lines.join('\n'));
  file.close();
  EXPECT_TRUE(ErrorOf(path).contains(u"regel 2"_s)) << ErrorOf(path).toStdString();
  ExpectUnchanged();
}
