// SPDX-License-Identifier: MIT
// The file itself: consistent, read in the same way by other programs, and shared with them.
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "tests/platform/dao/Scratch.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

// The lines of a check of the file.
QStringList Findings(const QString& path) {
  const auto database = jet::Database::Open(path.toStdString());
  const jet::ReadTurn reading(*database);
  QStringList lines;
  for (const jet::Finding& finding : jet::CheckDatabase(*database))
    lines += QString::fromStdString(finding.Line());
  return lines;
}

QString Output(const QString& program, const QStringList& words) {
  QProcess process;
  process.start(program, words);
  process.waitForFinished();
  return QString::fromUtf8(process.readAllStandardOutput());
}

bool HasReferenceReader() {
  return !QStandardPaths::findExecutable(u"mdb-export"_s).isEmpty();
}

dao::TableDef AllTypes() {
  dao::TableDef table{
      u"tblAlles"_s,
      {Field(u"ID"_s, FieldType::Long), Field(u"Vlag"_s, FieldType::Boolean), Field(u"Klein"_s, FieldType::Byte),
       Field(u"Kort"_s, FieldType::Integer), Field(u"Bedrag"_s, FieldType::Currency),
       Field(u"Enkel"_s, FieldType::Single), Field(u"Dubbel"_s, FieldType::Double), Field(u"Dag"_s, FieldType::Date),
       Field(u"Tekst"_s, FieldType::Text, 255), Field(u"Lang"_s, FieldType::Memo), Field(u"Sleutel"_s, FieldType::Guid),
       Field(u"Getal"_s, FieldType::Numeric)},
      {Key({u"ID"_s})}};
  table.fields.last().precision = 18;
  table.fields.last().scale = 4;
  return table;
}

TEST(JetFile, HasTheJetSignature) {
  const SpotScratch s;
  QFile file(s.Path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.read(20).mid(4), QByteArray("Standard Jet DB\0", 16));
}

TEST(JetFile, EveryTypeRoundTrips) {
  const Scratch s;
  dao::Database database = s.Open();
  database.CreateTable(AllTypes());
  database.Execute(
      u"INSERT INTO tblAlles VALUES (1, TRUE, 255, -32768, 12.3456, 1.5, 0.1, 45658.5, \"Café €\", \"lange tekst\", "
      "\"{6F9619FF-8B86-D011-B42D-00C04FC964FF}\", -1234.5678)"_s);
  database.Execute(u"INSERT INTO tblAlles (ID) VALUES (2)"_s);
  EXPECT_EQ(Rows(database, u"SELECT * FROM tblAlles ORDER BY ID"_s),
            (QStringList{u"1|true|255|-32768|12.3456|1.5|0.1|2025-01-01 12:00:00|Café €|lange tekst|"
                         "{6F9619FF-8B86-D011-B42D-00C04FC964FF}|-1234.5678"_s,
                         u"2|false|-|-|-|-|-|-|-|-|-|-"_s}));
  EXPECT_EQ(Findings(s.Path()), QStringList());
}

TEST(JetFile, ManyChangesLeaveAConsistentFile) {
  const SpotScratch s;
  dao::Database database = s.Open();
  for (int i = 0; i < 9; ++i) {
    const int step = 3 << i;
    database.Execute(
        u"INSERT INTO tblSpots (ID, Naam, Aktief, Memo) SELECT ID + %1, Naam, Aktief, \"%2\" FROM tblSpots"_s.arg(step)
            .arg(QString(300 * i, u'm')));
  }
  EXPECT_EQ(database.Execute(u"UPDATE tblSpots SET Naam = \"langere naam dan tevoren\" WHERE Naam = \"bier\""_s), 512);
  EXPECT_EQ(database.Execute(u"DELETE FROM tblSpots WHERE Naam = \"Cola\""_s), 512);
  EXPECT_EQ(Findings(s.Path()), QStringList());
  EXPECT_EQ(Rows(database, u"SELECT COUNT(*) AS n, MAX(ID) AS m FROM tblSpots"_s), QStringList{u"1024|1535"_s});
}

