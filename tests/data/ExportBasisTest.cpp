// SPDX-License-Identifier: MIT
#include "data/ExportBasis.h"

#include "data/BasisLine.h"
#include "platform/runtime/Error.h"
#include "tests/support/Station.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using dao::Value;
using testing_support::Station;

namespace {

basis::Entry SpotEntry() {
  basis::Entry entry;
  entry.table = u"tblItemSpots"_s;
  entry.keyField = u"ID"_s;
  entry.key = 42;
  entry.fields = {u"ID"_s, u"Naam"_s, u"StartDatum"_s};
  entry.before = {{std::int64_t{42}, std::u16string(u"Opener 't \"Uur\"; \r\n\u0416"), 45658.25}};
  entry.after = {{std::int64_t{42}, Value(), std::int64_t{-1}}};
  entry.references = {{u"tblItemPingles"_s, 7, u"0123456789abcdef0123456789abcdef"_s}, {u"tblItems"_s, 9, {}}};
  return entry;
}

class BasisFile : public testing::Test {
 protected:
  void Write(const QByteArray& content) const {
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QString ErrorOf() const {
    try {
      basis::Read(path_);
    } catch (const runtime::Error& error) {
      return error.Description();
    }
    return {};
  }

  const QTemporaryDir folder_;
  const QString path_ = basis::PathOf(folder_.filePath(u"20261122101500.tql"_s));
  const basis::Header header_{u"0d9b7a51"_s, "ab12", 1234, u"STUDIO2"_s};
};

}  // namespace

TEST(ExportBasis, EveryValueComesBackExactly) {
  const QList<Value> values{
      Value(),
      std::numeric_limits<std::int64_t>::max(),
      std::int64_t{-7},
      0.1,
      45658.729166666664,
      std::u16string(),
      std::u16string(u"'\"*?;\r\n\t\\ \u20ac \u0416 \xD83C\xDFB5"),
      std::u16string(u"half \xD83C paar"),
      std::u16string(u"a\0b", 3),
      dao::Bytes{0, 1, 255},
  };
  for (const Value& value : values) {
    basis::Entry entry = SpotEntry();
    entry.fields = {u"Waarde"_s};
    entry.before = {{value}};
    entry.after = {};
    EXPECT_EQ(basis::Decode(basis::Encode(entry)), entry);
  }
  EXPECT_EQ(basis::Decode(basis::Encode(SpotEntry())), SpotEntry());
}

// A day without a time comes back as a whole number.
TEST(ExportBasis, NumbersOfOneSizeAreTheSame) {
  EXPECT_TRUE(basis::Same(45658.0, std::int64_t{45658}));
  EXPECT_FALSE(basis::Same(45658.5, std::int64_t{45658}));
  EXPECT_FALSE(basis::Same(Value(), std::int64_t{0}));
  EXPECT_FALSE(basis::Same(Value(), std::u16string()));
  EXPECT_FALSE(basis::Same(std::u16string(u"1"), std::int64_t{1}));
}

TEST(ExportBasis, AFingerprintIsOfTheContent) {
  const basis::Row row{std::int64_t{42}, std::u16string(u"Bakker"), Value(), 45658.0};
  EXPECT_EQ(basis::Fingerprint(row).size(), 32);
  EXPECT_EQ(basis::Fingerprint(row),
            basis::Fingerprint({std::int64_t{42}, std::u16string(u"Bakker"), Value(), std::int64_t{45658}}));
  EXPECT_NE(basis::Fingerprint(row),
            basis::Fingerprint({std::int64_t{42}, std::u16string(u"Bakker"), std::u16string(), 45658.0}));
}

TEST(ExportBasis, TakesTheRowsOfARecordset) {
  const Station station;
  station.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, StartDatum) VALUES (42, \"Opener 't Uur\", 45658)"_s);
  QStringList fields;
  const QList<basis::Row> rows =
      basis::RowsOf(station.ServerRows(u"SELECT ID, Naam, Path, StartDatum FROM tblItemSpots"_s), fields);
  EXPECT_EQ(fields, (QStringList{u"ID"_s, u"Naam"_s, u"Path"_s, u"StartDatum"_s}));
  EXPECT_EQ(rows, (QList<basis::Row>{{std::int64_t{42}, std::u16string(u"Opener 't Uur"), Value(), 45658.0}}));
}

