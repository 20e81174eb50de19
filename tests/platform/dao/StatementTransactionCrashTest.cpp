// SPDX-License-Identifier: MIT
// A transaction of several statements whose process is killed, or whose disk fails, at each of its file calls.
#include "platform/dao/FileSystemScope.h"
#include "platform/dao/StatementTransaction.h"
#include "platform/files/HookedFileSystem.h"
#include "platform/jet/check/Check.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

const QString kAllSpots = u"SELECT ID, Naam FROM tblSpots ORDER BY ID"_s;
constexpr int kRows = 300;  // over several pages

void ChangeMuch(const QString& path) {
  dao::StatementTransaction transaction(dao::OpenDatabase(path));
  transaction.Execute(u"DELETE FROM tblSpots WHERE ID = 2"_s);
  for (int id = 10; id < 10 + kRows; ++id)
    transaction.Execute(u"INSERT INTO tblSpots (ID, Naam) VALUES (%1, \"nieuw\")"_s.arg(id));
  transaction.Execute(u"UPDATE tblSpots SET Naam = \"anders\" WHERE ID = 1"_s);
  transaction.Commit();
}

// The n-th call that is made ends the process, or fails; true when there were that many.
class NthCall {
 public:
  explicit NthCall(int n, bool kills)
      : files_(files::HostFileSystem(),
               [this, n, kills](files::FileCall&, const files::HookedFileSystem::Make& make) -> std::int64_t {
                 if (calls_++ != n) return make();
                 if (kills) ::raise(SIGKILL);
                 return -EIO;
               }),
        scope_(files_) {}
  bool Came(int n) const { return calls_ > n; }

 private:
  int calls_ = 0;
  files::HookedFileSystem files_;
  dao::FileSystemScope scope_;
};

void ExpectAllOrNothing(const QString& path, const QStringList& before, const QStringList& after) {
  const QStringList rows = Rows(dao::OpenDatabase(path), kAllSpots);
  EXPECT_TRUE(rows == before || rows == after) << rows.size();
  EXPECT_FALSE(jet::HasProblem(jet::CheckDatabase(*jet::Database::Open(path.toStdString()))));
}

TEST(StatementTransactionCrash, AtEachFileCallAllOfItIsThereOrNothing) {
  const SpotScratch original;
  const QStringList before = Rows(original.Open(), kAllSpots);
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"planning.mdb"_s);
  QFile::copy(original.Path(), path);
  ChangeMuch(path);
  const QStringList after = Rows(dao::OpenDatabase(path), kAllSpots);
  ASSERT_EQ(after.size(), before.size() - 1 + kRows);
  for (const bool kills : {true, false}) {
    int n = 0;
    for (bool came = true; came; ++n) {
      SCOPED_TRACE(n);
      const QTemporaryDir copy;
      const QString station = copy.filePath(u"planning.mdb"_s);
      QFile::copy(original.Path(), station);
      const pid_t child = ::fork();
      if (child == 0) {
        const NthCall call(n, kills);
        try {
          ChangeMuch(station);
        } catch (const runtime::Error&) {
          // the disk failed, and the transaction said so
        }
        ::_exit(call.Came(n) ? 1 : 0);
      }
      int status = 0;
      ::waitpid(child, &status, 0);
      came = !WIFEXITED(status) || WEXITSTATUS(status) == 1;
      ExpectAllOrNothing(station, before, after);
    }
    EXPECT_GT(n, 10);
  }
}

}  // namespace
