// SPDX-License-Identifier: MIT
#include "platform/dao/Conversion.h"

#include "tests/platform/dao/Scratch.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <span>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

// A table with one field of every type, and one row with ID 1.
class TypeScratch : public Scratch {
 public:
  TypeScratch() {
    dao::FieldDef name = Field(u"Verplicht"_s, FieldType::Text, 5);
    name.required = true;
    name.allowZeroLength = false;
    dao::FieldDef numeric = Field(u"Getal"_s, FieldType::Numeric);
    numeric.precision = 5;
    numeric.scale = 2;
    dao::Database database = Open();
    database.CreateTable(
        {u"tblTypes"_s,
         {Field(u"ID"_s, FieldType::Long), Field(u"JaNee"_s, FieldType::Boolean), Field(u"Klein"_s, FieldType::Byte),
          Field(u"Kort"_s, FieldType::Integer), Field(u"Lang"_s, FieldType::Long),
          Field(u"Geld"_s, FieldType::Currency), Field(u"Enkel"_s, FieldType::Single),
          Field(u"Dubbel"_s, FieldType::Double), Field(u"Dag"_s, FieldType::Date),
          Field(u"Tekst"_s, FieldType::Text, 10), Field(u"Memo"_s, FieldType::Memo),
          Field(u"Bits"_s, FieldType::Binary, 8), Field(u"Sleutel"_s, FieldType::Guid), numeric, name},
         {Key({u"ID"_s})}});
    database.Execute(u"INSERT INTO tblTypes (ID, Verplicht) VALUES (1, \"x\")"_s);
  }

  QString SetError(const QString& field, const QString& value) const {
    return ExecuteError(Open(), u"UPDATE tblTypes SET %1 = %2"_s.arg(field, value));
  }
  QVariant Stored(const QString& field, const QString& value) const {
    Open().Execute(u"UPDATE tblTypes SET %1 = %2"_s.arg(field, value));
    return Value(Open(), u"SELECT %1 FROM tblTypes"_s.arg(field), field);
  }
};

TEST(Conversion, EachTypeRoundTrips) {
  const TypeScratch s;
  EXPECT_EQ(s.Stored(u"JaNee"_s, u"1"_s), QVariant(true));
  EXPECT_EQ(s.Stored(u"JaNee"_s, u"0"_s), QVariant(false));
  EXPECT_EQ(s.Stored(u"Klein"_s, u"255"_s), QVariant(255));
  EXPECT_EQ(s.Stored(u"Kort"_s, u"-32768"_s), QVariant(-32768));
  EXPECT_EQ(s.Stored(u"Lang"_s, u"2147483647"_s), QVariant(2147483647));
  EXPECT_EQ(s.Stored(u"Geld"_s, u"12.34567"_s), QVariant(12.3457));
  EXPECT_EQ(s.Stored(u"Enkel"_s, u"0.1"_s), QVariant(static_cast<double>(0.1F)));
  EXPECT_EQ(s.Stored(u"Dubbel"_s, u"5"_s), QVariant(5.0));
  EXPECT_EQ(s.Stored(u"Getal"_s, u"-999.987"_s), QVariant(-999.99));
  EXPECT_EQ(s.Stored(u"Tekst"_s, u"\"Ærøskøbing\""_s), QVariant(u"Ærøskøbing"_s));
  EXPECT_EQ(s.Stored(u"Sleutel"_s, u"\"{0a0b0c0d-1111-2222-3333-444455556666}\""_s),
            QVariant(u"{0A0B0C0D-1111-2222-3333-444455556666}"_s));
  EXPECT_EQ(s.Stored(u"Memo"_s, u'"' + QString(70000, u'é') + u'"'), QVariant(QString(70000, u'é')));
}

