// SPDX-License-Identifier: MIT
#include "data/IniFile.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class IniFileTest : public testing::Test {
 protected:
  IniFileTest() { path_ = runtime::PathText(folder_.path()) + u"\\proef.ini"_s; }

  void Write(const QByteArray& content) const { runtime::WriteFile(path_, content); }
  QByteArray Content() const { return runtime::ReadFile(path_); }

  IniFile File(const QString& section, const QString& key) const {
    IniFile file;
    file.SetPath(path_);
    file.SetSection(section);
    file.SetKey(key);
    return file;
  }
  QString Read(const QString& section, const QString& key) const { return File(section, key).Value(); }

 private:
  QTemporaryDir folder_;

 protected:
  QString path_;
};

}  // namespace

TEST_F(IniFileTest, ReadsValuesBySectionAndKey) {
  Write("[Files]\r\nDatabasePath=\\\\studio\\data\r\nExportPath=D:\\uit=1\r\n[Audio Players]\r\nCard=-1\r\n");
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"\\\\studio\\data"_s);
  EXPECT_EQ(Read(u"Files"_s, u"ExportPath"_s), u"D:\\uit=1"_s);
  EXPECT_EQ(Read(u"Audio Players"_s, u"Card"_s), u"-1"_s);
}

TEST_F(IniFileTest, MissingSectionOrKeyReadsAsEmptyText) {
  Write("[Files]\nDatabasePath=x\n");
  EXPECT_EQ(Read(u"Files"_s, u"Card"_s), QString());
  EXPECT_EQ(Read(u"Audio Players"_s, u"DatabasePath"_s), QString());
}

TEST_F(IniFileTest, IgnoresLetterCaseAndBlanksAroundTheEqualsSign) {
  Write("  [ FILES ]\n\tdatabasepath  =  een map  \n");
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"een map"_s);
}

TEST_F(IniFileTest, IgnoresComments) {
  Write("[Files]\n;DatabasePath=a\n#DatabasePath=b\nDatabasePath=c;d#e\n");
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"c;d#e"_s);
}

TEST_F(IniFileTest, TextIsWindows1252UnlessTheFileBeginsWithTheUtf8Mark) {
  Write("[Files]\nDatabasePath=Caf\xE9\n");
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"Café"_s);
  Write("\xEF\xBB\xBF[Files]\nDatabasePath=Caf\xC3\xA9 \xCE\x8F\n");
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"Café Ώ"_s);
}

TEST_F(IniFileTest, ReturnsAllValuesOfASection) {
  Write("[Drives]\nD=/srv/audio\n\\\\studio\\spots = /mnt/spots\n[Files]\nE=5\n");
  const QMap<QString, QString> expected{{u"D"_s, u"/srv/audio"_s}, {u"\\\\studio\\spots"_s, u"/mnt/spots"_s}};
  EXPECT_EQ(File(u"drives"_s, {}).Values(), expected);
  EXPECT_TRUE(File(u"Weg"_s, {}).Values().isEmpty());
}

TEST_F(IniFileTest, MissingFileIsAnErrorWithItsPath) {
  try {
    Read(u"Files"_s, u"DatabasePath"_s);
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(path_));
  }
}

TEST_F(IniFileTest, WritingReplacesOnlyTheValuesBytes) {
  Write(
      "; Stra\xDF"
      "e\r\n[Other]\r\nDatabasePath=o\r\n\r\n[files]\r\n databasepath =  old \r\nExportPath=e\r\nline\r\n");
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"Café"_s);
  EXPECT_EQ(Content(), QByteArray("; Stra\xDF"
                                  "e\r\n[Other]\r\nDatabasePath=o\r\n\r\n[files]\r\n databasepath =  Caf\xE9\r\n"
                                  "ExportPath=e\r\nline\r\n"));
}

TEST_F(IniFileTest, WritingKeepsTheFilesEncodingAndLineEnds) {
  Write("\xEF\xBB\xBF[Files]\nDatabasePath=a\nX=1");
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"Ώ"_s);
  EXPECT_EQ(Content(), QByteArray("\xEF\xBB\xBF[Files]\nDatabasePath=\xCE\x8F\nX=1"));
}

TEST_F(IniFileTest, MissingKeyIsAddedToItsSection) {
  Write("[Files]\nExportPath=e\n\n[Audio Players]\nCard=1\n");
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"d"_s);
  EXPECT_EQ(Content(), "[Files]\nExportPath=e\nDatabasePath=d\n\n[Audio Players]\nCard=1\n");
}

TEST_F(IniFileTest, MissingSectionIsAddedAtTheEnd) {
  Write("[Audio Players]\r\nCard=1");
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"d"_s);
  EXPECT_EQ(Content(), "[Audio Players]\r\nCard=1\r\n[Files]\r\nDatabasePath=d\r\n");
}

TEST_F(IniFileTest, MissingFileIsCreated) {
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"d"_s);
  EXPECT_EQ(Content(), "[Files]\r\nDatabasePath=d\r\n");
}

TEST_F(IniFileTest, OfTwoLinesWithTheSameKeyTheSameOneIsReadAndWritten) {
  Write("[Files]\nDatabasePath=a\nDatabasePath=b\n[Files]\nDatabasePath=c\n");
  const QString read = Read(u"Files"_s, u"DatabasePath"_s);
  File(u"Files"_s, u"DatabasePath"_s).SetValue(u"new"_s);
  EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), u"new"_s);
  const QByteArray replaced = '=' + read.toLatin1() + '\n';
  EXPECT_FALSE(Content().contains(replaced));
  EXPECT_EQ(Content().count("DatabasePath="), 3);
}

TEST_F(IniFileTest, TabIsPartOfTheValue) {
  const IniFile file = File(u"Files"_s, u"DatabasePath"_s);
  Write("[Files]\r\nDatabasePath = old\r\nX=1\r\n");
  for (const QString& value : {u"\tD:\\data"_s, u"D:\\data\t"_s, u"\t"_s, u"\t \tx"_s}) {
    file.SetValue(value);
    EXPECT_EQ(Content(), "[Files]\r\nDatabasePath = " + value.toLatin1() + "\r\nX=1\r\n");
    EXPECT_EQ(file.Value(), value);
  }
}

TEST_F(IniFileTest, ValueThatCannotBeReadBackIsRefusedAndNothingIsWritten) {
  const QByteArray before = "[Files]\nDatabasePath=a\n";
  Write(before);
  for (const QString& value : {u"Ώ"_s, u"een\n[Files]"_s, u" voorloop"_s, QString(u"a"_s + QChar(0) + u'b')}) {
    EXPECT_THROW(File(u"Files"_s, u"DatabasePath"_s).SetValue(value), runtime::Error) << value.toStdString();
    EXPECT_EQ(Content(), before);
  }
}

TEST_F(IniFileTest, GarbageReadsAsAFileWithoutValues) {
  QByteArray garbage;
  for (int at = 0; at < 4096; ++at)
    garbage += static_cast<char>(at * 37 + at / 7);
  for (const QByteArray& bytes :
       {garbage, QByteArray(3000, '['), QByteArray(100, '\0'), QByteArray("[Files\n=\n==\n")}) {
    Write(bytes);
    EXPECT_EQ(Read(u"Files"_s, u"DatabasePath"_s), QString());
  }
}
