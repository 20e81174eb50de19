// SPDX-License-Identifier: MIT
// Eight planners on a primary with a synchronous standby. The primary is killed and the standby promoted.
#include "tests/platform/dao/postgres/ServerScratch.h"
#include "tests/support/Fork.h"
#include "tests/support/LongTests.h"

#include <QDir>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <iostream>
#include <new>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using scratch::ErrorOf;
using testing_support::Cluster;

namespace {

constexpr int kPlanners = 8;

struct Day {
  std::atomic<int> stored[kPlanners];  // the number of acknowledged changes of each planner
  std::atomic<int> twice;              // refused as a duplicate without an earlier error
  std::atomic<bool> over;
};

// Stores one spot after the other; repeats after an error, like a planner who presses OK again.
void Plan(const QString& path, int planner, Day& day) {
  while (!day.over) {
    const int id = planner * 1'000'000 + day.stored[planner] + 1;
    const QString error = ErrorOf([&] {
      dao::OpenDatabase(path).Execute(u"INSERT INTO tblSpots (ID, Aktief) VALUES (%1, %2)"_s.arg(id).arg(planner));
    });
    if (error.isEmpty() || error.contains(u"toch bewaard"_s)) {
      ++day.stored[planner];
    } else if (error.contains(u"bestaat al"_s)) {
      ++day.twice;
      ++day.stored[planner];
    } else {
      std::this_thread::sleep_for(100ms);
    }
  }
}

class Failover : public testing::Test {
 protected:
  Failover() : primary_(Durable()) {
    const QTemporaryDir folder;
    Cluster::GiveTo(folder.path());
    const QString copy = folder.filePath(u"copy"_s);
    primary_.RunProgram(u"pg_basebackup"_s, {u"-R"_s, u"-c"_s, u"fast"_s, u"-U"_s, u"planner"_s, u"-h"_s,
                                             primary_.SocketFolder(), u"-D"_s, copy});
    Cluster::Settings settings = Durable();
    settings.copyOf = copy;
    standby_ = std::make_unique<Cluster>(settings);
    primary_.Sql(u"ALTER SYSTEM SET synchronous_standby_names = '*'"_s);
    primary_.Sql(u"SELECT pg_reload_conf()"_s);
    while (primary_.Sql(u"SELECT sync_state FROM pg_stat_replication"_s) != QStringList{u"sync"_s})
      std::this_thread::sleep_for(5ms);
  }

  static Cluster::Settings Durable() {
    Cluster::Settings settings;
    settings.durable = true;
    return settings;
  }

  QString Path() const {
    return u"postgresql://planner@/postgres?host=%1,%2\\Zender.mdb"_s.arg(primary_.SocketFolder(),
                                                                          standby_->SocketFolder());
  }

  Cluster primary_;
  std::unique_ptr<Cluster> standby_;
};

TEST_F(Failover, AcknowledgedChangesSurviveAndPlannersContinueWithin15Seconds) {
  dao::CreateDatabase(Path());
  dao::OpenDatabase(Path()).CreateTable(scratch::Spots());
  dao::CloseKeptConnections();
  auto* day = new (::mmap(nullptr, sizeof(Day), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Day{};
  std::vector<pid_t> children;
  for (int planner = 0; planner < kPlanners; ++planner) {
    children.push_back(testing_support::Fork());
    if (children.back() != 0) continue;
    Plan(Path(), planner, *day);
    _exit(0);
  }
  const auto allStored = [&](const std::array<int, kPlanners>& least) {
    for (int planner = 0; planner < kPlanners; ++planner) {
      if (day->stored[planner] < least[static_cast<std::size_t>(planner)]) return false;
    }
    return true;
  };
  std::array<int, kPlanners> goal{};
  goal.fill(20 * testing_support::LongTests());
  while (!allStored(goal))
    std::this_thread::sleep_for(5ms);
  primary_.Kill();
  const auto killed = std::chrono::steady_clock::now();
  std::this_thread::sleep_for(1s);  // until the failure is noticed
  for (int planner = 0; planner < kPlanners; ++planner)
    goal[static_cast<std::size_t>(planner)] = day->stored[planner] + 2;
  standby_->Sql(u"ALTER SYSTEM SET synchronous_standby_names = ''"_s);
  standby_->Sql(u"SELECT pg_promote()"_s);
  while (!allStored(goal) && std::chrono::steady_clock::now() - killed < 60s)
    std::this_thread::sleep_for(5ms);
  const auto took = std::chrono::steady_clock::now() - killed;
  EXPECT_LT(took, 15s);
  std::cout << "all planners went on after " << std::chrono::duration<double>(took).count() << " s\n";
  day->over = true;
  for (const pid_t child : children)
    testing_support::WaitFor(child);
  EXPECT_EQ(day->twice, 0);
  for (int planner = 0; planner < kPlanners; ++planner) {
    const QStringList stored = standby_->Sql(
        u"SELECT count(*) FROM \"Zender\".\"tblSpots\" WHERE \"Aktief\" = %1 AND \"ID\" %% 1000000 BETWEEN 1 AND %2"_s
            .replace(u"%%"_s, u"%"_s)
            .arg(planner)
            .arg(day->stored[planner]));
    EXPECT_EQ(stored.first().toInt(), day->stored[planner]) << "planner " << planner;
  }
  ::munmap(day, sizeof(Day));
}

}  // namespace
