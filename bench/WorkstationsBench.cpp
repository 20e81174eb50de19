// SPDX-License-Identifier: MIT
// A hundred workstations, each a process, doing a day's work on one PostgreSQL server; compared with pgbench, which
// sends the same queries at the same rate from as many connections. The queries are read from the program's own
// connection, so they are those of the program. usage: WorkstationsBench [SECONDS [WORKSTATIONS]]
#include "bench/Figures.h"
#include "bench/PgbenchScript.h"
#include "bench/Plain.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Schema.h"
#include "data/Writes.h"
#include "data/forms/EditorForm.h"
#include "platform/dao/Database.h"
#include "platform/dao/postgres/Connection.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/UserMessage.h"
#include "tests/support/Cluster.h"
#include "tests/support/Proxy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Require;
using testing_support::Cluster;
using testing_support::Proxy;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kSpots = 10'000;
constexpr int kItems = 100;
constexpr int kFirstItem = 20'001;  // no spot has an item's number: the queries distinguish them by it
constexpr int kLinks = 10;
constexpr double kPause = 2;  // seconds between two actions of a workstation, on average

const QString kSpotTable = u"tblItemSpots"_s;
const QString kLinkTable = u"tblItemsItemSpots"_s;

void Execute(const QString& statement) {
  dao::OpenDatabase(global.serverDatabasePath).Execute(statement);
}

dao::Recordset Read(const QString& select) {
  return dao::OpenDatabase(global.serverDatabasePath).OpenRecordset(select);
}

// Rows in the order of their numbers, so that the identity of a row equals the number of a spot.
void Fill() {
  schema::CreateServerDatabase(global.serverDatabasePath);
  Execute(
      u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartDatum, EindDatum, AantalGedraaid, Aktief) VALUES "
      "(1, \"spot.wav\", \"Spot van een adverteerder\", 30, 45658, 46000, 0, 1)"_s);
  for (int have = 1; have < kSpots; have *= 2) {
    Execute(
        u"INSERT INTO tblItemSpots SELECT ID + %1 AS ID, Path, Naam, LengteSec, StartDatum, EindDatum, AantalGedraaid, "
        "Aktief FROM tblItemSpots WHERE ID <= %2 ORDER BY ID"_s.arg(have)
            .arg(std::min(have, kSpots - have)));
  }
  for (int item = kFirstItem; item < kFirstItem + kItems; ++item)
    Execute(u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Aktief) VALUES (%1, \"Blok %1\", 1, 1)"_s.arg(item));
  for (int place = 1; place <= kLinks; ++place) {
    Execute(u"INSERT INTO tblItemsItemSpots SELECT ID AS ItemID, %1 AS ItemSpotOrder, %2 AS ItemSpotID FROM tblItems"_s
                .arg(place)
                .arg(place * 7));
  }
}

// The actions of a day, with the statements of the screens.

bool OpenSpot(int spot, int /*item*/) {
  return !Read(u"SELECT tblItemSpots.* From tblItemSpots WHERE tblItemSpots.ID = %1"_s.arg(spot)).Eof();
}

ItemSpotRow SpotRow(int id) {
  ItemSpotRow row;
  row.id = id;
  row.path = u"spot.wav"_s;
  row.naam = u"Spot %1"_s.arg(id);
  row.aktief = 1;
  return row;
}

bool SaveSpot(int spot, int item) {
  const ItemSpotRow row = SpotRow(spot);
  return !NameExists(global.serverDatabasePath, kSpotTable, row.naam, false, spot) && OpenSpot(spot, item) &&
         Update_tblItemSpots(row, global.serverDatabasePath, kSpotTable);
}

// When another workstation takes the number in between, the user presses OK again.
bool NewSpot(int /*spot*/, int /*item*/) {
  for (int attempt = 0; attempt < 5; ++attempt) {
    ItemSpotRow row = SpotRow(NextID(kSpotTable, u"tblItemSpots.ID"_s, global.serverDatabasePath));
    row.naam = u"Nieuw"_s;
    if (NameExists(global.serverDatabasePath, kSpotTable, u"Spot van niemand"_s, true, 0)) return false;
    if (Insert_tblItemSpots(row, global.serverDatabasePath, kSpotTable)) return true;
  }
  return false;
}

bool OpenItem(int /*spot*/, int item) {
  if (Read(u"SELECT tblItems.* From tblItems WHERE tblItems.ID = %1"_s.arg(item)).Eof()) return false;
  return GetItem_ItemSpots(item, global.serverDatabasePath, u"tblItems"_s, kLinkTable, kSpotTable)->RecordCount() > 0;
}

bool SaveItem(int /*spot*/, int item) {
  if (!Delete_tblBeheer(item, kLinkTable, kLinkTable + u".ItemID", global.serverDatabasePath)) return false;
  for (int place = 1; place <= kLinks; ++place) {
    if (!Insert_tblItemsItemSpots({item, place, place * 7}, global.serverDatabasePath, kLinkTable)) return false;
  }
  return true;
}

