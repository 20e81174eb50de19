// SPDX-License-Identifier: MIT
// Currency and Numeric keep every digit when written, read, and copied between files.
#include "platform/jet/values/ExactNumber.h"

#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace scratch;

namespace {

dao::TableDef Amounts(const QString& name) {
  dao::FieldDef number = Field(u"Getal"_s, dao::FieldType::Numeric);
  number.precision = 28;
  number.scale = 6;
  return {name,
          {Field(u"ID"_s, dao::FieldType::Long), Field(u"Bedrag"_s, dao::FieldType::Currency), number,
           Field(u"Tekst"_s, dao::FieldType::Memo)},
          {Key({u"ID"_s}), Index(u"Bedrag"_s, {u"Bedrag"_s})}};
}

class ExactNumber : public testing::Test {
 protected:
  ExactNumber() { database_.CreateTable(Amounts(u"tblBedragen"_s)); }

  QStringList Stored() { return Rows(database_, u"SELECT Bedrag, Getal FROM tblBedragen ORDER BY ID"_s); }

  Scratch scratch_;
  dao::Database database_ = scratch_.Open();
};

TEST_F(ExactNumber, TheLargestAndTheSmallestAreStoredExactly) {
  database_.Execute(
      u"INSERT INTO tblBedragen (ID, Bedrag, Getal) VALUES (1, 922337203685477.5807, 1234567890123456789012.345678)"_s);
  database_.Execute(
      u"INSERT INTO tblBedragen (ID, Bedrag, Getal) VALUES (2, -922337203685477.5808, -9999999999999999999999.999999)"_s);
  database_.Execute(u"INSERT INTO tblBedragen (ID, Bedrag, Getal) VALUES (3, \"-12,3456\", \"0,25\")"_s);
  const QStringList expected = {u"922337203685477.5807|1234567890123456789012.345678"_s,
                                u"-922337203685477.5808|-9999999999999999999999.999999"_s, u"-12.3456|0.25"_s};
  EXPECT_EQ(Stored(), expected);
}

TEST_F(ExactNumber, WhatWasReadCanBeWrittenBack) {
  database_.Execute(u"INSERT INTO tblBedragen (ID, Bedrag) VALUES (1, 922337203685477.5807)"_s);
  const QString read = Value(database_, u"SELECT Bedrag FROM tblBedragen"_s, u"Bedrag"_s).toString();
  database_.Execute(u"UPDATE tblBedragen SET Bedrag = 0"_s);
  database_.Execute(u"UPDATE tblBedragen SET Bedrag = \"%1\" WHERE ID = 1"_s.arg(read));
  EXPECT_EQ(Stored(), QStringList{u"922337203685477.5807|-"_s});
  database_.Execute(u"UPDATE tblBedragen SET Bedrag = -%1 WHERE ID = 1"_s.arg(read));
  EXPECT_EQ(Stored(), QStringList{u"-922337203685477.5807|-"_s});
}

TEST_F(ExactNumber, ACopyHasTheSameDigits) {
  database_.Execute(
      u"INSERT INTO tblBedragen (ID, Bedrag, Getal) VALUES (1, 900719925474.0993, 12345678901234567.890123)"_s);
  database_.CreateTable(Amounts(u"tblCopie"_s));
  database_.Execute(u"INSERT INTO tblCopie SELECT * FROM tblBedragen WHERE ID = 1"_s);
  database_.Execute(u"INSERT INTO tblCopie (ID, Bedrag, Getal) SELECT ID + 1, Bedrag, Getal FROM tblBedragen"_s);
  const QString row = u"900719925474.0993|12345678901234567.890123"_s;
  EXPECT_EQ(Rows(database_, u"SELECT Bedrag, Getal FROM tblCopie"_s), (QStringList{row, row}));
}

TEST_F(ExactNumber, OrdinaryAmountsStayNumbers) {
  database_.Execute(u"INSERT INTO tblBedragen (ID, Bedrag, Getal) VALUES (1, 12.5, 99999999.123456)"_s);
  EXPECT_EQ(Value(database_, u"SELECT Bedrag FROM tblBedragen"_s, u"Bedrag"_s), QVariant(12.5));
  EXPECT_EQ(Value(database_, u"SELECT Getal FROM tblBedragen"_s, u"Getal"_s), QVariant(99999999.123456));
  EXPECT_EQ(Value(database_, u"SELECT Bedrag * 2 AS Dubbel FROM tblBedragen"_s, u"Dubbel"_s), QVariant(25.0));
}

TEST_F(ExactNumber, AValueThatIsTooLargeIsRefused) {
  const QString error =
      ExecuteError(database_, u"INSERT INTO tblBedragen (ID, Bedrag) VALUES (1, 922337203685477.5808)"_s);
  EXPECT_TRUE(error.contains(u"'Bedrag'"_s) && error.contains(u"te groot"_s)) << qPrintable(error);
  EXPECT_FALSE(
      ExecuteError(database_, u"INSERT INTO tblBedragen (ID, Getal) VALUES (1, 12345678901234567890123)"_s).isEmpty());
  EXPECT_EQ(Stored(), QStringList{});
}

TEST_F(ExactNumber, AnAmountIsFoundExactly) {
  database_.Execute(u"INSERT INTO tblBedragen (ID, Bedrag) VALUES (1, 922337203685477.5807)"_s);
  database_.Execute(u"INSERT INTO tblBedragen (ID, Bedrag) VALUES (2, 12.5)"_s);
  EXPECT_EQ(Rows(database_, u"SELECT ID FROM tblBedragen WHERE Bedrag = 922337203685477.5807"_s), QStringList{u"1"_s});
  EXPECT_EQ(Rows(database_, u"SELECT ID FROM tblBedragen WHERE Bedrag = 12.5"_s), QStringList{u"2"_s});
  EXPECT_EQ(Rows(database_, u"SELECT ID FROM tblBedragen WHERE Bedrag > 100"_s), QStringList{u"1"_s});
}

TEST(ExactNumberRounding, RoundsOnceHalfToEven) {
  const auto rounded = [](const char16_t* text, int scale) {
    return QString::fromStdU16String(jet::TextOf(*jet::RoundedTo(*jet::ExactOf(std::u16string_view(text)), scale)));
  };
  EXPECT_EQ(rounded(u"0.12345", 4), u"0.1234"_s);
  EXPECT_EQ(rounded(u"0.12355", 4), u"0.1236"_s);
  EXPECT_EQ(rounded(u"0.123450001", 4), u"0.1235"_s);
  EXPECT_EQ(rounded(u"-0.123449999", 4), u"-0.1234"_s);
  EXPECT_EQ(rounded(u" 7 ", 2), u"7.00"_s);
  EXPECT_FALSE(jet::ExactOf(std::u16string_view(u"1e5")));
  EXPECT_FALSE(jet::ExactOf(std::u16string_view(u",")));
  EXPECT_FALSE(jet::ExactOf(std::u16string_view(u"")));
}

}  // namespace
