// SPDX-License-Identifier: MIT
#include "tests/tools/CommandKills.h"

#include <QFile>
#include <QHash>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace command_kills {
namespace {

// Kinds of calls that the C library here does not use have a count of 0.
const QStringList kCalls{u"openat"_s,    u"pwrite64"_s, u"fsync"_s,    u"fdatasync"_s, u"ftruncate"_s,
                         u"link"_s,      u"linkat"_s,   u"rename"_s,   u"mkdir"_s,     u"renameat"_s,
                         u"renameat2"_s, u"unlink"_s,   u"unlinkat"_s, u"fchmod"_s,    u"fchown"_s};

int Step() {
  constexpr int kInTheSuite = 12;
  const char* text = std::getenv("SPOTROOSTER_COMMAND_STEP");
  return text != nullptr ? std::max(1, std::atoi(text)) : kInTheSuite;
}

// A copy of the command's folder, and a file for the output of strace.
class Run {
 public:
  explicit Run(const Command& command) : command_(command) {
    std::filesystem::copy(command.folder.toStdString(), Folder().toStdString(),
                          std::filesystem::copy_options::recursive);
  }
  QString Folder() const { return root_.filePath(u"station"_s); }
  QString TracePath() const { return root_.filePath(u"trace"_s); }

  // Whether the command ended normally.
  bool Ends(const QStringList& straceOptions) const {
    QProcess program;
    program.start(u"strace"_s, QStringList{u"-f"_s, u"-qq"_s, u"-o"_s, TracePath()} + straceOptions +
                                   QStringList{QStringLiteral(SPOTROOSTER_DB)} + command_.words(Folder()));
    EXPECT_TRUE(program.waitForFinished(-1));
    return program.exitStatus() == QProcess::NormalExit;
  }
  ToolRun Again() const { return RunTool(command_.words(Folder())); }

 private:
  const Command& command_;
  QTemporaryDir root_;
};

// How many calls of a kind a thread makes before the first on the folder: those of the program's start.
int FirstCall(const Run& run, const QString& call) {
  EXPECT_TRUE(run.Ends({u"-e"_s, u"trace="_s + call}));
  QFile trace(run.TracePath());
  EXPECT_TRUE(trace.open(QIODevice::ReadOnly));
  QHash<QByteArray, int> made;  // by thread
  while (!trace.atEnd()) {
    const QByteArray line = trace.readLine();
    const int number = ++made[line.left(line.indexOf(' '))];
    if (call != u"openat"_s || line.contains(run.Folder().toUtf8())) return number;
  }
  return 1;
}

int KillAt(const Command& command, const QString& call, int number) {
  const Run run(command);
  const QString inject = u"inject=%1:signal=KILL:when=%2"_s.arg(call, QString::number(number));
  if (run.Ends({u"-e"_s, u"trace="_s + call, u"-e"_s, inject})) return 0;
  command.afterKill(run.Folder());
  command.afterNext(run.Folder(), run.Again());
  return 1;
}

}  // namespace

bool HasStrace() {
  return !QStandardPaths::findExecutable(u"strace"_s).isEmpty();
}

void KillAtEachCall(const Command& command) {
  int kills = 0;
  for (const QString& call : kCalls) {
    int killed = 1;
    for (int number = FirstCall(Run(command), call); killed != 0; number += Step()) {
      SCOPED_TRACE(call.toStdString() + " number " + std::to_string(number));
      killed = KillAt(command, call, number);
      kills += killed;
    }
  }
  std::printf("%s: killed at %d calls\n", command.name, kills);
  EXPECT_GT(kills, 5);
}

}  // namespace command_kills