bool ListItems(int /*spot*/, int /*item*/) {
  return Read(u"SELECT tblItems.ID, tblItems.Naam As Code From tblItems ORDER BY tblItems.Naam"_s).RecordCount() ==
         kItems;
}

struct Action {
  const char* name;
  int weight;
  bool (*run)(int spot, int item);
};
constexpr std::array<Action, 6> kActions{{{"open a spot", 8, OpenSpot},
                                          {"save a spot", 4, SaveSpot},
                                          {"new spot", 1, NewSpot},
                                          {"open an item", 4, OpenItem},
                                          {"save an item", 1, SaveItem},
                                          {"list of items", 2, ListItems}}};

struct Measured {
  double ms = 0;
  int action = 0;
  bool failed = false;
};

class Times {
 public:
  void Add(const Measured& one) {
    if (one.failed) {
      ++errors_;
    } else {
      all_.push_back(one);
    }
  }
  std::size_t Count() const { return all_.size(); }
  int Errors() const { return errors_; }
  // The time that this part of the actions stayed below; of one action, or of all (-1).
  double At(double part, int action = -1) const {
    std::vector<double> values;
    for (const Measured& one : all_) {
      if (action < 0 || one.action == action) values.push_back(one.ms);
    }
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(part * static_cast<double>(values.size() - 1))];
  }

 private:
  std::vector<Measured> all_;
  int errors_ = 0;
};

// One workstation; its measurements go to a pipe.
void Work(unsigned seed, int seconds, int pipe) {
  // Messages are counted as failed actions; a number that another workstation took is not one.
  const runtime::UserMessageScope messages([](const QString& text, int, const QString&) {
    if (!text.contains(u"druk nog eens op OK")) std::fprintf(stderr, "%s\n", qPrintable(text));
    return runtime::kAnswerOk;
  });
  std::mt19937 random(seed);
  std::exponential_distribution<double> pause(1 / kPause);
  std::vector<int> bag;
  for (std::size_t action = 0; action < kActions.size(); ++action)
    bag.insert(bag.end(), static_cast<std::size_t>(kActions[action].weight), static_cast<int>(action));
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  for (;;) {
    std::this_thread::sleep_for(std::chrono::duration<double>(pause(random)));
    if (Clock::now() >= end) _exit(0);
    Measured measured;
    measured.action = bag[random() % bag.size()];
    const int spot = 1 + static_cast<int>(random() % kSpots);
    const int item = kFirstItem + static_cast<int>(random() % kItems);
    try {
      measured.ms = bench::MillisecondsOf(
          [&] { measured.failed = !kActions[static_cast<std::size_t>(measured.action)].run(spot, item); });
    } catch (const runtime::Error& error) {
      std::fprintf(stderr, "%s\n", error.what());
      measured.failed = true;
    }
    if (::write(pipe, &measured, sizeof measured) != sizeof measured) _exit(1);
  }
}

Times DayOfWorkstations(int workstations, int seconds) {
  dao::CloseKeptConnections();
  std::array<int, 2> ends{};
  Require(::pipe(ends.data()) == 0, "a pipe");
  std::vector<pid_t> children;  // the server is a child of this process too
  for (int station = 0; station < workstations; ++station) {
    const pid_t child = ::fork();
    if (child == 0) Work(static_cast<unsigned>(station) + 1, seconds, ends[1]);
    children.push_back(child);
  }
  ::close(ends[1]);
  Times times;
  Measured one;
  while (::read(ends[0], &one, sizeof one) == sizeof one)
    times.Add(one);
  ::close(ends[0]);
  for (const pid_t child : children)
    ::waitpid(child, nullptr, 0);
  return times;
}

// What the program sends for an action.
QByteArray ScriptOf(const Action& action, const Cluster& cluster, const QString& schema) {
  const int spot = 7777;
  const int item = kFirstItem + 77;
  std::mutex mutex;
  QByteArray sent;
  const QString before = global.serverDatabasePath;
  {
    Proxy proxy(cluster.SocketFolder());
    proxy.CutLines([&](std::string_view bytes) {
      const std::lock_guard lock(mutex);
      sent.append(bytes.data(), static_cast<qsizetype>(bytes.size()));
      return false;
    });
    global.serverDatabasePath = u"postgresql://planner@/postgres?host="_s + proxy.SocketFolder() + schema;
    ListItems(0, 0);  // reads the definitions of the tables
    Read(u"SELECT tblItems.ID From tblItems WHERE tblItems.ID = 0"_s);
    {
      const std::lock_guard lock(mutex);
      sent.resize(qFromBigEndian<qint32>(sent.constData()));
    }
    Require(action.run(spot, item), action.name);
    dao::CloseKeptConnections();
  }
  global.serverDatabasePath = before;
  const int fresh = Read(u"SELECT MAX(ID) AS Laatste FROM tblItemSpots"_s).Field(0).toInt();
  QByteArray script = bench::PgbenchScript(
      bench::QueriesIn(sent),
      {{QString::number(spot), u"spot"_s}, {QString::number(item), u"item"_s}, {QString::number(fresh), u"fresh"_s}},
      u"\\set spot random(1, %1)\n\\set item random(%2, %3)\n\\set fresh random(1000000, 2000000000)\n"_s.arg(kSpots)
          .arg(kFirstItem)
          .arg(kFirstItem + kItems - 1)
          .toUtf8());
  // The links of an item get other rows at each save, so here they are deleted by the item's number.
  if (action.run == SaveItem) {
    const qsizetype from = script.indexOf("spotrooster_row = ANY(");
    const QByteArray end = "::bigint[])";
    Require(from > 0, "the deleted rows");
    script.replace(from, script.indexOf(end, from) + end.size() - from, "\"ItemID\"=:item");
  }
  return script;
}

