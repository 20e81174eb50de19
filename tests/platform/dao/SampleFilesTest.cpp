// SPDX-License-Identifier: MIT
// Real files of other programs, in the folder of the environment variable SPOTROOSTER_MDB_SAMPLES.
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "tests/platform/dao/Scratch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

class SampleFiles : public testing::Test {
 protected:
  void SetUp() override {
    if (!qEnvironmentVariableIsSet("SPOTROOSTER_MDB_SAMPLES")) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
    samples_ = qEnvironmentVariable("SPOTROOSTER_MDB_SAMPLES");
  }

  QString Copy(const QString& name) const {
    QString copy = folder_.filePath(name);
    EXPECT_TRUE(QFile::copy(samples_ + u'/' + name, copy));
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    return copy;
  }

  // "name rows" of each table.
  QStringList Contents(const QString& name, const QString& password = {}) const {
    dao::Database database = dao::OpenDatabase(samples_ + u'/' + name, {password, true});
    QStringList contents;
    for (const QString& table : database.TableNames()) {
      const auto rows = database.OpenRecordset(u"SELECT COUNT(*) AS n FROM [%1]"_s.arg(table));
      EXPECT_EQ(database.OpenRecordset(u"SELECT * FROM [%1]"_s.arg(table)).RecordCount(), rows.Field(u"n"_s).toInt());
      contents += table + u' ' + rows.Field(u"n"_s).toString();
    }
    return contents;
  }

  QString samples_;
  QTemporaryDir folder_;
};

TEST_F(SampleFiles, TablesAndRowsAreFound) {
  EXPECT_EQ(Contents(u"adox_empty.mdb"_s), QStringList());
  EXPECT_EQ(Contents(u"alltypes_big.mdb"_s), (QStringList{u"Table1 2"_s, u"Table2 0"_s, u"Table3 0"_s, u"Table4 0"_s}));
  EXPECT_EQ(Contents(u"composite_index.mdb"_s), QStringList{u"Table1 512"_s});
  EXPECT_EQ(Contents(u"encoded.mdb"_s), QStringList{u"Table1 2"_s});
  EXPECT_EQ(Contents(u"numeric.mdb"_s), QStringList{u"test 1"_s});
  EXPECT_EQ(Contents(u"unicode_text.mdb"_s), QStringList{u"Table 8"_s});
  EXPECT_EQ(Contents(u"northwind.mdb"_s),
            (QStringList{u"Categories 8"_s, u"Customers 91"_s, u"Employees 9"_s, u"Order Details 2155"_s,
                         u"Orders 830"_s, u"Products 77"_s, u"Shippers 3"_s, u"Suppliers 29"_s}));
}

TEST_F(SampleFiles, OnlyTheRightPasswordOpensTheFile) {
  EXPECT_EQ(Contents(u"password.mdb"_s, u"password"_s), QStringList{u"Table1 3"_s});
  for (const QString& wrong : {QString(), u"Password"_s}) {
    const QString error = ErrorOf([&] { Contents(u"password.mdb"_s, wrong); });
    EXPECT_TRUE(error.contains(u"password.mdb"_s) && error.contains(u"wachtwoord"_s)) << qPrintable(error);
  }
}

TEST_F(SampleFiles, AnOlderFormatIsReported) {
  EXPECT_TRUE(ErrorOf([&] { Contents(u"jet3.mdb"_s); }).contains(u"Jet 3"_s));
}

TEST_F(SampleFiles, JoinsAndKeysWorkOnRealTables) {
  dao::Database database = dao::OpenDatabase(samples_ + u"/northwind.mdb"_s, {.readOnly = true});
  EXPECT_EQ(Rows(database, u"SELECT CompanyName FROM Customers WHERE CustomerID = \"alfki\""_s),
            QStringList{u"Alfreds Futterkiste"_s});
  EXPECT_EQ(Rows(database, u"SELECT MAX(OrderID) AS m FROM Orders"_s), QStringList{u"11077"_s});
  EXPECT_EQ(
      Rows(database,
           u"SELECT Products.ProductName FROM ([Order Details] INNER JOIN Products ON [Order Details].ProductID = "
           "Products.ProductID) WHERE [Order Details].OrderID = 10248 ORDER BY Products.ProductName"_s),
      (QStringList{u"Mozzarella di Giovanni"_s, u"Queso Cabrales"_s, u"Singaporean Hokkien Fried Mee"_s}));
}

TEST_F(SampleFiles, StatementsChangeARealFileAndLeaveItConsistent) {
  const QString path = Copy(u"northwind.mdb"_s);
  dao::Database database = dao::OpenDatabase(path);
  EXPECT_EQ(database.Execute(u"INSERT INTO Shippers (CompanyName, Phone) VALUES (\"Über-Vracht\", \"0201\")"_s), 1);
  EXPECT_EQ(Rows(database, u"SELECT ShipperID FROM Shippers WHERE Phone = \"0201\""_s), QStringList{u"4"_s});
  EXPECT_EQ(database.Execute(u"UPDATE Orders SET Freight = Freight + 1 WHERE ShipVia = 3"_s), 255);
  EXPECT_EQ(database.Execute(u"DELETE FROM Shippers WHERE ShipperID = 4"_s), 1);
  const QString inUse = ExecuteError(database, u"DELETE FROM Shippers WHERE ShipperID = 3"_s);
  EXPECT_TRUE(inUse.contains(u"Shippers"_s)) << qPrintable(inUse);
  const QString ruled = ExecuteError(database, u"DELETE FROM [Order Details] WHERE OrderID = 10248"_s);
  EXPECT_TRUE(ruled.contains(u"Order Details"_s) && ruled.contains(u"validatieregel"_s)) << qPrintable(ruled);
  EXPECT_EQ(Rows(database, u"SELECT ShipperID FROM Shippers"_s).size(), 3);
  database.Close();
  const auto file = jet::Database::Open(path.toStdString());
  EXPECT_FALSE(jet::HasProblem(jet::CheckDatabase(*file)));
}

}  // namespace
