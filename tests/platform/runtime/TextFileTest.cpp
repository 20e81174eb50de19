#include "platform/runtime/TextFile.h"

#include "platform/runtime/Error.h"
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

// Runs `body` in a child and gives its answer, so that limits and given-up rights stay there.
int InChild(const std::function<int()>& body) {
  const pid_t child = testing_support::Fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr int kRefused = 7;

class TextFiles : public testing::Test {
 protected:
  QString At(const QString& name) const { return folder_.path() + u'/' + name; }
  QTemporaryDir folder_;
};

}  // namespace

TEST_F(TextFiles, AFileIsWrittenWholeAndReplacesTheOldOne) {
  runtime::WriteFile(At(u"a.txt"_s), "een");
  runtime::WriteFile(At(u"a.txt"_s), "twee");
  EXPECT_EQ(Content(At(u"a.txt"_s)), "twee");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(TextFiles, AFullDiskLeavesTheOldFileAndNoRemains) {
  runtime::WriteFile(At(u"a.txt"_s), "oud");
  const int answer = InChild([&] {
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
  EXPECT_EQ(answer, kRefused);
  EXPECT_EQ(Content(At(u"a.txt"_s)), "oud");
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(TextFiles, AFolderWithoutPermissionIsAnErrorThatNamesTheFile) {
  ::chmod(folder_.path().toUtf8().constData(), 0755);
  const int answer = InChild([&] {
    if (::setuid(65534) != 0) return 2;
    try {
      runtime::WriteFile(At(u"a.txt"_s), "x");
    } catch (const runtime::Error& error) {
      return error.Description().contains(u"a.txt"_s) && error.Description().contains(u"toegang geweigerd"_s) ? kRefused
                                                                                                              : 1;
    }
    return 0;
  });
  EXPECT_EQ(answer, kRefused);
}

TEST_F(TextFiles, ALineIsAppendedInTheCodePage) {
  runtime::AppendLine(At(u"Audio.tae"_s), u"D:\\caf\u00E9.mp3"_s);
  runtime::AppendLine(At(u"Audio.tae"_s), u"D:\\b.wav"_s);
  EXPECT_EQ(Content(At(u"Audio.tae"_s)), QByteArray("D:\\caf\xE9.mp3\r\nD:\\b.wav\r\n"));
}

TEST_F(TextFiles, ALineThatDoesNotFitOnTheDiskIsNotHalfAppended) {
  runtime::AppendLine(At(u"Audio.tae"_s), u"eerste"_s);
  const int answer = InChild([&] {
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
  EXPECT_EQ(answer, kRefused);
  EXPECT_EQ(Content(At(u"Audio.tae"_s)), "eerste\r\n");
}

TEST_F(TextFiles, ReadingAFolderOrAMissingFileIsAnError) {
  EXPECT_THROW(runtime::ReadFile(folder_.path()), runtime::Error);
  EXPECT_THROW(runtime::ReadFile(At(u"niets"_s)), runtime::Error);
}

TEST_F(TextFiles, DeletingTakesRegularFilesOnly) {
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
