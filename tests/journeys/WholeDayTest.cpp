// SPDX-License-Identifier: MIT
// The exports of a day offline are carried out on a copy of the server from the moment at which work became offline,
// and compared with the planner's work of that day.
#include "export/apply/Apply.h"
#include "platform/dao/Database.h"
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
const QString kNaam = u"Naam"_s;

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

// Carries out the exports as the administrator does. Returns what the report says of records that were not simply
// carried out.
QStringList CarryOut(const QString& folder, const QString& databasePath) {
  QStringList remarks;
  for (const QString& path : apply::ExportsIn(folder)) {
    const apply::Result result =
        apply::CarryOut(databasePath, apply::ReadExport(path), {u"STUDIO1"_s, u"beheer"_s, false, {}});
    for (const apply::ReportLine& line : result.lines) {
      if (line.what == apply::What::Renumbered || line.what == apply::What::Conflict ||
          line.what == apply::What::Unchanged)
        remarks += line.text;
    }
  }
  return remarks;
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

// A spot made offline is lost from the copy when the list closes, and its number is given out again: on the server the
// second spot gets the next one.
void Renumber(CatalogueModel& meant) {
  CatalogueModel::Row& second = meant.Find(kSpots, kNaam, u"Offline tweede"_s);
  second[u"ID"_s] = QString::number(second[u"ID"_s].toInt() + 1);
}

// Deletes of jingles are not logged.
void KeepDeletedJingle(CatalogueModel& meant, CatalogueModel before) {
  meant.Add(kJingles, before.Find(kJingles, kNaam, u"Sluiter weekend"_s));
}

}  // namespace

TEST(WholeDay, ItsExportsCarriedOutGiveWhatThePlannerMeant) {
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
  CatalogueModel expected = day.Meant();
  const QString number = expected.Find(u"tblItemSpots"_s, kNaam, u"Offline tweede"_s)[u"ID"_s];
  EXPECT_EQ(CarryOut(day.Station() + u"/export"_s, day.ServerAsItWas()),
            QStringList{u"item-spot %1 \"Offline tweede\" is nieuw en kreeg nummer %2: %1 was al in gebruik"_s.arg(
                number, QString::number(number.toInt() + 1))});
  Renumber(expected);
  KeepDeletedJingle(expected, before);
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
