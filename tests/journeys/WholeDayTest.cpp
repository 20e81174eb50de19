// SPDX-License-Identifier: MIT
// The export of a day offline is carried out, statement by statement, on a copy of the server from the moment at which
// work became offline, and compared with the planner's work of that day.
#include "platform/dao/Database.h"
#include "platform/runtime/Error.h"
#include "tests/journeys/Day.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

// Prints lists in failure messages of GoogleTest.
inline void PrintTo(const QStringList& lines, std::ostream* out) {
  for (const QString& line : lines)
    *out << "\n    " << line.toStdString();
}

namespace {

const QString kSpots = u"tblItemSpots"_s;
const QString kJingles = u"tblItemPingles"_s;
const QString kItems = u"tblItems"_s;
const QString kLinks = u"tblItemsItemSpots"_s;
const QString kNaam = u"Naam"_s;
const QString kItemID = u"ItemID"_s;

// The statements of the export files, oldest first, with double quotes restored.
QStringList ExportedStatements(const QString& folder) {
  QStringList statements;
  for (const QString& name : QDir(folder).entryList({u"*.tql"_s}, QDir::Files, QDir::Name)) {
    QFile file(folder + u'/' + name);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read an export file");
    for (const QString& line : QString::fromLatin1(file.readAll()).split(u";\r\n"_s, Qt::SkipEmptyParts))
      statements += QString(line).replace(u'\'', u'"');
  }
  return statements;
}

// Carries out each statement and returns those that the database refused.
QStringList Replay(const QStringList& statements, const QString& databasePath) {
  QStringList refused;
  for (const QString& statement : statements) {
    try {
      dao::Database database = dao::OpenDatabase(databasePath);
      database.Execute(statement);
    } catch (const runtime::Error&) {
      refused += statement;
    }
  }
  return refused;
}

// The first words of each statement: its kind and table.
QStringList Kinds(const QStringList& statements) {
  QStringList kinds;
  for (const QString& statement : statements)
    kinds += statement.section(u' ', 0, statement.startsWith(u"UPDATE"_s) ? 1 : 2);
  return kinds;
}

QStringList LinesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read a text file");
  return QString::fromLatin1(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
}

// A spot made offline is lost from the copy when the list closes, and its number is given out again: of the two inserts
// the server accepts the first.
void TakeOutRepeatedNumber(CatalogueModel& meant) {
  meant.Remove(kSpots, kNaam, u"Offline tweede"_s);
}

// An apostrophe is logged as an asterisk.
void TurnApostrophes(CatalogueModel& meant) {
  meant.Find(kJingles, kNaam, u"Opener 't Uur"_s)[kNaam] = u"Opener *t Uur"_s;
}

// Deletes of jingles are not logged.
void KeepDeletedJingle(CatalogueModel& meant, CatalogueModel before) {
  meant.Add(kJingles, before.Find(kJingles, kNaam, u"Sluiter weekend"_s));
}

// Deletes of items and of their links are logged with the names of the copy tables, which the server does not have.
void KeepDeletedItem(CatalogueModel& meant, CatalogueModel before) {
  const CatalogueModel::Row item = before.Find(kItems, kNaam, u"Blok voor het nieuws"_s);
  meant.Add(kItems, item);
  meant.TakeRows(kLinks, kItemID, item[u"ID"_s], before);
}

// So the old links of a changed item stay, and its new links are refused where they have the same places.
void KeepOldLinks(CatalogueModel& meant, CatalogueModel before) {
  const QString item = before.Find(kItems, kNaam, u"Gemeentelijke mededelingen"_s)[u"ID"_s];
  meant.Remove(kLinks, kItemID, item);
  meant.TakeRows(kLinks, kItemID, item, before);
}

}  // namespace

TEST(WholeDay, ReplayedExportMatchesTheDayExceptForKnownDifferences) {
  const QTemporaryDir folder;
  Day day(folder.path());
  day.Live();
  const CatalogueModel before = CatalogueModel::Of(day.ServerAsItWas());
  const QStringList statements = ExportedStatements(day.Station() + u"/export"_s);
  EXPECT_EQ(Kinds(statements), (QStringList{u"INSERT INTO tblItemSpots"_s,
                                            u"UPDATE tblItemSpots"_s,
                                            u"UPDATE tblItemSpots"_s,
                                            u"DELETE FROM tblItemSpots"_s,
                                            u"INSERT INTO tblItemSpots"_s,
                                            u"INSERT INTO tblItemPingles"_s,
                                            u"UPDATE tblItemPingles"_s,
                                            u"INSERT INTO tblItems"_s,
                                            u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                                            u"INSERT INTO tblItemsItemSpots"_s,
                                            u"INSERT INTO tblItemsItemSpots"_s,
                                            u"INSERT INTO tblItemsItemSpots"_s,
                                            u"INSERT INTO tblItems"_s,
                                            u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                                            u"UPDATE tblItems"_s,
                                            u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                                            u"INSERT INTO tblItemsItemSpots"_s,
                                            u"INSERT INTO tblItemsItemSpots"_s,
                                            u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                                            u"DELETE FROM tblCopie_Items"_s,
                                            u"UPDATE tblItems"_s}));
  // Refused: the consequences of the rules above, and deletes of links that the new items did not have yet.
  EXPECT_EQ(Kinds(Replay(statements, day.ServerAsItWas())),
            (QStringList{u"INSERT INTO tblItemSpots"_s, u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                         u"DELETE FROM tblCopie_ItemsItemSpots"_s, u"DELETE FROM tblCopie_ItemsItemSpots"_s,
                         u"INSERT INTO tblItemsItemSpots"_s, u"INSERT INTO tblItemsItemSpots"_s,
                         u"DELETE FROM tblCopie_ItemsItemSpots"_s, u"DELETE FROM tblCopie_Items"_s}));

  CatalogueModel expected = day.Meant();
  TakeOutRepeatedNumber(expected);
  TurnApostrophes(expected);
  KeepDeletedJingle(expected, before);
  KeepDeletedItem(expected, before);
  KeepOldLinks(expected, before);
  EXPECT_EQ(CatalogueModel::Of(day.ServerAsItWas()).Lines(), expected.Lines());

  // Offline the server is not changed; the log is empty again, and each new sound file is in Audio.tae.
  EXPECT_EQ(CatalogueModel::Of(day.Server()).Lines(), before.Lines());
  dao::Database local = dao::OpenDatabase(day.Station() + u"/data/OvalistoLocal.mdb"_s);
  EXPECT_EQ(local.OpenRecordset(u"SELECT ID FROM tblOfflineLog"_s).RecordCount(), 0);
  EXPECT_EQ(LinesOf(day.Station() + u"/export/Audio.tae"_s),
            (QStringList{u"D:\\audio\\Spots\\Brasserie Het Sluisje - menu.wav"_s,
                         u"D:\\audio\\Spots\\Apotheek Centrum - griepprik.mp3"_s,
                         u"D:\\audio\\Spots\\Apotheek Centrum - griepprik.mp3"_s,
                         u"D:\\audio\\Jingles\\Sluiter Polderstem.wav"_s}));
}
