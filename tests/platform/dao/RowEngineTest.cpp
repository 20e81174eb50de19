// SPDX-License-Identifier: MIT
// Random statements about one row on two equal databases. In one they are carried out as always, in the other by the
// SQL engine alone, as in a StatementTransaction: rows, results and error texts must be the same.
// SPOTROOSTER_ROW_STATEMENTS and SPOTROOSTER_SEED: other counts and numbers (scripts/prove rows).
#include "platform/dao/Database.h"
#include "platform/dao/RowStatement.h"
#include "platform/dao/StatementTransaction.h"
#include "platform/runtime/Error.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

constexpr int kUsualStatements = 1500;
constexpr int kBetweenComparisons = 50;
constexpr int kBetweenRenewals = 2000;  // a full table, or one without a next number, refuses most inserts

int FromEnvironment(const char* name, int usual) {
  bool isNumber = false;
  const int number = qEnvironmentVariableIntValue(name, &isNumber);
  return isNumber ? number : usual;
}

dao::TableDef Wide() {
  dao::TableDef table{
      u"tblAlles"_s,
      {Field(u"ID"_s, FieldType::Long), Field(u"Naam"_s, FieldType::Text, 12), Field(u"Klein"_s, FieldType::Byte),
       Field(u"Aantal"_s, FieldType::Integer), Field(u"Aktief"_s, FieldType::Boolean), Field(u"Dag"_s, FieldType::Date),
       Field(u"Prijs"_s, FieldType::Currency), Field(u"Deel"_s, FieldType::Numeric),
       Field(u"Enkel"_s, FieldType::Single), Field(u"Dubbel"_s, FieldType::Double), Field(u"Tekst"_s, FieldType::Memo),
       Field(u"Sleutel"_s, FieldType::Guid), Field(u"Ruw"_s, FieldType::Binary, 8),
       Field(u"Nummer"_s, FieldType::Long)},
      {Key({u"ID"_s}), Index(u"OpAantal"_s, {u"Aantal"_s}), Index(u"OpNaam"_s, {u"Naam"_s}),
       Index(u"OpKlein"_s, {u"Klein"_s}), Index(u"OpNummer"_s, {u"Nummer"_s, u"ID"_s})}};
  table.fields[1].allowZeroLength = false;
  table.fields[2].defaultValue = 7;
  table.fields[4].required = true;
  table.fields[7].precision = 6;
  table.fields[7].scale = 2;
  table.fields[10].defaultValue = u"niets"_s;
  table.fields[13].autoNumber = true;
  table.indexes[4].fields[0].direction = dao::Direction::Descending;
  table.indexes[1].unique = table.indexes[1].ignoreNull = true;
  return table;
}

// Two equal databases without rows.
struct Twins {
  Scratch scratch;
  dao::Database ours = scratch.Open();
  dao::Database twin = scratch.Another(u"twin.mdb"_s);

  Twins() {
    for (dao::Database* database : {&ours, &twin}) {
      database->CreateTable(Wide());
      database->CreateTable(
          {u"mijn tabel"_s, {Field(u"ID"_s, FieldType::Long), Field(u"a b"_s, FieldType::Text, 5)}, {}});
    }
  }
};

class RowEngine : public testing::Test {
 protected:
  unsigned Pick(std::size_t count) { return static_cast<unsigned>(random_() % count); }
  template <class List>
  QString OneOf(const List& list) {
    return list[static_cast<qsizetype>(Pick(static_cast<std::size_t>(list.size())))];
  }

