// SPDX-License-Identifier: MIT
// Exports carried out: a file of ten thousand statements on a station of a hundred thousand item-spots by
// `spotrooster-db apply`, compared with `sqlite3 db < file`, the same statements in one transaction; then the same file
// with its basis, a twentieth of the records in conflict, compared with the file alone. Each round works on a new copy
// of the database. usage: ApplyBench [STATEMENTS [SPOTS [FOLDER]]]
#include "bench/BenchFolder.h"
#include "bench/ExampleSpot.h"
#include "bench/Plain.h"
#include "data/ExportBasis.h"
#include "data/Rows.h"
#include "data/Schema.h"
#include "data/Statements.h"
#include "export/ContentDigest.h"
#include "platform/dao/Database.h"
#include "platform/dao/StatementTransaction.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using bench::ExampleSpot;
using bench::Require;

namespace {

constexpr int kApplyRounds = 9;
constexpr int kInsertEvery = 10;
constexpr int kDeleteEvery = 20;
constexpr int kConflictEvery = 20;

const QStringList kFields{u"ID"_s,        u"Path"_s,    u"Naam"_s,           u"LengteSec"_s,
                          u"StartPunt"_s, u"Mixpunt"_s, u"StartDatum"_s,     u"StartUur"_s,
                          u"EindDatum"_s, u"EindUur"_s, u"AantalGedraaid"_s, u"LaatstGedraaid"_s,
                          u"Aktief"_s};

basis::Row ValuesOf(const ItemSpotRow& row) {
  const auto whole = [](const std::optional<qint32>& value) { return dao::Value(std::int64_t{value.value_or(0)}); };
  return {std::int64_t{row.id},    row.path.toStdU16String(), row.naam.toStdU16String(), whole(row.lengteSec),
          whole(row.startPunt),    whole(row.mixpunt),        whole(row.startDatum),     whole(row.startUur),
          whole(row.eindDatum),    whole(row.eindUur),        std::int64_t{0},           dao::Value(),
          std::int64_t{row.aktief}};
}

class Files {
 public:
  Files(int statements, int spots, const QString& place) : folder_(place + u"/ApplyBench-XXXXXX"), spots_(spots) {
    MakeServer();
    MakeExport(statements);
    MakePlain();
  }

  QString At(const QString& name) const { return folder_.filePath(name); }
  QString Export() const { return At(u"20261122101500.tql"_s); }

  void Renew(const QString& from, const QString& to) const {
    QFile::remove(At(to));
    Require(QFile::copy(At(from), At(to)), "copy a database");
  }
  void WithBasis(bool with) const {
    QFile::remove(basis::PathOf(Export()));
    if (with) Require(QFile::copy(At(u"basis"_s), basis::PathOf(Export())), "copy the basis");
  }

 private:
  void MakeServer() const {
    schema::CreateServerDatabase(At(u"server.mdb"_s));
    dao::StatementTransaction filling(dao::OpenDatabase(At(u"server.mdb"_s)));
    for (int id = 1; id <= spots_; ++id)
      filling.Insert(u"tblItemSpots"_s, ValuesOf(ExampleSpot(id)));
    filling.Commit();
  }

  // Another last day for most; each is of a spot of its own, so that all can be carried out in any database.
  void MakeExport(int statements) {
    QByteArray content;
    QByteArray entries;
    QByteArray conflicts;
    for (int i = 0; i < statements; ++i) {
      const int id = 1 + i * (spots_ / statements);
      const bool inserts = i % kInsertEvery == 0;
      const bool deletes = !inserts && i % kDeleteEvery == 1;
      const ItemSpotRow before = ExampleSpot(inserts ? spots_ + 1 + i : id);
      ItemSpotRow after = before;
      after.eindDatum = 45800;
      const QString statement = inserts   ? statements::InsertItemSpot(after, u"tblItemSpots"_s)
                                : deletes ? statements::Delete(id, u"tblItemSpots"_s, u"ID"_s)
                                          : statements::UpdateItemSpot(after, u"tblItemSpots"_s);
      content += statements::LogText(statement).toLatin1() + ";\r\n";
      basis::Entry entry{u"tblItemSpots"_s, u"ID"_s, before.id, kFields, {}, {}, {}};
      if (!inserts) entry.before.append(ValuesOf(before));
      if (!deletes) entry.after.append(ValuesOf(after));
      entries += basis::EntryLine(entry);
      if (!inserts && !deletes && i % kConflictEvery == 2)
        conflicts += "UPDATE tblItemSpots SET EindDatum = 45900 WHERE ID = " + QByteArray::number(id) + '\n';
    }
    Write(Export(), content);
    Write(At(u"basis"_s), basis::HeaderLine({u"bench"_s, ContentDigest::Of(content), content.size(), u"A"_s}) +
                              entries + basis::LastLine(statements));
    Renew(u"server.mdb"_s, u"changed.mdb"_s);
    dao::StatementTransaction changing(dao::OpenDatabase(At(u"changed.mdb"_s)));
    for (const QByteArray& line : conflicts.split('\n')) {
      if (!line.isEmpty()) changing.Execute(QString::fromLatin1(line));
    }
    changing.Commit();
    plain_ = "PRAGMA synchronous=EXTRA;BEGIN;\n" + content + "COMMIT;\n";
  }

