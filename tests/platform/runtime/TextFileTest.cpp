// SPDX-License-Identifier: MIT
#include "platform/runtime/TextFile.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/StagedFile.h"
#include "tests/support/Fork.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

// Runs `body` in a child process and returns its exit code, so that limits and dropped rights apply only there.
int InChild(const std::function<int()>& body) {
  const pid_t child = testing_support::Fork();
  if (child == 0) ::_exit(body());
  const int status = testing_support::WaitFor(child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr int kRefused = 7;

class TextFiles : public testing::Test {
 protected:
  QString At(const QString& name) const { return folder_.path() + u'/' + name; }
  QTemporaryDir folder_;
};

}  // namespace

TEST_F(TextFiles, WritingReplacesTheOldFile) {
  runtime::WriteFile(At(u"a.txt"_s), "een");
  runtime::WriteFile(At(u"a.txt"_s), "twee");
  EXPECT_EQ(Content(At(u"a.txt"_s)), "twee");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(TextFiles, AFullDiskLeavesTheOldFileAndNoTemporaryFile) {
  runtime::WriteFile(At(u"a.txt"_s), "oud");
  const int exitCode = InChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100, 100};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    try {
      runtime::WriteFile(At(u"a.txt"_s), QByteArray(1000, 'x'));
    } catch (const runtime::Error& error) {
      return error.Description().contains(u"het bestand wordt te groot"_s) ? kRefused : 1;
    }
    return 0;
  });
  EXPECT_EQ(exitCode, kRefused);
  EXPECT_EQ(Content(At(u"a.txt"_s)), "oud");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(TextFiles, AFolderWithoutPermissionIsAnErrorThatNamesTheFile) {
  ::chmod(folder_.path().toUtf8().constData(), 0755);
  const int exitCode = InChild([&] {
    if (::setuid(65534) != 0) return 2;
    try {
      runtime::WriteFile(At(u"a.txt"_s), "x");
    } catch (const runtime::Error& error) {
      return error.Description().contains(u"a.txt"_s) && error.Description().contains(u"toegang geweigerd"_s) ? kRefused
                                                                                                              : 1;
    }
    return 0;
  });
  EXPECT_EQ(exitCode, kRefused);
}

TEST_F(TextFiles, ALineIsAppendedInTheCodePage) {
  runtime::AppendLine(At(u"Audio.tae"_s), u"D:\\caf\u00E9.mp3"_s);
  runtime::AppendLine(At(u"Audio.tae"_s), u"D:\\b.wav"_s);
  EXPECT_EQ(Content(At(u"Audio.tae"_s)), QByteArray("D:\\caf\xE9.mp3\r\nD:\\b.wav\r\n"));
}

TEST_F(TextFiles, ALineThatDoesNotFitOnTheDiskIsNotAppendedInPart) {
  runtime::AppendLine(At(u"Audio.tae"_s), u"eerste"_s);
  const int exitCode = InChild([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{12, 12};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    try {
      runtime::AppendLine(At(u"Audio.tae"_s), u"tweede regel"_s);
    } catch (const runtime::Error&) {
      return kRefused;
    }
    return 0;
  });
  EXPECT_EQ(exitCode, kRefused);
  EXPECT_EQ(Content(At(u"Audio.tae"_s)), "eerste\r\n");
}

TEST_F(TextFiles, ReadingAFolderOrAMissingFileIsAnError) {
  EXPECT_THROW(runtime::ReadFile(folder_.path()), runtime::Error);
  EXPECT_THROW(runtime::ReadFile(At(u"niets"_s)), runtime::Error);
}

TEST_F(TextFiles, AFileThatIsTooLargeIsRefusedForThatReason) {
  runtime::WriteFile(At(u"a.ini"_s), QByteArray((1 << 20) + 1, 'x'));
  EXPECT_EQ(runtime::ReadFile(At(u"a.ini"_s), (1 << 20) + 1).size(), (1 << 20) + 1);
  try {
    runtime::ReadFile(At(u"a.ini"_s), 1 << 20);
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_EQ(error.Description(), u"Kan '%1' niet lezen: het is groter dan 1 MB."_s.arg(At(u"a.ini"_s)));
  }
}