Times DayOfPgbench(int workstations, int seconds, const Cluster& cluster, const QString& schema,
                   const QString& folder) {
  QStringList arguments = {u"-n"_s,
                           u"-c"_s,
                           QString::number(workstations),
                           u"-j"_s,
                           u"2"_s,
                           u"-T"_s,
                           QString::number(seconds),
                           u"-R"_s,
                           QString::number(workstations / kPause),
                           u"-l"_s,
                           u"--log-prefix="_s + folder + u"/log",
                           u"-h"_s,
                           cluster.SocketFolder(),
                           u"-U"_s,
                           u"planner"_s};
  for (std::size_t action = 0; action < kActions.size(); ++action) {
    QFile file(folder + u"/script%1"_s.arg(action));
    Require(file.open(QIODevice::WriteOnly), "a script");
    file.write(ScriptOf(kActions[action], cluster, schema));
    arguments += {u"-f"_s, u"%1@%2"_s.arg(file.fileName()).arg(kActions[action].weight)};
  }
  dao::CloseKeptConnections();
  QProcess pgbench;
  pgbench.setProcessChannelMode(QProcess::MergedChannels);
  pgbench.start(Cluster::ProgramFolder() + u"/pgbench", arguments + QStringList{u"postgres"_s});
  Require(pgbench.waitForFinished(-1), "pgbench");
  const QByteArray output = pgbench.readAll();
  if (pgbench.exitCode() != 0 || output.contains("ERROR")) std::fprintf(stderr, "%s\n", output.constData());
  Times times;
  for (const QString& name : QDir(folder).entryList({u"log.*"_s})) {
    QFile log(folder + u'/' + name);
    Require(log.open(QIODevice::ReadOnly), "the log of pgbench");
    while (!log.atEnd()) {
      // client, number, time with the lag, script, two of the time of day, lag behind the schedule; in microseconds
      const QList<QByteArray> fields = log.readLine().simplified().split(' ');
      if (fields.size() < 7) continue;
      times.Add({(fields[2].toDouble() - fields[6].toDouble()) / 1000, fields[3].toInt(), fields[2] == "failed"});
    }
  }
  return times;
}

std::string Percentiles(const Times& times) {
  return "p50 " + bench::Milliseconds(times.At(0.5)) + ", p95 " + bench::Milliseconds(times.At(0.95)) + ", " +
         std::to_string(times.Errors()) + " errors";
}

}  // namespace

int main(int argc, char** argv) {
  if (!Cluster::IsInstalled()) {
    std::puts("PostgreSQL is not installed");
    return 0;
  }
  const QCoreApplication application(argc, argv);
  const int seconds = argc > 1 ? std::max(5, std::atoi(argv[1])) : 60;
  const int workstations = argc > 2 ? std::max(1, std::atoi(argv[2])) : 100;
  const QTemporaryDir folder;
  Cluster::Settings settings;
  settings.durable = true;
  const Cluster cluster(settings);
  const QString schema = u"\\OvalistoServer.mdb"_s;
  global.online = true;
  global.serverDatabasePath = cluster.Url() + schema;
  Fill();
  cluster.Sql(u"ANALYZE"_s);
  const Times ours = DayOfWorkstations(workstations, seconds);
  const Times pgbench = DayOfPgbench(workstations, seconds, cluster, schema, folder.path());
  const double ratio = ours.At(0.95) / std::max(0.001, pgbench.At(0.95));
  std::printf("%d workstations, %d s: %zu actions, %s\n", workstations, seconds, ours.Count(),
              Percentiles(ours).c_str());
  std::printf("pgbench: %zu actions, %s; ratio of the p95 %.2f\n", pgbench.Count(), Percentiles(pgbench).c_str(),
              ratio);
  for (std::size_t action = 0; action < kActions.size(); ++action) {
    const int at = static_cast<int>(action);
    std::printf("  %-14s p50 %8.2f (pgbench %8.2f)   p95 %8.2f (pgbench %8.2f) ms\n", kActions[action].name,
                ours.At(0.5, at), pgbench.At(0.5, at), ours.At(0.95, at), pgbench.At(0.95, at));
  }
  bench::Report("workstations-" + std::to_string(workstations), Percentiles(ours), "pgbench: " + Percentiles(pgbench),
                ratio);
  return ours.Errors() == 0 ? 0 : 1;
}
