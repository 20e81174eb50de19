// SPDX-License-Identifier: MIT
// A database copied from a file to a server and back is the same database.
#include "platform/dao/CopyDatabase.h"

#include "platform/dao/Conversion.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/postgres/ServerScratch.h"
#include "tests/support/LongTests.h"

#include <QDir>

#include <iostream>
#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::CopyMode;
using dao::FieldType;

namespace {

QString Printed(const dao::ValueView& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return u'i' + QString::number(*whole);
  if (const auto* number = std::get_if<double>(&value)) return u'd' + QString::number(*number, 'g', 17);
  if (const auto* text = std::get_if<std::u16string_view>(&value)) return u't' + QStringView(*text).toString();
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    return u'b' +
           QString::fromLatin1(
               QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size())).toHex());
  }
  return u"-"_s;
}

// Dates are stored to the microsecond.
QString PrintedField(FieldType type, const dao::ValueView& value) {
  const auto* number = std::get_if<double>(&value);
  if (type != FieldType::Date || number == nullptr) return Printed(value);
  return u'm' + QString::number(std::llround(*number * 86'400'000'000.0));
}

// The definitions and every row of every table, field by field.
QStringList Everything(const QString& path) {
  QStringList lines;
  const auto storage = dao::OpenStorage(path, {.readOnly = true});
  const auto reading = storage->Begin(dao::Access::Read);
  QStringList names = storage->TableNames();
  names.sort();
  for (const QString& name : names) {
    const auto table = storage->OpenTable(name);
    const dao::TableDef& definition = table->Definition();
    QStringList rows;
    dao::FieldMask all;
    for (qsizetype i = 0; i < definition.fields.size(); ++i)
      all.set(static_cast<std::size_t>(i));
    for (const auto cursor = table->Scan(all); cursor->Next();) {
      QStringList fields;
      for (qsizetype i = 0; i < definition.fields.size(); ++i)
        fields += PrintedField(definition.fields[i].type, cursor->Field(static_cast<std::size_t>(i)));
      rows += fields.join(u'|');
    }
    rows.sort();
    lines += u"table "_s + definition.name;
    for (const dao::FieldDef& field : definition.fields)
      lines += u"%1 %2 %3 %4 %5"_s.arg(field.name)
                   .arg(static_cast<int>(field.type))
                   .arg(field.size)
                   .arg(field.required)
                   .arg(field.autoNumber);
    for (const dao::IndexDef& index : definition.indexes)
      lines += u"%1 %2 %3"_s.arg(index.name).arg(index.unique).arg(index.primary);
    lines += rows;
  }
  return lines;
}

class CopyDatabase : public testing::Test {
 protected:
  QString File(const QString& name) const { return folder_.filePath(name); }
  static QString NewServerPath() {
    static int number = 0;
    return testing_support::ServerPath(u"kopie%1"_s.arg(++number));
  }
  void ExpectSameThereAndBack(const QString& source) {
    const QString server = NewServerPath();
    const QString back = File(u"terug %1.mdb"_s.arg(++backs_));
    dao::CopyDatabase(source, server, CopyMode::Fill);
    EXPECT_EQ(Everything(server), Everything(source)) << qPrintable(source);
    dao::CopyDatabase(server, back, CopyMode::Fill);
    EXPECT_EQ(Everything(back), Everything(source)) << qPrintable(source);
  }

  QTemporaryDir folder_;
  int backs_ = 0;
};

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(seed) {}
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  dao::TableDef Table(const QString& name) {
    dao::TableDef table{name, {Field(u"ID"_s, FieldType::Long)}, {Key({u"ID"_s})}};
    const int fields = 1 + Below(12);
    for (int i = 0; i < fields; ++i) {
      dao::FieldDef field = Field(u"Véld %1"_s.arg(i), static_cast<FieldType>(Below(13)));
      if (field.type == FieldType::Text) field.size = 1 + Below(255);
      if (field.type == FieldType::Binary) field.size = 1 + Below(255);
      if (field.type == FieldType::Numeric) {
        field.precision = 1 + Below(28);
        field.scale = Below(field.precision + 1);
      }
      table.fields += field;
    }
    return table;
  }

  dao::Value For(const dao::FieldDef& field) {
    if (Below(6) == 0) return field.type == FieldType::Boolean ? dao::Value(std::int64_t{0}) : dao::Value();
    switch (field.type) {
      case FieldType::Boolean:
        return std::int64_t{-Below(2)};
      case FieldType::Byte:
        return std::int64_t{Below(256)};
      case FieldType::Integer:
        return std::int64_t{Below(65536) - 32768};
      case FieldType::Long:
        return std::int64_t{static_cast<std::int32_t>(random_())};
      case FieldType::Currency:
        return static_cast<double>(static_cast<std::int32_t>(random_())) / 10000;
      case FieldType::Single:
        return static_cast<double>(static_cast<float>(random_()) * 1e-7F);
      case FieldType::Double:
        return std::ldexp(static_cast<double>(random_()) - 2e9, Below(1800) - 900);
      case FieldType::Date:
        return Below(3'600'000) - 650'000 + Below(86400) / 86400.0;
      case FieldType::Numeric:
        return Numeric(field);
      case FieldType::Guid:
        return std::u16string(u"{0A0B0C0D-1111-2222-3333-44445555666") + static_cast<char16_t>(u'0' + Below(10)) + u'}';
      case FieldType::Binary:
        return dao::Bytes(static_cast<std::size_t>(1 + Below(field.size)), static_cast<std::uint8_t>(random_()));
      default:
        return Text(field.type == FieldType::Text ? field.size : 3000);
    }
  }

 private:
  dao::Value Numeric(const dao::FieldDef& field) {
    QString digits;
    for (int i = 0; i < field.precision; ++i)
      digits += QChar(static_cast<char16_t>(u'0' + Below(10)));
    digits.insert(field.precision - field.scale, u'.');
    const std::u16string text = digits.prepend(u'0').toStdU16String();
    return dao::ConvertToField(u"t"_s, field, std::u16string_view(text));
  }
  std::u16string Text(int most) {
    static const std::u16string kLetters = u"aZ9 '\"\\éßЖ漢€\uFEFF\n\t%_$";
    std::u16string text;
    for (int left = Below(most + 1); left > 0; --left)
      text += kLetters[static_cast<std::size_t>(Below(static_cast<int>(kLetters.size())))];
    return text;
  }

  std::mt19937 random_;
};

TEST_F(CopyDatabase, RandomTablesRoundTrip) {
  for (int round = 0; round < testing_support::LongTests(); ++round) {
    Chance chance(static_cast<unsigned>(round) + 1);
    const QString source = File(u"bron %1.mdb"_s.arg(round));
    dao::CreateDatabase(source);
    for (int number = 0; number < 6; ++number) {
      const dao::TableDef table = chance.Table(u"Täbel %1"_s.arg(number));
      dao::OpenDatabase(source).CreateTable(table);
      const auto storage = dao::OpenStorage(source);
      const auto writing = storage->Begin(dao::Access::Write);
      const auto rows = storage->OpenTable(table.name);
      for (std::int64_t id = 1; id <= 40; ++id) {
        std::vector<dao::Value> row{id};
        for (qsizetype i = 1; i < table.fields.size(); ++i)
          row.push_back(chance.For(table.fields[i]));
        rows->Insert(std::move(row));
      }
      writing->Commit();
    }
    ExpectSameThereAndBack(source);
  }
}

TEST_F(CopyDatabase, SamplesOfOtherProgramsRoundTrip) {
  const QString samples = qEnvironmentVariable("SPOTROOSTER_MDB_SAMPLES");
  if (samples.isEmpty()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES is not set";
  int fitting = 0;
  for (const QString& name : QDir(samples).entryList({u"*.mdb"_s})) {
    const QString source = samples + u'/' + name;
    const QString misfit = ErrorOf([&] { ExpectSameThereAndBack(source); });
    if (!misfit.isEmpty()) {
      std::cout << name.toStdString() << " does not fit: " << misfit.toStdString() << '\n';
      continue;
    }
    ++fitting;
  }
  EXPECT_GE(fitting, 8);
}

TEST_F(CopyDatabase, ARefreshChangesOnlyWhatDiffers) {
  const SpotScratch source;
  const QString target = File(u"spiegel.mdb"_s);
  dao::CopyDatabase(source.Path(), target, CopyMode::Fill);
  source.Open().Execute(u"UPDATE tblSpots SET Naam = \"anders\" WHERE ID = 2"_s);
  source.Open().Execute(u"DELETE FROM tblSpots WHERE ID = 3"_s);
  source.Open().Execute(u"INSERT INTO tblSpots (ID) VALUES (4)"_s);
  const auto copied = dao::CopyDatabase(source.Path(), target, CopyMode::Refresh);
  ASSERT_EQ(copied.size(), 1U);
  EXPECT_EQ(copied[0].rows, 3);
  EXPECT_EQ(copied[0].inserted, 2);
  EXPECT_EQ(copied[0].deleted, 2);
  EXPECT_EQ(Everything(target), Everything(source.Path()));
  const auto again = dao::CopyDatabase(source.Path(), target, CopyMode::Refresh);
  EXPECT_EQ(again[0].inserted + again[0].deleted, 0);
}

TEST_F(CopyDatabase, RowsOfTheTargetAreNotOverwrittenWithoutRefresh) {
  const SpotScratch source;
  const QString target = File(u"doel.mdb"_s);
  dao::CreateDatabase(target);
  dao::OpenDatabase(target).CreateTable(Spots());
  dao::OpenDatabase(target).Execute(u"INSERT INTO tblSpots (ID) VALUES (9)"_s);
  const QString error = ErrorOf([&] { dao::CopyDatabase(source.Path(), target, CopyMode::Fill); });
  EXPECT_TRUE(error.contains(u"'tblSpots'"_s) && error.contains(u"--refresh"_s)) << qPrintable(error);
  EXPECT_EQ(Rows(dao::OpenDatabase(target), u"SELECT ID FROM tblSpots"_s), QStringList{u"9"_s});
  EXPECT_TRUE(ErrorOf([&] { dao::CopyDatabase(target, target, CopyMode::Refresh); }).contains(u"dezelfde"_s));
}

}  // namespace