// No call waits for a program at the other end.
TEST_F(TextFiles, APipeIsRefusedByName) {
  ASSERT_EQ(::mkfifo(At(u"a.ini"_s).toUtf8().constData(), 0666), 0);
  const auto errorOf = [](const std::function<void()>& call) {
    try {
      call();
    } catch (const runtime::Error& error) {
      return error.Description();
    }
    return QString();
  };
  const QString reason = u"a.ini' niet %1: het is geen gewoon bestand."_s;
  EXPECT_TRUE(errorOf([&] { runtime::ReadFile(At(u"a.ini"_s)); }).endsWith(reason.arg(u"lezen"_s)));
  EXPECT_TRUE(errorOf([&] { runtime::WriteFile(At(u"a.ini"_s), "x"); }).endsWith(reason.arg(u"schrijven"_s)));
  EXPECT_TRUE(errorOf([&] { runtime::AppendLine(At(u"a.ini"_s), u"x"_s); }).endsWith(reason.arg(u"aanvullen"_s)));
}

TEST_F(TextFiles, PlaceNewNeverReplacesAFile) {
  runtime::WriteFile(At(u"1.tql"_s), "theirs");
  {
    runtime::StagedFile file(At(u"1.tql"_s));
    file.Write("ours");
    file.Complete();
    EXPECT_FALSE(file.PlaceNew(At(u"1.tql"_s)));
    EXPECT_TRUE(file.PlaceNew(At(u"2.tql"_s)));
  }
  EXPECT_EQ(Content(At(u"1.tql"_s)), "theirs");
  EXPECT_EQ(Content(At(u"2.tql"_s)), "ours");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(TextFiles, OnlyRegularFilesAreDeleted) {
  runtime::WriteFile(At(u"weg.wav"_s), "x");
  runtime::DeleteFile(At(u"weg.wav"_s));
  EXPECT_FALSE(QFile::exists(At(u"weg.wav"_s)));
  EXPECT_THROW(runtime::DeleteFile(At(u"weg.wav"_s)), runtime::Error);
  EXPECT_THROW(runtime::DeleteFile(folder_.path()), runtime::Error);
  EXPECT_THROW(runtime::DeleteFile(QString()), runtime::Error);
  QFile::link(At(u"doel"_s), At(u"koppeling"_s));
  runtime::WriteFile(At(u"doel"_s), "x");
  EXPECT_THROW(runtime::DeleteFile(At(u"koppeling"_s)), runtime::Error);
  EXPECT_TRUE(QFile::exists(At(u"doel"_s)));
}

TEST_F(TextFiles, TheLimitIsShownInItsLargestUnit) {
  runtime::WriteFile(At(u"a.ini"_s), QByteArray(5000, 'x'));
  const auto reason = [&](qint64 limit) {
    try {
      runtime::ReadFile(At(u"a.ini"_s), limit);
    } catch (const runtime::Error& error) {
      return error.Description().section(u"groter dan "_s, 1);
    }
    return u"read"_s;
  };
  EXPECT_EQ(reason(4096), u"4 kB."_s);
  EXPECT_EQ(reason(4097), u"4097 bytes."_s);
  EXPECT_EQ(reason(5000), u"read"_s);
}

TEST_F(TextFiles, OnlyReachableFoldersAreFolders) {
  runtime::WriteFile(At(u"a.txt"_s), "x");
  EXPECT_TRUE(runtime::IsFolder(folder_.path()));
  EXPECT_FALSE(runtime::IsFolder(At(u"a.txt"_s)));
  EXPECT_FALSE(runtime::IsFolder(At(u"weg"_s)));
  EXPECT_FALSE(runtime::IsFolder(u"Q:\\"_s));
}

TEST_F(TextFiles, EveryByteIsReadAndWritten) {
  QByteArray content;
  for (int i = 0; i < 200000; ++i)
    content.append(static_cast<char>(i * 7));
  runtime::WriteFile(At(u"a.bin"_s), content);
  EXPECT_EQ(runtime::ReadFile(At(u"a.bin"_s)), content);
  runtime::WriteFile(At(u"a.bin"_s), QByteArray());
  EXPECT_EQ(runtime::ReadFile(At(u"a.bin"_s)), QByteArray());
}