TEST(JetFile, OtherReadersFindTablesAndRows) {
  if (!HasReferenceReader()) GTEST_SKIP() << "mdb-export is not installed";
  const SpotScratch s;
  s.Open().Execute(u"UPDATE tblSpots SET Memo = \"Ünïcode\" WHERE ID = 2"_s);
  EXPECT_EQ(Output(u"mdb-tables"_s, {u"-1"_s, s.Path()}), u"tblSpots\n"_s);
  EXPECT_EQ(Output(u"mdb-export"_s, {s.Path(), u"tblSpots"_s}),
            u"ID,Naam,Aktief,StartDatum,Memo\n1,\"Appel\",1,,\n2,\"bier\",0,,\"Ünïcode\"\n3,\"Cola\",1,,\n"_s);
}

TEST(JetFile, TextWithAnUnknownCharacterIsFoundByAScanAndRefusedAsAKey) {
  const Scratch s;
  dao::Database database = s.Open();
  database.CreateTable(
      {u"cde"_s, {Field(u"Code"_s, FieldType::Text, 50), Field(u"Naam"_s, FieldType::Text, 50)}, {Key({u"Code"_s})}});
  database.Execute(u"INSERT INTO cde VALUES (\"een\", \"漢字\")"_s);
  EXPECT_TRUE(Rows(database, u"SELECT Code FROM cde WHERE Code = \"漢\""_s).isEmpty());
  EXPECT_EQ(Rows(database, u"SELECT Code FROM cde WHERE Naam = \"漢字\""_s), QStringList{u"een"_s});
  const QString error = ExecuteError(database, u"INSERT INTO cde VALUES (\"漢\", \"x\")"_s);
  EXPECT_TRUE(error.contains(u"cde"_s) && error.contains(u"Code"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(database, u"SELECT Code FROM cde"_s).size(), 1);
}

TEST(JetFile, AutonumberContinuesAfterTheLargest) {
  const Scratch s;
  dao::TableDef table = Spots();
  table.fields[0].autoNumber = true;
  s.Open().CreateTable(table);
  s.Open().Execute(u"INSERT INTO tblSpots (Naam) VALUES (\"a\")"_s);
  s.Open().Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (40, \"b\")"_s);
  s.Open().Execute(u"INSERT INTO tblSpots (Naam) VALUES (\"c\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblSpots ORDER BY ID"_s), (QStringList{u"1"_s, u"40"_s, u"41"_s}));
}

TEST(JetFile, AReplacedFileIsNoticed) {
  const SpotScratch s;
  const dao::Database opened = s.Open();
  s.Another(u"nieuw.mdb"_s).CreateTable(Spots(u"tblAnders"_s));
  ASSERT_TRUE(QFile::rename(s.Path(), s.Path(u"oud.mdb"_s)));
  ASSERT_TRUE(QFile::rename(s.Path(u"nieuw.mdb"_s), s.Path()));
  EXPECT_EQ(s.Open().TableNames(), QStringList{u"tblAnders"_s});
  EXPECT_EQ(opened.TableNames(), QStringList{u"tblAnders"_s});
}

TEST(JetFile, ReadOnlyOpeningWritesNothing) {
  const SpotScratch s;
  ASSERT_TRUE(QFile::copy(s.Path(), s.Path(u"kopie.mdb"_s)));
  dao::Database database = dao::OpenDatabase(s.Path(u"kopie.mdb"_s), {.readOnly = true});
  EXPECT_EQ(Rows(database, u"SELECT ID FROM tblSpots"_s).size(), 3);
  const QString error = ExecuteError(database, u"DELETE FROM tblSpots"_s);
  EXPECT_TRUE(error.contains(u"kopie.mdb"_s) && error.contains(u"alleen-lezen"_s)) << qPrintable(error);
  EXPECT_FALSE(QFile::exists(s.Path(u"kopie.ldb"_s)));
}

TEST(JetFile, SystemTablesAreNotAccessible) {
  const SpotScratch s;
  EXPECT_TRUE(ErrorOf([&] { s.Open().OpenRecordset(u"SELECT * FROM MSysObjects"_s); }).contains(u"'MSysObjects'"_s));
  EXPECT_FALSE(ExecuteError(s.Open(), u"DELETE FROM MSysObjects"_s).isEmpty());
}

}  // namespace