TEST_F(BasisFile, IsReadAsItWasWritten) {
  Write(basis::HeaderLine(header_) + basis::EntryLine(SpotEntry()) + basis::EntryLine(std::nullopt) +
        basis::LastLine(2));
  const basis::File file = basis::Read(path_);
  EXPECT_EQ(file.header, header_);
  ASSERT_EQ(file.entries.size(), 2u);
  EXPECT_EQ(file.entries[0], SpotEntry());
  EXPECT_EQ(file.entries[1], std::nullopt);
}

// Wherever it is cut, also within the last line.
TEST_F(BasisFile, AFileThatWasCutShortIsRefused) {
  const QByteArray whole = basis::HeaderLine(header_) + basis::EntryLine(SpotEntry()) + basis::LastLine(1);
  for (qsizetype length = 0; length < whole.size(); ++length) {
    Write(whole.first(length));
    const QString error = ErrorOf();
    EXPECT_TRUE(error.contains(path_)) << length << ' ' << error.toStdString();
  }
}

TEST_F(BasisFile, AnErrorNamesTheLine) {
  const QByteArray header = basis::HeaderLine(header_);
  const QByteArray entry = basis::EntryLine(SpotEntry());
  const auto expect = [&](const QByteArray& content, const QString& what) {
    Write(content);
    EXPECT_TRUE(ErrorOf().contains(what)) << ErrorOf().toStdString();
  };
  expect(header + entry + "DROP TABLE;\n" + basis::LastLine(2), u"regel 3: de regel is onleesbaar"_s);
  expect(header + "{\"table\":\"tblItems\"}\n" + basis::LastLine(1), u"regel 2: 'keyField' ontbreekt"_s);
  expect(header + entry + basis::LastLine(2), u"regel 3: er ontbreken regels"_s);
  expect(header + entry + basis::LastLine(1) + entry, u"regel 4"_s);
  expect("{\"format\":\"iets\"}\n", u"regel 1: dit is geen basis"_s);
  expect(QByteArray(header).replace("\"version\":1", "\"version\":2"),
         u"regel 1: deze basis is van een andere versie"_s);
  QByteArray fewer = entry;
  fewer.replace(",45658.25]", "]");
  expect(header + fewer + basis::LastLine(1), u"regel 2: een rij heeft niet één waarde voor elk veld"_s);
  expect({}, u"is leeg"_s);
}

// Lines of a program that writes its JSON in another order or spacing, or with other escapes, are the same entries.
TEST(ExportBasis, TheQuickReaderReadsWhatEncodeWritesAndNothingElse) {
  basis::LineReader reader;
  const basis::Entry entry = SpotEntry();
  const QByteArray line = basis::Encode(entry);
  for (int twice = 0; twice < 2; ++twice)
    EXPECT_EQ(reader.Read(line), entry) << line.toStdString();
  basis::Entry other = entry;
  other.fields = {u"ID"_s, u"Path"_s, u"StartDatum"_s};
  EXPECT_EQ(reader.Read(basis::Encode(other)), other) << "other fields than the line before";
  QByteArray spaced = line;
  spaced.replace("\"key\":", "\"key\": ");
  for (const QByteArray& unknown :
       {spaced, QByteArray(line + ' '), line.chopped(1), QByteArray(), QByteArray("{}"),
        QByteArray(line).replace("Opener", "\\u004fpener"), QByteArray(line).replace("[42,", "[4.2e1,"),
        QByteArray(line).replace("[42,", "["), QByteArray(line).replace("[42,", "[99999999999999999999,"),
        QByteArray(line).replace("Opener", "\xff")}) {
    EXPECT_FALSE(reader.Read(unknown)) << unknown.toStdString();
  }
  EXPECT_EQ(basis::Decode(spaced), entry);
  for (qsizetype length = 0; length < line.size(); ++length)
    EXPECT_FALSE(reader.Read(line.first(length))) << length;
}
