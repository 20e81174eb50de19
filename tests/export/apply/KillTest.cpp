// SPDX-License-Identifier: MIT
// A process that is killed at any file call while it carries out exports: after a second run each file counts once.
#include "platform/dao/FileSystemScope.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/jet/check/Check.h"
#include "platform/jet/database/Database.h"
#include "platform/runtime/Error.h"
#include "tests/export/apply/Shared.h"
#include "tests/support/Fork.h"

#include <QFile>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>

using namespace Qt::StringLiterals;

namespace {

class Kills : public SharedStation {
 protected:
  // Two files whose second run would show: new records, and switching off, on and off again.
  Kills() {
    Fill();
    Workstation a = At(u"A"_s);
    a.InsertSpot(NewSpot(4, u"Apotheek"_s));
    a.SetAktief(u"tblItemSpots"_s, 1, 0);
    files_ += a.Export();
    a.SetAktief(u"tblItemSpots"_s, 1, 1);
    a.InsertSpot(NewSpot(5, u"Garage"_s));
    a.UpdateItem(a.Item(1), {5, 4});
    files_ += a.Export();
    OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (4, \"Slijter\")"_s);  // so that numbers change
    all_ = Folder(u"all"_s) + u"/server.mdb"_s;
    QFile::copy(Server(), all_);
    CarryOut(all_);
  }

  void CarryOut(const QString& server) const {
    for (const QString& path : files_)
      apply::CarryOut(server, apply::ReadExport(path), {u"A"_s, {}, false, {}});
  }

  static QStringList Content(const QString& server) {
    QStringList lines;
    dao::Database database = dao::OpenDatabase(server);
    for (const QString& table : {u"tblItemSpots"_s, u"tblItems"_s, u"tblItemsItemSpots"_s, u"tblVerwerktNummers"_s}) {
      dao::Recordset rows = database.OpenRecordset(u"SELECT * FROM "_s + table);
      for (; !rows.Eof(); rows.MoveNext()) {
        QString line = table;
        for (int i = 0; i < rows.FieldNames().size(); ++i)
          line += u'|' + rows.Field(i).toString();
        lines += line;
      }
    }
    lines.sort();
    return lines;
  }

  // Kills the n-th call; whether there were that many.
  bool KillAt(int n) {
    const QString server = Folder(u"killed"_s) + u"/server.mdb"_s;
    QFile::remove(server);
    QFile::copy(Server(), server);
    const pid_t child = testing_support::Fork();
    if (child == 0) {
      int calls = 0;
      files::HookedFileSystem files(files::HostFileSystem(),
                                    [&](files::FileCall&, const files::HookedFileSystem::Make& make) -> std::int64_t {
                                      if (calls++ == n) ::raise(SIGKILL);
                                      return make();
                                    });
      const dao::FileSystemScope scope(files);
      CarryOut(server);
      ::_exit(0);
    }
    const int status = testing_support::WaitFor(child);
    CarryOut(server);
    EXPECT_EQ(Content(server), Content(all_)) << n;
    EXPECT_EQ(apply::ReadLedger(dao::OpenDatabase(server)).size(), files_.size());
    EXPECT_FALSE(jet::HasProblem(jet::CheckDatabase(*jet::Database::Open(server.toStdString()))));
    return WIFSIGNALED(status);
  }

 private:
  QStringList files_;
  QString all_;
};

}  // namespace

// Every one with SPOTROOSTER_APPLY_KILLS, else each third.
TEST_F(Kills, AtEachFileCallEachFileCountsOnce) {
  const int step = std::getenv("SPOTROOSTER_APPLY_KILLS") != nullptr ? 1 : 3;
  int kills = 0;
  for (int n = 0; KillAt(n) && !HasFailure(); n += step)
    ++kills;
  EXPECT_GT(kills, 20);
  std::printf("%d kills at file calls\n", kills);
}

TEST_F(Kills, AtRandomMomentsEachFileCountsOnce) {
  const char* count = std::getenv("SPOTROOSTER_APPLY_KILLS");
  const int kills = count != nullptr ? std::atoi(count) : 20;
  std::mt19937 random(20261122);
  int ended = 0;
  for (int i = 0; i < kills && !HasFailure(); ++i)
    ended += KillAt(static_cast<int>(random() % 400)) ? 1 : 0;
  EXPECT_GT(ended, 0);
  std::printf("%d kills at random calls, of %d\n", ended, kills);
}