  QString Table() {
    static const QStringList kTables = {u"tblAlles"_s, u"TBLALLES"_s, u"[tblAlles]"_s,   u"tblAlles"_s, u"tblAlles"_s,
                                        u"tblAlles"_s, u"tblAlles"_s, u"[mijn tabel]"_s, u"tblWeg"_s};
    return Pick(10) == 0 ? OneOf(kTables) : kTables.first();
  }
  QString FieldName() {
    static const QStringList kFieldNames = {u"ID"_s,     u"Naam"_s,    u"Klein"_s, u"Aantal"_s, u"Aktief"_s,
                                            u"Dag"_s,    u"Prijs"_s,   u"Deel"_s,  u"Enkel"_s,  u"Dubbel"_s,
                                            u"Tekst"_s,  u"Sleutel"_s, u"Ruw"_s,   u"Nummer"_s, u"[naam]"_s,
                                            u"aantal"_s, u"Weg"_s,     u"rowid"_s, u"[a b]"_s};
    return Pick(30) == 0 ? OneOf(kFieldNames) : kFieldNames[static_cast<qsizetype>(Pick(14))];
  }
  QString Whole() {
    static const QStringList kNumbers = {u"0"_s,
                                         u"1"_s,
                                         u"-1"_s,
                                         u"- 3"_s,
                                         u"255"_s,
                                         u"256"_s,
                                         u"32767"_s,
                                         u"-32769"_s,
                                         u"45000"_s,
                                         u"007"_s,
                                         u"2147483647"_s,
                                         u"2147483648"_s,
                                         u"999999999999999"_s};
    return Pick(3) == 0 ? OneOf(kNumbers) : QString::number(Pick(60));
  }
  QString Literal() {
    static const QStringList kTexts = {u""_s,
                                       u"appel"_s,
                                       u"Appel "_s,
                                       u"caf\u00E9"_s,
                                       u"it''s"_s,
                                       u"een \"\" twee"_s,
                                       u"12"_s,
                                       u"1,5"_s,
                                       u"-3"_s,
                                       u"1.5"_s,
                                       u"31-12-2026"_s,
                                       u"2026-02-30"_s,
                                       u"1-2-2026 9:30"_s,
                                       u"\uFEFFmerk"_s,
                                       u"\uFFFE"_s,
                                       QString(QChar(0xD800)),
                                       u"een tekst die te lang is voor het veld"_s,
                                       u"{12345678-9abc-def0-1234-56789ABCDEF0}"_s,
                                       u"\u4E2D"_s,
                                       QString(u"a"_s + QChar() + u"b"_s),
                                       u"12345678901234567890,25"_s};
    switch (Pick(8)) {
      case 0:
        return u"NULL"_s;
      case 1:
        return Pick(2) == 0 ? u"TRUE"_s : u"false"_s;
      case 2:
      case 3:
        return Whole();
      case 4:
        return Pick(4) == 0 ? u"1.5"_s : u"'k%1'"_s.arg(Pick(30));
      default: {
        const QString text = OneOf(kTexts);
        return text.contains(u"''"_s) || Pick(2) == 0 ? u"'%1'"_s.arg(QString(text).replace(u"\"\""_s, u"\""_s))
                                                      : u"\"%1\""_s.arg(QString(text).replace(u"''"_s, u"'"_s));
      }
    }
  }
  QString Fitting(const QString& field) {
    if (Pick(25) == 0) return Literal();
    if (field == u"Naam"_s || field == u"Tekst"_s) return u"\"naam %1\""_s.arg(Pick(40));
    if (field == u"Dag"_s) return u"\"%1-3-2026\""_s.arg(1 + Pick(28));
    if (field == u"Sleutel"_s) return u"\"{12345678-9ABC-DEF0-1234-56789ABCDE%1}\""_s.arg(10 + Pick(80));
    if (field == u"Ruw"_s) return u"NULL"_s;
    return QString::number(Pick(field == u"Klein"_s ? 250 : 30000));
  }

  QString Insert() {
    if (Pick(12) == 0) return u"INSERT INTO %1 VALUES (%2, 'x')"_s.arg(Table(), Literal());
    QStringList fields = {u"ID"_s, u"Aktief"_s};
    QStringList values = {QString::number(Pick(200)), Pick(20) == 0 ? u"NULL"_s : u"1"_s};
    for (unsigned i = Pick(6); i > 0; --i) {
      fields += FieldName();
      values += Fitting(fields.last());
    }
    if (Pick(30) == 0) values += u"1"_s;
    if (Pick(30) == 0) fields.removeFirst();
    return u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(Table(), fields.join(u", "_s), values.join(u", "_s));
  }
  QString Where() {
    static const QStringList kKeys = {u"ID"_s,    u"tblAlles.ID"_s, u"[id]"_s, u"Aantal"_s,
                                      u"Klein"_s, u"Naam"_s,        u"Weg"_s};
    return u" WHERE %1 = %2"_s.arg(Pick(5) == 0 ? OneOf(kKeys) : u"ID"_s,
                                   Pick(15) == 0 ? Whole() : QString::number(Pick(200)));
  }
  QString Update() {
    QStringList changes;
    for (unsigned i = Pick(5); i < 5; ++i) {
      const QString field = FieldName();
      changes += (Pick(8) == 0 ? u"tblAlles."_s : QString()) + field + u" = "_s + Fitting(field);
    }
    return u"UPDATE %1 SET %2"_s.arg(Table(), changes.join(u", "_s)) + Where();
  }
  QString Highest() {
    return u"SELECT MAX(%1) AS Hoogste FROM %2"_s.arg(Pick(2) == 0 ? FieldName() : u"ID"_s, Table());
  }
  QString Select() {
    if (Pick(4) == 0) return Highest();
    if (Pick(3) == 0) return u"SELECT %1* FROM %2"_s.arg(Pick(2) == 0 ? u"tblAlles."_s : QString(), Table()) + Where();
    QStringList columns;
    for (unsigned i = Pick(4); i < 4; ++i)
      columns += (Pick(3) == 0 ? u"tblAlles."_s : QString()) + FieldName() + (Pick(3) == 0 ? u" AS Code"_s : QString());
    return u"SELECT %1 FROM %2"_s.arg(columns.join(u", "_s), Table()) + Where() + (Pick(5) == 0 ? u";"_s : QString());
  }
  QString Statement() {
    switch (Pick(10)) {
      case 0:
        return u"DELETE %1FROM "_s.arg(Pick(2) == 0 ? u"* "_s : QString()) + Table() + Where();
      case 1:
      case 2:
        return Select();
      case 3:
      case 4:
      case 5:
        return Update();
      default:
        return Insert();
    }
  }

