// SPDX-License-Identifier: MIT
// Writes random texts as names and paths through the write layer and the offline log: each
// is stored unchanged or refused with an error; no other field, row or logged statement changes.
#include "data/Globals.h"
#include "data/Rows.h"
#include "data/Statements.h"
#include "data/Writes.h"
#include "export/ExportContent.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "tests/export/RandomTexts.h"
#include "tests/support/LongTests.h"
#include "tests/support/Station.h"

#include <QMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

constexpr int kTexts = 500;
constexpr int kRows = 6;
constexpr unsigned kShownOneIn = 200;
constexpr qsizetype kMaxLogged = 16;

const QString kSpots = u"tblCopie_ItemSpots"_s;
const QString kItems = u"tblCopie_Items"_s;

using Row = QStringList;  // all fields in order; NULL as a null text

QByteArray Exported() {
  QByteArray bytes;
  ExportContent content([&](const QByteArray& block) { bytes += block; });
  content.AddLog(global.localDatabasePath);
  content.Finish();
  return bytes;
}

class RandomText : public testing::Test {
 protected:
  RandomText() {
    for (int id = 1; id <= kRows; ++id) {
      station_.OnLocal(
          u"INSERT INTO tblCopie_ItemSpots (ID, Path, Naam, LengteSec, Aktief) VALUES (%1, \"p\", \"n\", 7, 1)"_s.arg(
              id));
      station_.OnLocal(
          u"INSERT INTO tblCopie_Items (ID, Naam, ItemSpotsOptID, Aktief, Locked) VALUES (%1, \"i\", 1, 1, 0)"_s.arg(
              id));
    }
    for (int id = 1; id <= kRows; ++id)
      Update_tblItems(Item(id, u"i"_s), global.localDatabasePath, kItems);
    station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
    spots_ = RowsOf(kSpots);
    items_ = RowsOf(kItems);
    spotFields_ = station_.LocalRows(u"SELECT * FROM "_s + kSpots).FieldNames();
    itemFields_ = station_.LocalRows(u"SELECT * FROM "_s + kItems).FieldNames();
  }

  QMap<int, Row> RowsOf(const QString& table) const {
    QMap<int, Row> rows;
    dao::Recordset found = station_.LocalRows(u"SELECT * FROM "_s + table);
    const QStringList fields = found.FieldNames();
    for (; !found.Eof(); found.MoveNext()) {
      Row row;
      for (const QString& name : fields) {
        const QVariant value = found.Field(name);
        row += value.isNull() ? QString() : value.toString() + u""_s;
      }
      rows.insert(found.Field(u"ID"_s).toInt(), row);
    }
    return rows;
  }

  // Writes one text to a spot's name and path, or to an item's three text fields.
  bool WriteSpot(int id, const QString& text);
  bool WriteItem(int id, const QString& text);
  static bool IsRefusedUnseen(const QString& text);
  static ItemRow Item(int id, const QString& text);
  void Expect(const QString& statement, const QString& copyTable, const QString& serverTable);
  void CheckWritten(const QString& table);
  void CheckAll();

  Station station_{Station::Mode::Offline};
  QMap<int, Row> spots_;
  QMap<int, Row> items_;
  QStringList spotFields_;
  QStringList itemFields_;
  QStringList log_;
};

// The statement that the log must contain, by the required rules.
void RandomText::Expect(const QString& statement, const QString& copyTable, const QString& serverTable) {
  QString logged = statement;
  log_ += logged.replace(copyTable, serverTable).replace(u'\'', u'*').replace(u'"', u'\'');
}

bool RandomText::WriteSpot(int id, const QString& text) {
  ItemSpotRow row;
  row.id = id;
  row.naam = text;
  row.path = text;
  row.lengteSec = 7;
  row.aktief = 1;
  if (!Update_tblItemSpots(row, global.localDatabasePath, kSpots)) return false;
  Expect(statements::UpdateItemSpot(row, kSpots), kSpots, u"tblItemSpots"_s);
  for (const QString& field : {u"Path"_s, u"Naam"_s})
    spots_[id][spotFields_.indexOf(field)] = text;
  return true;
}

ItemRow RandomText::Item(int id, const QString& text) {
  ItemRow row;
  row.id = id;
  row.aktief = 1;
  row.itemSpotsOptID = 2;
  row.naam = row.opt2Directory = row.opt2VastNaamGedeelte = text;
  return row;
}

bool RandomText::WriteItem(int id, const QString& text) {
  const ItemRow row = Item(id, text);
  if (!Update_tblItems(row, global.localDatabasePath, kItems)) return false;
  Expect(statements::UpdateItem(row, kItems), kItems, u"tblItems"_s);
  for (const QString& field : {u"Naam"_s, u"Opt2Directory"_s, u"Opt2VastNaamGedeelte"_s})
    items_[id][itemFields_.indexOf(field)] = text;
  return true;
}

// Building the statement already fails, so nothing can have changed. Most of these open no box.
bool RandomText::IsRefusedUnseen(const QString& text) {
  try {
    statements::UpdateItem(Item(1, text), kItems);
    return false;
  } catch (const runtime::Error&) {
    return true;
  }
}

