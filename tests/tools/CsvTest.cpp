// SPDX-License-Identifier: MIT
#include "tools/Csv.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

std::string Field(const QVariant& value) {
  return CsvField(value).toStdString();
}

}  // namespace

TEST(Csv, FieldsAreWrittenByType) {
  EXPECT_EQ(Field(QVariant()), "");
  EXPECT_EQ(Field(u""_s), "\"\"");
  EXPECT_EQ(Field(u"gewoon"_s), "gewoon");
  EXPECT_EQ(Field(u"a \"b\", c"_s), "\"a \"\"b\"\", c\"");
  EXPECT_EQ(Field(u"twee\r\nregels"_s), "\"twee\r\nregels\"");
  EXPECT_EQ(Field(true), "-1");
  EXPECT_EQ(Field(false), "0");
  EXPECT_EQ(Field(42), "42");
  EXPECT_EQ(Field(QDateTime(QDate(2025, 3, 1), QTime(0, 0))), "2025-03-01 00:00:00");
  EXPECT_EQ(Field(QByteArray("\x01\xFF", 2)), "01ff");
}

TEST(Csv, NumbersHaveTheFewestDigitsThatTellThemApart) {
  EXPECT_EQ(Field(0.1), "0.1");
  EXPECT_EQ(Field(-3.5), "-3.5");
  EXPECT_EQ(Field(100000.0), "100000");
  EXPECT_EQ(Field(1e300), "1e+300");
  EXPECT_EQ(Field(1e-9), "1e-09");
}

TEST(Csv, DatesCountForwardsWithinTheirDay) {
  CsvLine line;
  for (const double day : {0.0, -1.25, 36526.5, 2958465.0, -657434.0, 36526.99999999999, 3e9})
    line.AddDate(day);
  EXPECT_EQ(line.Text(),
            "1899-12-30 00:00:00,1899-12-29 06:00:00,2000-01-01 12:00:00,9999-12-31 00:00:00,0100-01-01 00:00:00,"
            "2000-01-02 00:00:00,3000000000");
}