  static QString Shown(const QVariant& value) {
    return QString::fromLatin1(value.typeName()) + u' ' +
           (value.typeId() == QMetaType::QByteArray ? QString::fromLatin1(value.toByteArray().toHex())
            : value.typeId() == QMetaType::Double   ? QString::number(value.toDouble(), 'g', 17)
                                                    : value.toString());
  }
  static QString Shown(dao::Recordset rows) {
    QString shown = rows.FieldNames().join(u'|');
    for (; !rows.Eof(); rows.MoveNext()) {
      for (int i = 0; i < rows.FieldNames().size(); ++i)
        shown += (i == 0 ? u'\n' : u'|') + Shown(rows.Field(i));
    }
    return shown;
  }

  // What the statement gives: rows, a count, or an error.
  template <class Target>
  static QString ResultOf(Target& target, const QString& sql) {
    try {
      if (sql.startsWith(u"SELECT"_s)) return Shown(target.OpenRecordset(sql));
      return QString::number(target.Execute(sql));
    } catch (const runtime::Error& error) {
      return error.Description();
    }
  }
  // A server may report a duplicate only when the transaction is committed.
  QString Committed(const QString& sql) {
    dao::StatementTransaction transaction(twins_->twin);
    QString result = ResultOf(transaction, sql);
    bool isNumber = false;
    result.toInt(&isNumber);
    if (!isNumber) return result;
    try {
      transaction.Commit();
    } catch (const runtime::Error& error) {
      return error.Description();
    }
    return result;
  }
  QString ResultByEngine(const QString& sql) { return Committed(sql).replace(u"twin.mdb"_s, u"planning.mdb"_s); }

  std::mt19937 random_{static_cast<unsigned>(FromEnvironment("SPOTROOSTER_SEED", 1))};
  std::unique_ptr<Twins> twins_ = std::make_unique<Twins>();
};

TEST_F(RowEngine, GivesWhatTheSqlEngineGives) {
  const int count = FromEnvironment("SPOTROOSTER_ROW_STATEMENTS", kUsualStatements);
  int direct = 0;
  int changes = 0;
  int errors = 0;
  for (int i = 1; i <= count; ++i) {
    const QString sql = Statement();
    const QString result = ResultOf(twins_->ours, sql);
    ASSERT_EQ(result, ResultByEngine(sql)) << i << ": " << qPrintable(sql);
    direct += dao::RowStatementOf(dao::Tokenise(sql)).has_value() ? 1 : 0;
    changes += result == u"1"_s ? 1 : 0;
    errors += result.contains(u' ') && !sql.startsWith(u"SELECT"_s) ? 1 : 0;
    if (i % kBetweenComparisons != 0 && i != count) continue;
    const QString all = u"SELECT * FROM tblAlles ORDER BY ID"_s;
    ASSERT_EQ(ResultOf(twins_->ours, all), ResultOf(twins_->twin, all)) << i;
    if (i % kBetweenRenewals == 0) twins_ = std::make_unique<Twins>();
  }
  std::printf("%d statements: %d about one row, %d changes, %d errors\n", count, direct, changes, errors);
  EXPECT_GT(direct, count / 2);
  EXPECT_GT(changes, count / 12);
  EXPECT_GT(errors, count / 10);
}

TEST_F(RowEngine, HighestNumberIsThatOfTheSqlEngine) {
  const auto compare = [&](const QString& state) {
    for (const QString& field : {u"ID"_s, u"Nummer"_s, u"Klein"_s, u"Aantal"_s, u"Naam"_s, u"Weg"_s}) {
      const QString sql = u"SELECT MAX(%1) AS Hoogste FROM tblAlles"_s.arg(field);
      EXPECT_EQ(ResultOf(twins_->ours, sql), ResultByEngine(sql)) << qPrintable(field + u", "_s + state);
    }
  };
  compare(u"no rows"_s);
  for (const QString& values : {u"1, 5, NULL, 1"_s, u"2, 9, 7, 1"_s, u"-3, 2, 250, 1"_s}) {
    const QString sql = u"INSERT INTO tblAlles (ID, Nummer, Klein, Aktief) VALUES (%1)"_s.arg(values);
    ASSERT_EQ(ResultOf(twins_->ours, sql), u"1"_s);
    ASSERT_EQ(ResultByEngine(sql), u"1"_s);
    compare(sql);
  }
}

}  // namespace
