#include "export/ExportContent.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ExportContent, TheFileIsNamedAfterTheMomentToTheSecond) {
  EXPECT_EQ(ExportContent::FileName(QDateTime(QDate(2024, 1, 31), QTime(15, 45, 7))), u"20240131154507.tql"_s);
  EXPECT_EQ(ExportContent::FileName(QDateTime(QDate(2025, 12, 1), QTime(0, 0, 0))), u"20251201000000.tql"_s);
}

TEST(ExportContent, EachStatementIsTrimmedAndEndsWithSemicolonAndLineEnd) {
  ExportContent content;
  content.Add(u"  DELETE FROM c "_s);
  content.Add(u"UPDATE a SET b = 1"_s);
  EXPECT_EQ(content.Bytes(), "DELETE FROM c;\r\nUPDATE a SET b = 1;\r\n");
}

TEST(ExportContent, EmptyStatementsAddNothing) {
  ExportContent content;
  content.Add(QVariant());
  content.Add(u""_s);
  content.Add(u"   "_s);
  EXPECT_EQ(content.Bytes(), QByteArray());
}

TEST(ExportContent, LineBreaksAndTabsInAStatementStayAsTheyAre) {
  ExportContent content;
  content.Add(u"\tUPDATE a\r\nSET b = 1\n"_s);
  EXPECT_EQ(content.Bytes(), "\tUPDATE a\r\nSET b = 1\n;\r\n");
}

TEST(ExportContent, TextIsWrittenInWindows1252) {
  ExportContent content;
  content.Add(u"UPDATE a SET b = 'Café €5'"_s);
  EXPECT_EQ(content.Bytes(), QByteArray("UPDATE a SET b = 'Caf\xE9 \x80"
                                        "5';\r\n"));
  EXPECT_TRUE(content.Altered().isEmpty());
}

TEST(ExportContent, CharactersOutsideTheCodePageBecomeAQuestionMarkAndAreRemembered) {
  ExportContent content;
  content.Add(u"UPDATE a SET b = 'Ώ1'"_s);
  content.Add(u"DELETE FROM c"_s);
  EXPECT_EQ(content.Bytes(), "UPDATE a SET b = '?1';\r\nDELETE FROM c;\r\n");
  EXPECT_EQ(content.Altered(), QStringList{u"UPDATE a SET b = 'Ώ1'"_s});
}

TEST(ExportContent, TheWarningNamesTheFileTheFirstStatementsAndHowManyMore) {
  QStringList altered;
  for (int number = 1; number <= 7; ++number)
    altered += u"statement "_s + QString::number(number);
  const QString text = AlteredWarning(altered, u"Z:\\out\\1.tql"_s);
  EXPECT_TRUE(text.contains(u"Z:\\out\\1.tql"_s));
  EXPECT_TRUE(text.contains(u"statement 1"_s));
  EXPECT_TRUE(text.contains(u"statement 5"_s));
  EXPECT_FALSE(text.contains(u"statement 6"_s));
  EXPECT_TRUE(text.endsWith(u"en nog 2 andere opdrachten."_s));
  EXPECT_FALSE(AlteredWarning({u"x"_s}, u"y"_s).contains(u"andere"_s));
}