  void MakePlain() const {
    bench::Plain plain(At(u"plain.sqlite"_s));
    plain.Run(
        "CREATE TABLE tblItemSpots (ID INTEGER PRIMARY KEY, Path TEXT, Naam TEXT, LengteSec INTEGER, "
        "StartPunt INTEGER, Mixpunt INTEGER, StartDatum REAL, StartUur INTEGER, EindDatum REAL, EindUur INTEGER, "
        "AantalGedraaid INTEGER, LaatstGedraaid REAL, Aktief INTEGER)");
    plain.Run("BEGIN");
    for (int id = 1; id <= spots_; ++id) {
      plain.Run(statements::InsertItemSpot(ExampleSpot(id), u"tblItemSpots"_s).replace(u'"', u'\'').toLatin1());
    }
    plain.Run("COMMIT");
    Write(At(u"statements.sql"_s), plain_);
  }

  static void Write(const QString& path, const QByteArray& content) {
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "write a file");
  }

  const QTemporaryDir folder_;
  const int spots_;
  QByteArray plain_;
};

void Apply(const Files& files, int expectedExit) {
  const std::string command = std::string(SPOTROOSTER_DB) + " apply '" + files.At(u"work.mdb"_s).toStdString() + "' '" +
                              files.Export().toStdString() + "' --from A > /dev/null";
  const int status = std::system(command.c_str());
  Require(WIFEXITED(status) && WEXITSTATUS(status) == expectedExit, "carry out the export");
}

int Changed(const QString& database) {
  dao::Recordset rows = dao::OpenDatabase(database).OpenRecordset(
      u"SELECT COUNT(*) AS Aantal FROM tblItemSpots WHERE EindDatum = 45800"_s);
  return rows.Field(0).toInt();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int statements = argc > 1 ? std::atoi(argv[1]) : 10'000;
  const int spots = argc > 2 ? std::atoi(argv[2]) : 100'000;
  const Files files(statements, spots, bench::BenchFolder(argc > 3 ? argv[3] : nullptr));
  const std::string sqlite = "sqlite3 '" + files.At(u"work.sqlite"_s).toStdString() + "' < '" +
                             files.At(u"statements.sql"_s).toStdString() + '\'';
  bench::Sides plain(kApplyRounds);
  bench::Sides merging(kApplyRounds);
  for (int round = 0; round < kApplyRounds; ++round) {
    files.WithBasis(false);
    files.Renew(u"server.mdb"_s, u"work.mdb"_s);
    files.Renew(u"plain.sqlite"_s, u"work.sqlite"_s);
    plain.Ours([&] { Apply(files, 0); });
    plain.Beside([&] { Require(std::system(sqlite.c_str()) == 0, "sqlite3"); });
    const int changed = Changed(files.At(u"work.mdb"_s));
    Require(
        bench::Plain(files.At(u"work.sqlite"_s)).Number("SELECT COUNT(*) FROM tblItemSpots WHERE EindDatum=45800") ==
            changed,
        "the same rows");
    files.Renew(u"changed.mdb"_s, u"work.mdb"_s);
    merging.Beside([&] { Apply(files, 0); });
    files.WithBasis(true);
    files.Renew(u"changed.mdb"_s, u"work.mdb"_s);
    merging.Ours([&] { Apply(files, 3); });
    Require(Changed(files.At(u"work.mdb"_s)) == changed - statements / kConflictEvery, "conflicts wait");
  }
  plain.Print("apply-10000", "10 000 statements on 100 000 spots, without a basis, beside sqlite3");
  merging.Print("apply-basis", "with a basis and conflicts, beside without");
  return 0;
}
