// SPDX-License-Identifier: MIT
#include "data/LogQueue.h"

#include "data/Globals.h"
#include "data/Writes.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/UserMessage.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Fork.h"
#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

QString Deactivated(int id) {
  return u"UPDATE tblItems SET Aktief = 0 WHERE ID = %1"_s.arg(id);
}

// An offline station whose log accepts no row: the highest ID is in use.
class FullLog : public testing::Test {
 protected:
  FullLog() { station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s); }

  static bool Write(int id) { return Update_tblItems_Aktief(id, 0, global.localDatabasePath, u"tblCopie_Items"_s); }
  void MakeRoom() const { station_.OnLocal(u"DELETE FROM tblOfflineLog"_s); }
  static QString QueueFile() { return runtime::HostPath(global.localDatabasePath + u"-unlogged"_s); }

  Station station_{Station::Mode::Offline};
};

}  // namespace

TEST_F(FullLog, QueuedStatementIsLoggedBeforeTheNext) {
  {
    const MessageBoxScript boxes;
    EXPECT_FALSE(Write(1));
    EXPECT_TRUE(WasExecuted());
    EXPECT_FALSE(Write(2));
    ASSERT_EQ(boxes.Shown().size(), 2u);
    EXPECT_EQ(boxes.Shown()[0].title, u"GetNewID"_s);
    EXPECT_EQ(boxes.Shown()[1].title, u"Insert_tblOfflineLog"_s);
  }
  EXPECT_EQ(QueuedStatementCount(), 2);
  MakeRoom();
  EXPECT_TRUE(Write(3));
  EXPECT_EQ(station_.Log(), (QStringList{Deactivated(1), Deactivated(2), Deactivated(3)}));
  EXPECT_EQ(QueuedStatementCount(), 0);
  EXPECT_FALSE(QFile::exists(QueueFile()));
}

TEST_F(FullLog, FailedStatementIsNotQueued) {
  const MessageBoxScript boxes;
  EXPECT_FALSE(Update_tblItems_Aktief(1, 0, global.localDatabasePath, u"tblGeen"_s));
  EXPECT_FALSE(WasExecuted());
  EXPECT_EQ(QueuedStatementCount(), 0);
}

TEST_F(FullLog, QueuedStatementSurvivesAKilledProgram) {
  const pid_t child = testing_support::Fork();
  if (child == 0) {
    const runtime::UserMessageScope quiet([](const QString&, int, const QString&) { return 0; });
    Write(1);
    ::raise(SIGKILL);
  }
  testing_support::WaitFor(child);
  EXPECT_EQ(QueuedStatementCount(), 1);
  MakeRoom();
  LogQueuedStatements();
  EXPECT_EQ(station_.Log(), QStringList{Deactivated(1)});
}

// Fails, or kills the process, at each file call of the logging: the row is in the log exactly once.
TEST_F(FullLog, FailureOrKillAtAnyStepOfLoggingWritesNoRowTwice) {
  for (const bool kills : {false, true}) {
    for (int failing = 0; failing < 40; ++failing) {
      SCOPED_TRACE(failing);
      station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
      QueueForLog(Deactivated(1));
      QueueForLog(Deactivated(2));
      const auto hindered = [&] {
        int calls = 0;
        const testing_support::FileFaults fault([&](const files::FileCall&) {
          if (calls++ != failing) return 0;
          if (kills) ::raise(SIGKILL);
          return EIO;
        });
        try {
          LogQueuedStatements();
        } catch (const runtime::Error& error) {
          // The second is the folder of the database and its journal.
          const QString& text = error.Description();
          EXPECT_TRUE(text.contains(u"-unlogged"_s) || text.contains(u"/data'"_s) ||
                      text.contains(u"OvalistoLocal.mdb"_s))
              << text.toStdString();
        }
      };
      if (kills) {
        const pid_t child = testing_support::Fork();
        if (child == 0) {
          hindered();
          ::_exit(0);
        }
        testing_support::WaitFor(child);
      } else {
        hindered();
      }
      LogQueuedStatements();
      EXPECT_EQ(station_.Log(), (QStringList{Deactivated(1), Deactivated(2)}));
      EXPECT_EQ(QueuedStatementCount(), 0);
    }
  }
}

