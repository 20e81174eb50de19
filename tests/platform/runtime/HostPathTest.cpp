// SPDX-License-Identifier: MIT
#include "platform/runtime/HostPath.h"

#include "platform/runtime/Error.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using runtime::HostPath;

namespace {

class HostPaths : public testing::Test {
 protected:
  HostPaths() {
    runtime::SetDrives({{u"d"_s, folder_.path()}, {u"\\\\studio\\spots"_s, folder_.path() + u"/share"}});
    QDir(folder_.path()).mkpath(u"Audio/Spots"_s);
    QDir(folder_.path()).mkpath(u"share"_s);
    Touch(u"Audio/Spots/Een.WAV"_s);
  }
  ~HostPaths() override { runtime::SetDrives({}); }

  void Touch(const QString& name) const {
    QFile file(folder_.path() + u'/' + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }

  QTemporaryDir folder_;
};

}  // namespace

TEST_F(HostPaths, DriveAndShareAreLookedUpWithoutRegardToCase) {
  EXPECT_EQ(HostPath(u"D:\\Audio\\Spots\\Een.WAV"_s), folder_.path() + u"/Audio/Spots/Een.WAV");
  EXPECT_EQ(HostPath(u"d:/Audio"_s), folder_.path() + u"/Audio");
  EXPECT_EQ(HostPath(u"\\\\STUDIO\\spots\\x.mp3"_s), folder_.path() + u"/share/x.mp3");
  EXPECT_EQ(HostPath(u"D:\\"_s), folder_.path());
}

TEST_F(HostPaths, NameWhoseCapitalsAreLongerIsCutOffAtItsOwnLength) {
  runtime::SetDrives({{u"\\\\studio\\gro\u00DFstra\u00DFe"_s, folder_.path() + u"/share"}});
  EXPECT_EQ(HostPath(u"\\\\Studio\\Gro\u00DFstra\u00DFe\\een.mp3"_s), folder_.path() + u"/share/een.mp3");
}

TEST_F(HostPaths, NamesMatchWithoutRegardToCaseWhenNotExact) {
  EXPECT_EQ(HostPath(u"D:\\AUDIO\\spots\\een.wav"_s), folder_.path() + u"/Audio/Spots/Een.WAV");
  Touch(u"Audio/Spots/een.wav"_s);
  EXPECT_EQ(HostPath(u"D:\\audio\\spots\\een.wav"_s), folder_.path() + u"/Audio/Spots/een.wav");
}

TEST_F(HostPaths, DeletingRefusesWhenSeveralNamesMatch) {
  Touch(u"Audio/Spots/een.wav"_s);
  EXPECT_EQ(runtime::HostPathExactly(u"D:\\Audio\\Spots\\een.wav"_s), folder_.path() + u"/Audio/Spots/een.wav");
  try {
    runtime::HostPathExactly(u"D:\\Audio\\Spots\\EEN.wav"_s);
    FAIL() << "one of two names was chosen";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(
        u"staan meerdere namen die alleen in hoofdletters van 'EEN.wav' verschillen: Een.WAV, een.wav."_s))
        << qPrintable(error.Description());
  }
}

TEST_F(HostPaths, AHostPathIsReturnedUnchanged) {
  EXPECT_EQ(HostPath(u"/srv/audio/x.wav"_s), u"/srv/audio/x.wav"_s);
  EXPECT_EQ(HostPath(folder_.path() + u"\\audio\\SPOTS"), folder_.path() + u"/Audio/Spots");
}

TEST_F(HostPaths, AnUnmappedDriveIsAnErrorWithThePath) {
  try {
    HostPath(u"Q:\\x.wav"_s);
    FAIL() << "an unmapped drive gave a path";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"Q:\\x.wav"_s));
    EXPECT_TRUE(error.Description().contains(u"[Drives]"_s));
  }
  EXPECT_THROW(HostPath(u"\\\\studio\\spotsx\\a"_s), runtime::Error);
}

TEST_F(HostPaths, APathMayNotLeaveItsMapping) {
  EXPECT_EQ(HostPath(u"D:\\Audio\\..\\share"_s), folder_.path() + u"/share");
  EXPECT_THROW(HostPath(u"D:\\Audio\\..\\..\\etc"_s), runtime::Error);
  EXPECT_THROW(HostPath(u"D:\\.."_s), runtime::Error);
}

TEST_F(HostPaths, PathTextUsesTheLongestMapping) {
  EXPECT_EQ(runtime::PathText(folder_.path() + u"/share/x.mp3"), u"\\\\studio\\spots\\x.mp3"_s);
  EXPECT_EQ(runtime::PathText(folder_.path() + u"/Audio/x.mp3"), u"d:\\Audio\\x.mp3"_s);
  EXPECT_EQ(runtime::PathText(u"/elders/x.mp3"_s), u"/elders/x.mp3"_s);
  EXPECT_FALSE(runtime::IsMapped(u"/elders/x.mp3"_s));
}

TEST_F(HostPaths, RelativeMappingsAreResolvedAgainstTheBaseFolder) {
  runtime::SetDrives({{u"E:"_s, u"Audio"_s}}, folder_.path());
  EXPECT_EQ(HostPath(u"E:\\Spots\\Een.WAV"_s), folder_.path() + u"/Audio/Spots/Een.WAV");
}

TEST(HostPathDefault, ZIsTheRootWithoutMappings) {
  runtime::SetDrives({});
  EXPECT_EQ(HostPath(u"Z:\\usr"_s), u"/usr"_s);
  EXPECT_EQ(runtime::PathText(u"/usr"_s), u"Z:\\usr"_s);
  EXPECT_EQ(runtime::Drives(), QStringList{u"Z:"_s});
}