TEST(Conversion, NumberInADateIsADayNumber) {
  const TypeScratch s;
  EXPECT_EQ(s.Stored(u"Dag"_s, u"45658"_s), QVariant(QDateTime(QDate(2025, 1, 1), QTime(0, 0))));
  EXPECT_EQ(s.Stored(u"Dag"_s, u"45658.75"_s), QVariant(QDateTime(QDate(2025, 1, 1), QTime(18, 0))));
  EXPECT_EQ(s.Stored(u"Dag"_s, u"-1.25"_s), QVariant(QDateTime(QDate(1899, 12, 29), QTime(6, 0))));
  EXPECT_EQ(s.Stored(u"Dag"_s, u"\"31-12-2025 23:59\""_s), QVariant(QDateTime(QDate(2025, 12, 31), QTime(23, 59))));
  EXPECT_EQ(s.Stored(u"Dag"_s, u"\"2025-02-28\""_s), QVariant(QDateTime(QDate(2025, 2, 28), QTime(0, 0))));
  EXPECT_EQ(Rows(s.Open(), u"SELECT ID FROM tblTypes WHERE Dag = 45716"_s), QStringList{u"1"_s});
  EXPECT_TRUE(s.SetError(u"Dag"_s, u"\"31-02-2025\""_s).contains(u"geen datum"_s));
  EXPECT_TRUE(s.SetError(u"Dag"_s, u"3000000"_s).contains(u"geen datum"_s));
}

TEST(Conversion, FractionsAreRoundedHalfToEven) {
  const TypeScratch s;
  EXPECT_EQ(s.Stored(u"Lang"_s, u"2.5"_s), QVariant(2));
  EXPECT_EQ(s.Stored(u"Kort"_s, u"3.5"_s), QVariant(4));
  EXPECT_EQ(s.Stored(u"Klein"_s, u"-0.5"_s), QVariant(0));
  EXPECT_EQ(s.Stored(u"Lang"_s, u"\"1,5\""_s), QVariant(2));
}

TEST(Conversion, NumbersAndTextsAreConverted) {
  const TypeScratch s;
  EXPECT_EQ(s.Stored(u"Tekst"_s, u"-1"_s), QVariant(u"-1"_s));
  EXPECT_EQ(s.Stored(u"Tekst"_s, u"1.5"_s), QVariant(u"1,5"_s));
  EXPECT_EQ(s.Stored(u"Lang"_s, u"\" 42 \""_s), QVariant(42));
}

TEST(Conversion, InvalidValuesAreErrorsWithFieldTableAndValue) {
  const TypeScratch s;
  const QString tooLong = s.SetError(u"Tekst"_s, u"\"elf letters\""_s);
  EXPECT_TRUE(tooLong.contains(u"'Tekst'"_s) && tooLong.contains(u"'tblTypes'"_s) && tooLong.contains(u"te lang"_s))
      << qPrintable(tooLong);
  EXPECT_TRUE(s.SetError(u"Lang"_s, u"\"veel\""_s).contains(u"'veel' past niet in het veld 'Lang'"_s));
  EXPECT_TRUE(s.SetError(u"Kort"_s, u"32768"_s).contains(u"te groot"_s));
  EXPECT_TRUE(s.SetError(u"Klein"_s, u"-1"_s).contains(u"'Klein'"_s));
  EXPECT_TRUE(s.SetError(u"Lang"_s, u"2147483648"_s).contains(u"te groot"_s));
  EXPECT_TRUE(s.SetError(u"Enkel"_s, u"1e39"_s).contains(u"te groot"_s));
  EXPECT_TRUE(s.SetError(u"Getal"_s, u"1000"_s).contains(u"te groot"_s));
  EXPECT_TRUE(s.SetError(u"Geld"_s, u"1e15"_s).contains(u"te groot"_s));
  EXPECT_TRUE(s.SetError(u"Bits"_s, u"\"x\""_s).contains(u"binaire"_s));
  EXPECT_TRUE(s.SetError(u"Sleutel"_s, u"\"x\""_s).contains(u"GUID"_s));
  EXPECT_EQ(Rows(s.Open(), u"SELECT Lang, Tekst FROM tblTypes"_s), QStringList{u"-|-"_s});
}

