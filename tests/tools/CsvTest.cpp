#include "tools/Csv.h"

#include <gtest/gtest.h>

#include <QDateTime>

using namespace Qt::StringLiterals;

TEST(Csv, FieldsAreWrittenByType) {
  EXPECT_EQ(CsvField(QVariant()), u""_s);
  EXPECT_EQ(CsvField(u""_s), u"\"\""_s);
  EXPECT_EQ(CsvField(u"gewoon"_s), u"gewoon"_s);
  EXPECT_EQ(CsvField(u"a \"b\", c"_s), u"\"a \"\"b\"\", c\""_s);
  EXPECT_EQ(CsvField(u"twee\r\nregels"_s), u"\"twee\r\nregels\""_s);
  EXPECT_EQ(CsvField(true), u"-1"_s);
  EXPECT_EQ(CsvField(false), u"0"_s);
  EXPECT_EQ(CsvField(42), u"42"_s);
  EXPECT_EQ(CsvField(0.1), u"0.1"_s);
  EXPECT_EQ(CsvField(QDateTime(QDate(2025, 3, 1), QTime(0, 0))), u"2025-03-01 00:00:00"_s);
  EXPECT_EQ(CsvField(QByteArray("\x01\xFF", 2)), u"01ff"_s);
}