void RandomText::CheckWritten(const QString& table) {
  ASSERT_TRUE(RowsOf(table) == (table == kSpots ? spots_ : items_));
  dao::Recordset last = station_.LocalRows(u"SELECT SqlSyntax FROM tblOfflineLog ORDER BY ID DESC"_s);
  ASSERT_EQ(last.RecordCount(), log_.size());
  if (log_.isEmpty()) return;
  ASSERT_TRUE(last.Field(u"SqlSyntax"_s).toString() == log_.last());
}

void RandomText::CheckAll() {
  ASSERT_TRUE(RowsOf(kSpots) == spots_);
  ASSERT_TRUE(RowsOf(kItems) == items_);
  ASSERT_TRUE(station_.Log() == log_);
  QByteArray file;
  for (const QString& statement : log_)
    file += runtime::ToCodePage(runtime::TrimBlanks(statement)) + ";\r\n";
  ASSERT_EQ(Exported(), file);
  station_.OnLocal(u"DELETE FROM tblOfflineLog"_s);
  log_.clear();
}

}  // namespace

TEST_F(RandomText, IsStoredExactlyOrRefusedAndNothingElseChanges) {
  RandomTexts texts(1 + static_cast<unsigned>(GTEST_FLAG_GET(random_seed)));
  int stored = 0;
  int refused = 0;
  for (int number = 0; number < kTexts * testing_support::LongTests(); ++number) {
    const MessageBoxScript boxes;
    const QString text = texts.Next();
    const int id = 1 + static_cast<int>(texts.Number(kRows));
    if (IsRefusedUnseen(text) && texts.Number(kShownOneIn) != 0) {
      ++refused;
      continue;
    }
    const bool spot = texts.Number(2) == 0;
    const bool done = spot ? WriteSpot(id, text) : WriteItem(id, text);
    (done ? stored : refused) += 1;
    ASSERT_EQ(boxes.Shown().size(), done ? 0u : 1u) << text.toStdString();
    CheckWritten(spot ? kSpots : kItems);
    if (log_.size() >= kMaxLogged) CheckAll();
    ASSERT_FALSE(HasFailure()) << "text " << number << ": " << text.toStdString();
  }
  RecordProperty("stored", stored);
  RecordProperty("refused", refused);
  EXPECT_GT(stored, 0);
  EXPECT_GT(refused, 0);
}

namespace {

struct Fate {
  QString text;
  QString stored;      // null: refused
  QString logged;      // within the logged statement
  QByteArray written;  // within the export file
};

}  // namespace

// The table in docs/reliability.md.
TEST(TextFate, OfQuotesApostrophesPipesAndLineBreaks) {
  const Fate fates[] = {
      {u"a'b"_s, u"a'b"_s, u"'a*b'"_s, "'a*b'"},
      {u"a\"b"_s, {}, {}, {}},
      {u"a|b"_s, u"a|b"_s, u"'a|b'"_s, "'a|b'"},
      {u"a\r\nb"_s, u"a\r\nb"_s, u"'a\r\nb'"_s, "'a\r\nb'"},
      {u"a\nb"_s, u"a\nb"_s, u"'a\nb'"_s, "'a\nb'"},
      {u"a*b"_s, u"a*b"_s, u"'a*b'"_s, "'a*b'"},
      {u"a\u2019b\u20ac"_s, u"a\u2019b\u20ac"_s, u"'a\u2019b\u20ac'"_s,
       "'a\x92"
       "b\x80'"},
      {u"a\u0416b"_s, u"a\u0416b"_s, u"'a\u0416b'"_s, "'a?b'"},
      {u"a"_s + QChar(0) + u'b', {}, {}, {}},
      {u"a"_s + QChar(0xD800) + u'b', u"a"_s + QChar(0xD800) + u'b', u"'a"_s + QChar(0xD800) + u"b'"_s, "'a?b'"},
  };
  for (const Fate& fate : fates) {
    const Station station(Station::Mode::Offline);
    const MessageBoxScript boxes;
    ItemPingleRow row;
    row.id = 1;
    row.naam = fate.text;
    row.aktief = 1;
    const bool refused = fate.stored.isNull();
    EXPECT_EQ(Insert_tblItemPingles(row, global.localDatabasePath, u"tblCopie_ItemPingles"_s), !refused);
    const dao::Recordset rows = station.LocalRows(u"SELECT Naam FROM tblCopie_ItemPingles"_s);
    ASSERT_EQ(rows.RecordCount(), refused ? 0 : 1);
    ASSERT_EQ(station.Log().size(), refused ? 0 : 1);
    if (refused) {
      EXPECT_TRUE(boxes.Last().text.contains(u"'Naam'"_s)) << boxes.Last().text.toStdString();
      continue;
    }
    EXPECT_EQ(rows.Field(u"Naam"_s).toString(), fate.stored);
    EXPECT_TRUE(station.Log().first().contains(fate.logged)) << station.Log().first().toStdString();
    EXPECT_TRUE(Exported().contains(fate.written));
  }
}