TEST(Conversion, RequiredFieldsNeedAValue) {
  const TypeScratch s;
  EXPECT_TRUE(s.SetError(u"Verplicht"_s, u"NULL"_s).contains(u"'Verplicht' van de tabel 'tblTypes' moet een waarde"_s));
  EXPECT_TRUE(s.SetError(u"Verplicht"_s, u"\"\""_s).contains(u"lege tekst"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblTypes (ID) VALUES (2)"_s).contains(u"'Verplicht'"_s));
  EXPECT_TRUE(ExecuteError(s.Open(), u"INSERT INTO tblTypes (Verplicht) VALUES (\"x\")"_s).contains(u"'ID'"_s));
}

TEST(Conversion, BooleanIsMinusOneInArithmeticAndNeverNull) {
  const TypeScratch s;
  EXPECT_EQ(s.Stored(u"JaNee"_s, u"NULL"_s), QVariant(false));
  s.Open().Execute(u"UPDATE tblTypes SET JaNee = 7"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT JaNee * 3 AS x FROM tblTypes WHERE JaNee = True"_s), QStringList{u"-3"_s});
}

TEST(Conversion, EmptyTextIsNotNull) {
  const TypeScratch s;
  s.Open().Execute(u"UPDATE tblTypes SET Tekst = \"\", Memo = \"\""_s);
  const QVariant value = Value(s.Open(), u"SELECT Tekst FROM tblTypes WHERE Memo = \"\""_s, u"Tekst"_s);
  EXPECT_TRUE(value.isValid());
  EXPECT_FALSE(value.isNull());
  EXPECT_EQ(value.toString(), QString());
}

TEST(Conversion, OmittedFieldsGetTheirDefault) {
  const Scratch s;
  dao::FieldDef played = Field(u"Gedraaid"_s, FieldType::Long);
  played.defaultValue = 7;
  dao::FieldDef name = Field(u"Naam"_s, FieldType::Text, 10);
  name.defaultValue = u"leeg"_s;
  s.Open().CreateTable({u"t"_s, {Field(u"ID"_s, FieldType::Long), played, name}, {}});
  s.Open().Execute(u"INSERT INTO t (ID) VALUES (1)"_s);
  s.Open().Execute(u"INSERT INTO t (ID, Gedraaid, Naam) VALUES (2, NULL, \"x\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM t ORDER BY ID"_s), (QStringList{u"1|7|leeg"_s, u"2|-|x"_s}));
}

TEST(Conversion, AutoNumberContinues) {
  const Scratch s;
  dao::FieldDef id = Field(u"ID"_s, FieldType::Long);
  id.autoNumber = id.required = true;
  s.Open().CreateTable({u"t"_s, {id, Field(u"Naam"_s, FieldType::Text, 10)}, {Key({u"ID"_s})}});
  s.Open().Execute(u"INSERT INTO t (Naam) VALUES (\"a\")"_s);
  s.Open().Execute(u"INSERT INTO t (ID, Naam) VALUES (41, \"b\")"_s);
  s.Open().Execute(u"INSERT INTO t (Naam) VALUES (\"c\")"_s);
  EXPECT_EQ(Rows(s.Open(), u"SELECT * FROM t ORDER BY ID"_s), (QStringList{u"1|a"_s, u"41|b"_s, u"42|c"_s}));
}

TEST(Conversion, BytesAreStored) {
  const std::uint8_t bytes[] = {0, 1, 255};
  const dao::FieldDef field = Field(u"Bits"_s, FieldType::Binary, 3);
  EXPECT_EQ(std::get<dao::Bytes>(dao::ConvertToField(u"t"_s, field, std::span<const std::uint8_t>(bytes))),
            (dao::Bytes{0, 1, 255}));
  const dao::FieldDef small = Field(u"Bits"_s, FieldType::Binary, 2);
  EXPECT_TRUE(ErrorOf([&] {
                dao::ConvertToField(u"t"_s, small, std::span<const std::uint8_t>(bytes));
              }).contains(u"te lang"_s));
}

}  // namespace
