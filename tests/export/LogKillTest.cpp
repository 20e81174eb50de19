// SPDX-License-Identifier: MIT
// Kills a program repeatedly while it logs and exports: every acknowledged statement is in the log or in exactly one
// complete file, once and in order.
#include "data/ExportBasis.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "export/ExportRecord.h"
#include "export/InterruptedExport.h"
#include "export/OfflineLogExport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/export/LogWitness.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Fork.h"
#include "tests/support/LongTests.h"
#include "tests/support/Station.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <random>
#include <stdexcept>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

constexpr int kKills = 100;
constexpr int kExportOneIn = 4;
constexpr int kMaxCalls = 60;           // upper limit of an export's file calls
constexpr int kMaxMicroseconds = 3000;  // between the last statement read and the parent's kill
constexpr int kMaxStatements = 6;

const QDateTime kStart(QDate(2024, 1, 1), QTime(0, 0, 0));

class LogKill : public testing::Test {
 protected:
  // One run of the program: settles the previous run's export, then logs and exports until it is killed.
  [[noreturn]] void Live(int acknowledged, unsigned seed, bool killsItself) {
    std::mt19937 random(seed);
    int deadlyCall = killsItself ? static_cast<int>(random() % kMaxCalls) : -1;
    const testing_support::FileFaults killer([&](const files::FileCall&) {
      if (deadlyCall-- == 0) ::raise(SIGKILL);
      return 0;
    });
    const runtime::ClockScope clock([this] { return kStart.addSecs(++seconds_); });
    try {
      SettleInterruptedExport(global.localDatabasePath);
      const QList<int> there = Numbers();
      for (int number = there.isEmpty() ? next_ : there.last() + 1;; ++number) {
        if (!Update_tblItemSpots_Aktief(number, 1, global.localDatabasePath, u"tblCopie_ItemSpots"_s)) ::_exit(2);
        if (::write(acknowledged, &number, sizeof number) != sizeof number) ::_exit(3);
        if (random() % kExportOneIn == 0) Export();
      }
    } catch (const runtime::Error& error) {
      ::fputs(error.what(), stderr);
    }
    ::_exit(4);
  }

  static void Export() {
    OfflineLogExport logExport(global.localDatabasePath);
    logExport.WriteFile(global.exportPath);
    logExport.EmptyLog();
  }

  // The last statement that the killed program acknowledged; 0 for none.
  int LifeAndDeath() {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) throw std::runtime_error("pipe");
    const unsigned seed = static_cast<unsigned>(random_());
    const bool killsItself = random_() % 2 == 0;
    const pid_t child = testing_support::Fork();
    if (child == 0) Live(pipe[1], seed, killsItself);
    ::close(pipe[1]);
    int last = 0;
    int number = 0;
    if (!killsItself) {
      for (std::size_t left = random_() % kMaxStatements; left > 0; --left) {
        if (::read(pipe[0], &number, sizeof number) == sizeof number) last = number;
      }
      ::usleep(static_cast<useconds_t>(random_() % kMaxMicroseconds));
      ::kill(child, SIGKILL);
    }
    while (::read(pipe[0], &number, sizeof number) == sizeof number)
      last = number;
    ::close(pipe[0]);
    const int status = testing_support::WaitFor(child);
    EXPECT_TRUE(WIFSIGNALED(status)) << "exit code " << WEXITSTATUS(status);
    seconds_ += 1000;  // more exports than one run can make
    return last;
  }

  // The numbers of the statements in the files, then those in the log.
  QList<int> Numbers() const {
    QList<int> numbers;
    for (const QString& statement : StatementsInFiles(station_.ExportFolder()) + station_.Log()) {
      EXPECT_TRUE(statement.startsWith(u"UPDATE tblItemSpots SET Aktief = 1 WHERE ID = "_s)) << statement.toStdString();
      numbers += statement.mid(statement.lastIndexOf(u' ') + 1).toInt();
    }
    return numbers;
  }

  // No gap and no duplicate from first_ on, and no acknowledged number is missing.
  void Check(int acknowledged) {
    const QList<int> numbers = Numbers();
    for (int at = 0; at < numbers.size(); ++at)
      ASSERT_EQ(numbers[at], first_ + at);
    ASSERT_GE(first_ + numbers.size(), acknowledged + 1);
    next_ = first_ + static_cast<int>(numbers.size());
  }

  // Each file has its basis, and each of its statements the row that it changed.
  void CheckBases() const {
    const QStringList names = QDir(station_.ExportFolder()).entryList({u"*.tql"_s}, QDir::Files);
    for (const QString& name : names) {
      const basis::File file = basis::Read(basis::PathOf(global.exportPath + u'\\' + name));
      for (const auto& entry : file.entries)
        ASSERT_TRUE(entry && entry->table == u"tblItemSpots"_s && entry->keyField == u"ID"_s);
    }
    EXPECT_EQ(QDir(station_.ExportFolder()).entryList({u"*.basis"_s}, QDir::Files).size(), names.size());
  }

  // As the companion tool does after it has processed them.
  void TakeFiles() {
    first_ += static_cast<int>(StatementsInFiles(station_.ExportFolder()).size());
    for (const QString& name : QDir(station_.ExportFolder()).entryList(QDir::Files))
      QFile::remove(station_.ExportFolder() + u'/' + name);
  }

  Station station_{Station::Mode::Offline};
  std::mt19937 random_{20240131};
  int first_ = 1;  // the oldest statement that the companion tool has not processed
  int next_ = 1;   // the first statement that was never logged
  int seconds_ = 0;
};

}  // namespace

TEST_F(LogKill, NoAcknowledgedStatementIsLostOrDuplicated) {
  int acknowledged = 0;
  int files = 0;
  int interrupted = 0;
  for (int kill = 0; kill < kKills * testing_support::LongTests(); ++kill) {
    acknowledged = std::max(acknowledged, LifeAndDeath());
    if (HasFatalFailure()) return;
    interrupted += QFile::exists(runtime::HostPath(ExportRecordPath(global.localDatabasePath))) ? 1 : 0;
    // Sometimes the next start is killed before it has settled the previous export.
    if (random_() % 4 == 0) continue;
    SettleInterruptedExport(global.localDatabasePath);
    Check(acknowledged);
    if (HasFatalFailure()) return;
    CheckBases();
    if (HasFatalFailure()) return;
    files += static_cast<int>(QDir(station_.ExportFolder()).entryList({u"*.tql"_s}).size());
    TakeFiles();
  }
  RecordProperty("statements", next_ - 1);
  RecordProperty("files", files);
  RecordProperty("interrupted exports", interrupted);
  EXPECT_GT(files, 0);
  EXPECT_GT(interrupted, 0);
}
