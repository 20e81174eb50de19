// SPDX-License-Identifier: MIT
// Path texts and host paths over a random tree of files.
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

class HostPathTree : public testing::Test {
 protected:
  HostPathTree() {
    QDir root(folder_.path());
    for (const QString& name : {u"Audio"_s, u"Audio/Spots"_s, u"Audio/Spots/2025"_s, u"caf\u00E9"_s, u"Diep/a b/c"_s})
      root.mkpath(name);
    for (const QString& name : {u"Audio/Een.wav"_s, u"Audio/Spots/Twee.MP3"_s, u"Audio/Spots/2025/drie.Wav"_s,
                                u"caf\u00E9/\u00C9\u00E9n.wav"_s, u"Diep/a b/c/vier (2).wav"_s}) {
      QFile file(folder_.filePath(name));
      EXPECT_TRUE(file.open(QIODevice::WriteOnly));
      files_ += name;
    }
    runtime::SetDrives({{u"D"_s, folder_.path()},
                        {u"\\\\Studio\\Spots"_s, folder_.filePath(u"Audio/Spots"_s)},
                        {u"\\\\Studio\\Spots\\2025"_s, folder_.filePath(u"Audio/Spots/2025"_s)}});
  }
  ~HostPathTree() override { runtime::SetDrives({}); }

  static QString RandomCase(QString text, std::mt19937& random) {
    for (QChar& letter : text)
      letter = random() % 2 == 0 ? letter.toUpper() : letter.toLower();
    return text;
  }

  QTemporaryDir folder_;
  QStringList files_;
};

TEST_F(HostPathTree, EveryFileIsFoundInAnyLetterCase) {
  std::mt19937 random(3);
  for (int i = 0; i < 300; ++i) {
    const QString name = files_[static_cast<qsizetype>(random() % static_cast<unsigned>(files_.size()))];
    QString text = u"D:/"_s + name;
    if (random() % 2 == 0) text.replace(u'/', u'\\');
    EXPECT_EQ(runtime::HostPath(RandomCase(text, random)), folder_.filePath(name)) << qPrintable(text);
    EXPECT_EQ(runtime::HostPathExactly(RandomCase(text, random)), folder_.filePath(name));
  }
}

TEST_F(HostPathTree, PathTextAndHostPathAreInverse) {
  for (const QString& name : std::as_const(files_)) {
    const QString host = folder_.filePath(name);
    EXPECT_EQ(runtime::HostPath(runtime::PathText(host)), host);
    EXPECT_TRUE(runtime::IsMapped(host));
  }
}

TEST_F(HostPathTree, TheDeepestMappingNamesAFile) {
  const auto textOf = [&](const QString& name) { return runtime::PathText(folder_.filePath(name)); };
  EXPECT_EQ(textOf(u"Audio/Een.wav"_s), u"D:\\Audio\\Een.wav"_s);
  EXPECT_EQ(textOf(u"Audio/Spots/Twee.MP3"_s), u"\\\\Studio\\Spots\\Twee.MP3"_s);
  EXPECT_EQ(textOf(u"Audio/Spots/2025/drie.Wav"_s), u"\\\\Studio\\Spots\\2025\\drie.Wav"_s);
  EXPECT_EQ(textOf(u"Audio/Spots/20255"_s), u"\\\\Studio\\Spots\\20255"_s);
  EXPECT_EQ(textOf(u"Audio/Spots"_s), u"\\\\Studio\\Spots"_s);
  EXPECT_EQ(textOf(u"Audio//Spots/../Een.wav"_s), u"D:\\Audio\\Een.wav"_s);
}

TEST_F(HostPathTree, TheRootOfAPathIsTheFolderOfItsMapping) {
  EXPECT_EQ(runtime::HostRoot(u"d:\\Audio\\x"_s), folder_.path());
  EXPECT_EQ(runtime::HostRoot(u"\\\\studio\\spots\\x"_s), folder_.filePath(u"Audio/Spots"_s));
  EXPECT_EQ(runtime::HostRoot(u"//studio/spots/2025"_s), u"/"_s);
  EXPECT_EQ(runtime::HostRoot(u"/usr/lib"_s), u"/"_s);
  EXPECT_THROW(runtime::HostRoot(u"Q:\\x"_s), runtime::Error);
}

TEST_F(HostPathTree, DotsStayWithinTheMapping) {
  EXPECT_EQ(runtime::HostPath(u"D:\\Audio\\.\\Spots\\..\\Een.wav"_s), folder_.filePath(u"Audio/Een.wav"_s));
  for (const QString& text : {u"D:\\Audio\\..\\.."_s, u"D:/../x"_s, u"\\\\Studio\\Spots\\..\\Een.wav"_s}) {
    try {
      runtime::HostPath(text);
      ADD_FAILURE() << "left the mapping: " << qPrintable(text);
    } catch (const runtime::Error& error) {
      EXPECT_TRUE(error.Description().contains(text)) << error.what();
    }
  }
}

TEST_F(HostPathTree, NamesThatDoNotExistAreKeptAsWritten) {
  EXPECT_EQ(runtime::HostPath(u"d:\\AUDIO\\Nieuw\\Vijf.WAV"_s), folder_.filePath(u"Audio/Nieuw/Vijf.WAV"_s));
  EXPECT_EQ(runtime::HostPathExactly(u"d:\\weg.wav"_s), folder_.filePath(u"weg.wav"_s));
}

TEST_F(HostPathTree, ALinkThatLeadsNowhereIsAnExactName) {
  QFile::link(folder_.filePath(u"weg"_s), folder_.filePath(u"Koppeling"_s));
  QFile other(folder_.filePath(u"KOPPELING"_s));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  EXPECT_EQ(runtime::HostPathExactly(u"D:\\Koppeling"_s), folder_.filePath(u"Koppeling"_s));
}

TEST_F(HostPathTree, DrivesAreListedAsWritten) {
  EXPECT_EQ(runtime::Drives(), (QStringList{u"D:"_s, u"\\\\Studio\\Spots"_s, u"\\\\Studio\\Spots\\2025"_s}));
  runtime::SetDrives({{u"x:\\"_s, u"/tmp/"_s}});
  EXPECT_EQ(runtime::Drives(), QStringList{u"x:"_s});
  EXPECT_EQ(runtime::HostPath(u"X:\\a"_s), u"/tmp/a"_s);
}

}  // namespace
