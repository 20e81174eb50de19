// SPDX-License-Identifier: MIT
// An acknowledged change is stored exactly once, despite failures of connections, sessions, servers and programs.
#include "platform/dao/WriteWait.h"
#include "platform/dao/postgres/ServerStorage.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/postgres/Bouncer.h"
#include "tests/platform/dao/postgres/ServerScratch.h"
#include "tests/support/Fork.h"
#include "tests/support/LongTests.h"
#include "tests/support/Proxy.h"

#include <QFile>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <new>
#include <random>
#include <thread>

using namespace Qt::StringLiterals;
using namespace scratch;
using namespace std::chrono_literals;
using testing_support::Bouncer;
using testing_support::Cluster;
using testing_support::LongTests;
using testing_support::Proxy;

namespace {

class Durability : public ServerScratch {
 protected:
  Durability() = default;
  explicit Durability(Cluster& cluster) : ServerScratch(cluster) {}
};

QString Insert(int id, int writer) {
  return u"INSERT INTO tblSpots (ID, Naam, Aktief) VALUES (%1, \"%1\", %2)"_s.arg(id).arg(writer);
}

// For a thousand repetitions: SPOTROOSTER_LONG_TESTS=34.
TEST_F(Durability, AConnectionLostAfterTheCommitNeitherDoublesNorLosesRows) {
  Proxy proxy(Server().SocketFolder());
  const QString path = PathBehind(proxy.SocketFolder());
  const int changes = 30 * LongTests();
  int errors = 0;
  for (int id = 100; id < 100 + changes; ++id) {
    std::atomic<bool> armed = true;
    proxy.CutLines([&](std::string_view said) {
      return said.find("COMMIT") != std::string_view::npos && said.find("INSERT INTO") != std::string_view::npos &&
             armed.exchange(false);
    });
    // As a user who presses OK again after an error, with a number that is still free.
    for (int attempt = 0; attempt < 5; ++attempt) {
      dao::Database database = dao::OpenDatabase(path);
      if (ErrorOf([&] {
            database.Execute(u"INSERT INTO tblSpots (ID, Naam) SELECT MAX(ID) + 1, \"n%1\" FROM tblSpots"_s.arg(id));
          }).isEmpty()) {
        break;
      }
      ++errors;
    }
    proxy.CutLines({});
  }
  EXPECT_EQ(proxy.Cuts(), changes);
  EXPECT_EQ(Count(), 3 + changes) << errors << " errors";
  EXPECT_EQ(Server().Sql(u"SELECT \"Naam\" FROM \"%1\".\"tblSpots\" GROUP BY 1 HAVING count(*) > 1"_s.arg(Schema())),
            QStringList());
}

TEST_F(Durability, AnUncertainChangeIsCheckedBeforeTheNext) {
  Proxy proxy(Server().SocketFolder());
  const QString path = PathBehind(proxy.SocketFolder());
  dao::Database database = dao::OpenDatabase(path);
  std::atomic<bool> away = false;
  proxy.CutLines([&](std::string_view said) {
    if (said.find("COMMIT") != std::string_view::npos) away = true;
    return away.load();
  });
  const QString error = ExecuteError(database, Insert(50, 1));
  EXPECT_TRUE(error.contains(u"viel weg terwijl uw wijziging bewaard werd. Of ze bewaard is, is nog niet zeker"_s))
      << qPrintable(error);
  proxy.CutLines({});
  // It was stored: the next change reports that instead of storing it again.
  EXPECT_TRUE(ExecuteError(dao::OpenDatabase(path), Insert(51, 1))
                  .contains(u"wegviel, is toch bewaard. Wat u nu deed, is niet"_s));
  EXPECT_EQ(ExecuteError(dao::OpenDatabase(path), Insert(52, 1)), QString());
  EXPECT_EQ(Rows(Open(), u"SELECT ID FROM tblSpots WHERE ID > 10 ORDER BY ID"_s), (QStringList{u"50"_s, u"52"_s}));
}

// The writers count acknowledged changes in memory that they share with the test.
struct Counts {
  std::atomic<int> acknowledged[8];
  std::atomic<int> started;
};

class Writers {
 public:
  Writers()
      : counts_(new (::mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                    Counts{}) {}
  ~Writers() { ::munmap(counts_, sizeof(Counts)); }
  Writers(const Writers&) = delete;
  Writers& operator=(const Writers&) = delete;

  // Each writer stores pairs of rows, one pair per statement; no error is expected.
  void Run(const QString& path, int changes) {
    dao::CloseKeptConnections();
    for (int writer = 0; writer < 8; ++writer) {
      const pid_t child = testing_support::Fork();
      if (child == 0) _exit(Write(path, writer, changes));
      children_.push_back(child);
    }
  }

  // Kills a writer during its work.
  void KillOne(int changes) {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (counts_->acknowledged[0] < changes / 3 && std::chrono::steady_clock::now() < end)
      std::this_thread::sleep_for(1ms);
    ::kill(children_[0], SIGKILL);
  }

  bool Wait() {
    bool all = true;
    for (std::size_t i = 0; i < children_.size(); ++i) {
      const int status = testing_support::WaitFor(children_[i]);
      if (i != 0) all = all && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    return all;
  }

  int Acknowledged(int writer) const { return counts_->acknowledged[writer]; }

 private:
  int Write(const QString& path, int writer, int changes) {
    try {
      const dao::WriteWaitScope patient(60s);
      for (int change = 0; change < changes; ++change) {
        const int id = 1000 + (writer * changes + change) * 2;
        dao::OpenDatabase(path).Execute(
            u"INSERT INTO tblSpots (ID, Naam, Aktief) SELECT %1 + ID, \"%1\", %2 FROM tblPaar"_s.arg(id).arg(writer));
        ++counts_->acknowledged[writer];
      }
      return 0;
    } catch (const std::exception& error) {
      fprintf(stderr, "writer %d: %s\n", writer, error.what());
      return 1;
    }
  }

  Counts* counts_;
  std::vector<pid_t> children_;
};

// For ten thousand changes per writer: SPOTROOSTER_LONG_TESTS=200.
void WriteWithEight(const QString& path, Cluster& cluster, const QString& schema) {
  const int changes = 50 * LongTests();
  dao::OpenDatabase(path).CreateTable(Spots(u"tblPaar"_s));  // the two rows of a pair
  for (const int row : {1, 2})
    dao::OpenDatabase(path).Execute(u"INSERT INTO tblPaar (ID) VALUES (%1)"_s.arg(row));
  Writers writers;
  writers.Run(path, changes);
  writers.KillOne(changes);
  EXPECT_TRUE(writers.Wait());
  for (int writer = 0; writer < 8; ++writer) {
    const int stored =
        cluster
            .Sql(u"SELECT count(*) FROM \"%1\".\"tblSpots\" WHERE \"ID\" >= 1000 AND \"Aktief\" = %2"_s.arg(schema).arg(
                writer))
            .first()
            .toInt();
    EXPECT_EQ(stored % 2, 0);  // pairs only
    if (writer == 0) {
      EXPECT_GE(stored / 2, writers.Acknowledged(0));
      EXPECT_LE(stored / 2, writers.Acknowledged(0) + 1);
    } else {
      EXPECT_EQ(stored / 2, changes);
    }
  }
}

TEST_F(Durability, EightWritersLoseNothingWhenOneIsKilled) {
  WriteWithEight(Path(), Server(), Schema());
}

TEST_F(Durability, EightWritersThroughAPoolerLoseNothing) {
  if (!Bouncer::IsInstalled()) GTEST_SKIP() << "pgbouncer is not installed";
  const Bouncer bouncer(Server());
  WriteWithEight(PathBehind(bouncer.SocketFolder()), Server(), Schema());
}

TEST_F(Durability, APoolerGivesTheSameResults) {
  if (!Bouncer::IsInstalled()) GTEST_SKIP() << "pgbouncer is not installed";
  const Bouncer bouncer(Server(), 1);
  const QString path = PathBehind(bouncer.SocketFolder());
  const QStringList statements = {
      u"SELECT * FROM tblSpots ORDER BY Naam DESC"_s, u"SELECT MAX(ID) AS m FROM tblSpots"_s,
      u"SELECT a.ID, b.ID FROM tblSpots AS a INNER JOIN tblSpots AS b ON a.ID = b.Aktief"_s};
  for (const QString& statement : statements)
    EXPECT_EQ(Rows(dao::OpenDatabase(path), statement), Rows(Open(), statement));
  EXPECT_EQ(
      dao::OpenDatabase(path).Execute(u"UPDATE tblSpots SET StartDatum = 45658.75, Memo = \"\u00e9\" WHERE ID = 2"_s),
      1);
  EXPECT_FALSE(ExecuteError(dao::OpenDatabase(path), Insert(2, 1)).isEmpty());
  EXPECT_EQ(dao::OpenDatabase(path).Execute(u"DELETE FROM tblSpots WHERE ID = 3"_s), 1);
  EXPECT_EQ(Rows(Open(), u"SELECT ID, Memo, StartDatum FROM tblSpots"_s),
            (QStringList{u"1|-|-"_s, u"2|\u00e9|2025-01-01 18:00:00"_s}));
}

class OwnCluster : public testing::Test {
 protected:
  void Begin(const Cluster::Settings& settings) {
    dao::CloseKeptConnections();
    cluster_ = std::make_unique<Cluster>(settings);
    path_ = cluster_->Url() + u"\\Zender.mdb"_s;
    dao::CreateDatabase(path_);
    dao::OpenDatabase(path_).CreateTable(Spots());
  }
  int Count() const { return static_cast<int>(Rows(dao::OpenDatabase(path_), u"SELECT ID FROM tblSpots"_s).size()); }

  std::unique_ptr<Cluster> cluster_;
  QString path_;
};

TEST_F(OwnCluster, AcknowledgedChangesSurviveACrashOfTheServer) {
  Cluster::Settings settings;
  settings.durable = true;
  Begin(settings);
  for (int id = 1; id <= 20; ++id)
    dao::OpenDatabase(path_).Execute(Insert(id, 0));
  cluster_->Stop();
  const QString error = ExecuteError(dao::OpenDatabase(path_), Insert(21, 0));
  EXPECT_TRUE(error.contains(u"niet bereikbaar"_s) || error.contains(u"verbroken"_s)) << qPrintable(error);
  cluster_->Start();
  EXPECT_EQ(ExecuteError(dao::OpenDatabase(path_), Insert(21, 0)), QString());
  EXPECT_EQ(Count(), 21);
}

TEST_F(OwnCluster, AFullDiskIsAnErrorAndTheNextStatementWorks) {
  const QTemporaryDir folder;
  const QString flag = folder.filePath(u"vol"_s);
  QFile::setPermissions(folder.path(),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
  // The server runs as another user, who may have no access to the folder of the build.
  const QString library = folder.filePath(u"full_disk.so"_s);
  ASSERT_TRUE(QFile::copy(QStringLiteral(SPOTROOSTER_FULL_DISK_LIBRARY), library));
  QFile::setPermissions(library, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther | QFile::ExeOther);
  Cluster::Settings settings;
  settings.environment = {{u"LD_PRELOAD"_s, library}, {u"SPOTROOSTER_FULL_DISK"_s, flag}};
  Begin(settings);
  dao::OpenDatabase(path_).Execute(Insert(1, 0));
  QFile(flag).open(QIODevice::WriteOnly);
  QString error;
  std::mt19937 random(7);
  QString memo;
  while (memo.size() < 60000)
    memo += QChar(static_cast<char16_t>(u'a' + random() % 26));
  for (int id = 2; error.isEmpty() && id < 50; ++id)
    error = ExecuteError(dao::OpenDatabase(path_),
                         u"INSERT INTO tblSpots (ID, Memo) VALUES (%1, \"%2\")"_s.arg(id).arg(memo));
  EXPECT_TRUE(error.contains(u"vol"_s)) << qPrintable(error.left(300));
  const int before = Count();
  QFile::remove(flag);
  EXPECT_EQ(ExecuteError(dao::OpenDatabase(path_), u"INSERT INTO tblSpots (ID, Memo) VALUES (99, \"%1\")"_s.arg(memo)),
            QString());
  EXPECT_EQ(Count(), before + 1);
}

}  // namespace