TEST_F(FullLog, FullDiskKeepsTheStatementInMemoryAndWarnsTheUser) {
  {
    const testing_support::FileFaults full([](const files::FileCall& call) {
      const bool isQueue = call.path.string().find("-unlogged") != std::string::npos;
      return call.kind == files::FileCall::Open && isQueue ? ENOSPC : 0;
    });
    const MessageBoxScript boxes;
    EXPECT_FALSE(Write(1));
    EXPECT_FALSE(Write(2));
    EXPECT_TRUE(boxes.Last().text.contains(u"Laat het programma open"_s)) << boxes.Last().text.toStdString();
    EXPECT_TRUE(boxes.Last().text.contains(u"-unlogged"_s));
  }
  MakeRoom();
  EXPECT_TRUE(Write(3));
  EXPECT_EQ(station_.Log(), (QStringList{Deactivated(1), Deactivated(2), Deactivated(3)}));
}

TEST_F(FullLog, StatementWhoseFileMayNotSurviveAPowerCutIsQueuedOnce) {
  {
    const testing_support::FileFaults fault(
        [](const files::FileCall& call) { return call.kind == files::FileCall::SyncFolder ? EIO : 0; });
    const MessageBoxScript boxes;
    QueueForLog(Deactivated(1));
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_TRUE(boxes.Last().text.contains(u"-unlogged' is geschreven, maar"_s)) << boxes.Last().text.toStdString();
  }
  EXPECT_EQ(QueuedStatementCount(), 1);
  MakeRoom();
  LogQueuedStatements();
  EXPECT_EQ(station_.Log(), QStringList{Deactivated(1)});
}

TEST_F(FullLog, UnreadableFileIsReportedAndNeitherOverwrittenNorDeleted) {
  const QString file = global.localDatabasePath + u"-unlogged"_s;
  runtime::WriteFile(file, "half");
  MakeRoom();
  {
    const MessageBoxScript boxes;
    EXPECT_FALSE(Write(1));
    EXPECT_TRUE(boxes.Shown().front().text.contains(u"-unlogged"_s)) << boxes.Shown().front().text.toStdString();
  }
  EXPECT_EQ(runtime::ReadFile(file), "half");
  runtime::DeleteFile(file);
  EXPECT_TRUE(Write(2));
  EXPECT_EQ(station_.Log(), (QStringList{Deactivated(1), Deactivated(2)}));
}

TEST_F(FullLog, AnyTextIsReadBackUnchanged) {
  MakeRoom();
  const QString text = u"SET a = \"x\r\n\u00E9\u20AC\U0001F3B5"_s + QChar(0xD83D) + u"' ;\""_s;
  QueueForLog(text);
  LogQueuedStatements();
  QString logged = text;
  logged.replace(u'\'', u'*').replace(u'"', u'\'');
  EXPECT_EQ(station_.Log(), QStringList{logged});
}

TEST_F(FullLog, LineOfASoundFileIsAddedOnceItsStatementIsLogged) {
  EXPECT_FALSE(QueueAudioPath(u"D:\\a.wav"_s));
  MakeRoom();
  QueueForLog(Deactivated(1));
  EXPECT_TRUE(QueueAudioPath(u"D:\\a.wav"_s));
  LogQueuedStatements();
  AddQueuedAudioLines();
  EXPECT_EQ(runtime::ReadFile(global.exportPath + u"\\Audio.tae"_s), "D:\\a.wav\r\n");
  AddQueuedAudioLines();
  EXPECT_EQ(runtime::ReadFile(global.exportPath + u"\\Audio.tae"_s), "D:\\a.wav\r\n");
}
