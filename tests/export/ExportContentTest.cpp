// SPDX-License-Identifier: MIT
#include "export/ExportContent.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// The content of a file with these statements.
class Collected {
 public:
  void Add(QStringView statement) { content_.Add(statement); }
  const QByteArray& Bytes() {
    digest_ = content_.Finish();
    return bytes_;
  }
  const QByteArray& Digest() const { return digest_; }
  const AlteredStatements& Altered() const { return content_.Altered(); }
  int Blocks() const { return blocks_; }

 private:
  QByteArray bytes_;
  QByteArray digest_;
  int blocks_ = 0;
  ExportContent content_{[this](const QByteArray& block) {
    bytes_ += block;
    ++blocks_;
  }};
};

}  // namespace

TEST(ExportContent, TheFileIsNamedAfterTheMomentToTheSecond) {
  EXPECT_EQ(ExportContent::FileName(QDateTime(QDate(2024, 1, 31), QTime(15, 45, 7))), u"20240131154507.tql"_s);
  EXPECT_EQ(ExportContent::FileName(QDateTime(QDate(2025, 12, 1), QTime(0, 0, 0))), u"20251201000000.tql"_s);
}

TEST(ExportContent, EachStatementIsTrimmedAndEndsWithSemicolonAndLineEnd) {
  Collected content;
  content.Add(u"  DELETE FROM c ");
  content.Add(u"UPDATE a SET b = 1");
  EXPECT_EQ(content.Bytes(), "DELETE FROM c;\r\nUPDATE a SET b = 1;\r\n");
}

TEST(ExportContent, EmptyStatementsAddNothing) {
  Collected content;
  content.Add({});
  content.Add(u"");
  content.Add(u"   ");
  EXPECT_EQ(content.Bytes(), QByteArray());
}

TEST(ExportContent, LineBreaksAndTabsInAStatementAreUnchanged) {
  Collected content;
  content.Add(u"\tUPDATE a\r\nSET b = 1\n");
  EXPECT_EQ(content.Bytes(), "\tUPDATE a\r\nSET b = 1\n;\r\n");
}

TEST(ExportContent, TextIsWrittenInWindows1252) {
  Collected content;
  content.Add(u"UPDATE a SET b = 'Café €5'");
  EXPECT_EQ(content.Bytes(), QByteArray("UPDATE a SET b = 'Caf\xE9 \x80"
                                        "5';\r\n"));
  EXPECT_EQ(content.Altered().count, 0);
}

TEST(ExportContent, CharactersOutsideTheCodePageBecomeAQuestionMarkAndAreReported) {
  Collected content;
  content.Add(u"UPDATE a SET b = 'Ώ1'");
  content.Add(u"DELETE FROM c");
  EXPECT_EQ(content.Bytes(), "UPDATE a SET b = '?1';\r\nDELETE FROM c;\r\n");
  EXPECT_EQ(content.Altered().count, 1);
  EXPECT_EQ(content.Altered().first, QStringList{u"UPDATE a SET b = 'Ώ1'"_s});
}

TEST(ExportContent, ALongLogIsWrittenInBlocks) {
  Collected content;
  QByteArray whole;
  for (int number = 0; number < 60'000; ++number) {
    const QString statement = u"UPDATE a SET b = 'été' WHERE c = "_s + QString::number(number);
    content.Add(statement);
    whole += statement.toLatin1() + ";\r\n";
  }
  EXPECT_TRUE(content.Bytes() == whole);
  EXPECT_GT(content.Blocks(), 1);
  EXPECT_EQ(content.Digest(), ContentDigest::Of(whole));
}

TEST(ExportContent, TheWarningNamesTheFileTheFirstStatementsAndHowManyMore) {
  AlteredStatements altered;
  for (int number = 1; number <= 7; ++number)
    altered.Add(QString(u"statement "_s + QString::number(number)));
  const QString text = AlteredWarning(altered, u"Z:\\out\\1.tql"_s);
  EXPECT_TRUE(text.contains(u"Z:\\out\\1.tql"_s));
  EXPECT_TRUE(text.contains(u"statement 1"_s));
  EXPECT_TRUE(text.contains(u"statement 5"_s));
  EXPECT_FALSE(text.contains(u"statement 6"_s));
  EXPECT_TRUE(text.endsWith(u"en nog 2 andere wijzigingen."_s));
  EXPECT_FALSE(AlteredWarning({1, {u"x"_s}}, u"y"_s).contains(u"andere"_s));
}
