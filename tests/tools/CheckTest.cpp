// SPDX-License-Identifier: MIT
#include "tests/tools/EveryCommand.h"
#include "tests/tools/RunTool.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

class Check : public testing::Test {
 protected:
  Check() { RunTool({u"create"_s, folder_.path()}); }
  QString Local() const { return folder_.filePath(u"data/OvalistoLocal.mdb"_s); }
  QByteArray Bytes() const {
    QFile file(Local());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void Overwrite(qint64 at, const QByteArray& bytes) const {
    QFile file(Local());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(at));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }

  QTemporaryDir folder_;
};

TEST_F(Check, NewDatabaseHasNoRemarksAndIsUnchanged) {
  const QByteArray before = Bytes();
  const ToolRun run = RunTool({u"check"_s, Local()});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.out, "ok\n");
  EXPECT_EQ(Bytes(), before);
}

TEST_F(Check, EachDamageIsALineAndNothingIsRepaired) {
  constexpr qint64 kPage = 4096;
  Overwrite(Bytes().size() - kPage, QByteArray(kPage, '\x09'));
  const QByteArray damaged = Bytes();
  const ToolRun run = RunTool({u"check"_s, Local()});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.out.find("pagina"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("ok\n"), std::string::npos) << run.out;
  EXPECT_EQ(Bytes(), damaged);
}

TEST_F(Check, AFileThatIsNotADatabaseIsReportedByName) {
  const ToolRun run = RunTool({u"check"_s, folder_.filePath(u"ovalis.ini"_s)});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("ovalis.ini"), std::string::npos) << run.err;
}

TEST_F(Check, EveryCommandRequiresThePasswordOfAFileWithOne) {
  if (!qEnvironmentVariableIsSet("SPOTROOSTER_MDB_SAMPLES")) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  const QString file = folder_.filePath(u"password.mdb"_s);
  ASSERT_TRUE(QFile::copy(qEnvironmentVariable("SPOTROOSTER_MDB_SAMPLES") + u"/password.mdb"_s, file));
  ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
  ASSERT_TRUE(QFile(folder_.filePath(u"uitzendlog.txt"_s)).open(QIODevice::WriteOnly));
  const QList<Command> commands = AllCommands();
  const QList<QStringList> calls = EveryCommand({folder_.path(), file, u"Table1"_s});
  int withPassword = 0;
  for (qsizetype i = 0; i < calls.size(); ++i) {
    if (!commands[i].usage.contains(u"--password"_s)) continue;
    SCOPED_TRACE(calls[i].first().toStdString());
    const ToolRun without = RunTool(calls[i]);
    EXPECT_EQ(without.exitCode, kFailed);
    EXPECT_NE(without.err.find("wachtwoord"), std::string::npos) << without.err;
    const ToolRun with = RunTool(calls[i] + QStringList{u"--password"_s, u"password"_s});
    EXPECT_EQ(with.err.find("wachtwoord"), std::string::npos) << with.err;
    // The file has no item-spots to count.
    EXPECT_EQ(with.exitCode, calls[i].first() == u"played"_s ? kFailed : kDone) << with.err;
    ++withPassword;
  }
  EXPECT_EQ(withPassword, 7);
}

}  // namespace
