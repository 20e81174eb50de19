// SPDX-License-Identifier: MIT
#include "platform/dao/Storage.h"
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <memory>
#include <span>
#include <vector>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldMask;
using dao::FieldType;

namespace {

struct Watch {
  QStringList accessPaths;  // how the statement read its tables
  int rows = 0;             // how many rows it read
};

class WatchedCursor : public dao::Cursor {
 public:
  WatchedCursor(std::unique_ptr<dao::Cursor> inner, Watch& watch) : inner_(std::move(inner)), watch_(watch) {}
  bool Next() override {
    const bool row = inner_->Next();
    watch_.rows += row ? 1 : 0;
    return row;
  }
  dao::RowId Id() const override { return inner_->Id(); }
  dao::ValueView Field(std::size_t field) const override { return inner_->Field(field); }

 private:
  std::unique_ptr<dao::Cursor> inner_;
  Watch& watch_;
};

class WatchedTable : public dao::Table {
 public:
  WatchedTable(std::unique_ptr<dao::Table> inner, Watch& watch) : inner_(std::move(inner)), watch_(watch) {}
  const dao::TableDef& Definition() const override { return inner_->Definition(); }
  std::unique_ptr<dao::Cursor> Scan(const FieldMask& wanted) override {
    Note(u"scan"_s, wanted);
    return std::make_unique<WatchedCursor>(inner_->Scan(wanted), watch_);
  }
  std::unique_ptr<dao::Cursor> ScanByIndex(std::size_t index, bool backwards, const FieldMask& wanted) override {
    Note(backwards ? u"backwards"_s : u"ordered"_s, wanted);
    return std::make_unique<WatchedCursor>(inner_->ScanByIndex(index, backwards, wanted), watch_);
  }
  std::unique_ptr<dao::Cursor> Lookup(std::size_t index, std::span<const dao::Value> key,
                                      const FieldMask& wanted) override {
    Note(u"lookup"_s + QString::number(key.size()), wanted);
    return std::make_unique<WatchedCursor>(inner_->Lookup(index, key, wanted), watch_);
  }
  void Insert(std::vector<dao::Value> row) override { inner_->Insert(std::move(row)); }
  void Update(dao::RowId row, std::span<const dao::FieldValue> changes) override {
    for (const auto& change : changes)
      watch_.accessPaths += u"set "_s + Definition().fields[static_cast<int>(change.first)].name;
    inner_->Update(row, changes);
  }
  void Delete(std::span<const dao::RowId> rows) override { inner_->Delete(rows); }
  std::size_t DeleteAll() override { return inner_->DeleteAll(); }

 private:
  void Note(const QString& way, const FieldMask& wanted) {
    QStringList fields;
    for (int i = 0; i < Definition().fields.size(); ++i) {
      if (wanted[static_cast<std::size_t>(i)]) fields += Definition().fields[i].name;
    }
    watch_.accessPaths += way + u' ' + Definition().name + u'(' + fields.join(u',') + u')';
  }

  std::unique_ptr<dao::Table> inner_;
  Watch& watch_;
};

class WatchedStorage : public dao::Storage {
 public:
  WatchedStorage(const QString& path, Watch& watch) : inner_(dao::OpenStorage(path)), watch_(watch) {}
  const QString& PathText() const override { return inner_->PathText(); }
  bool IsSameFile(const Storage& other) const override { return inner_->IsSameFile(other); }
  std::unique_ptr<dao::Transaction> Begin(dao::Access access) override { return inner_->Begin(access); }
  QStringList TableNames() override { return inner_->TableNames(); }
  std::unique_ptr<dao::Table> OpenTable(const QString& name) override {
    auto table = inner_->OpenTable(name);
    return table ? std::make_unique<WatchedTable>(std::move(table), watch_) : nullptr;
  }
  void CreateTable(const dao::TableDef& table) override { inner_->CreateTable(table); }

 private:
  std::unique_ptr<dao::Storage> inner_;
  Watch& watch_;
};

class Plan : public testing::Test {
 protected:
  Plan() {
    dao::Database database = scratch_.Open();
    dao::TableDef links{u"tblLinks"_s,
                        {Field(u"ItemID"_s, FieldType::Long), Field(u"Plaats"_s, FieldType::Long),
                         Field(u"SpotID"_s, FieldType::Long), Field(u"Code"_s, FieldType::Text, 20)},
                        {Key({u"ItemID"_s, u"Plaats"_s}), Index(u"Code"_s, {u"Code"_s})}};
    database.CreateTable(links);
    for (int i = 1; i <= 3; ++i) {
      database.Execute(u"INSERT INTO tblLinks VALUES (5, %1, %1, \"C%1\")"_s.arg(i));
    }
  }

  dao::Database Watched() { return dao::Database(std::make_shared<WatchedStorage>(scratch_.Path(), watch_)); }

  SpotScratch scratch_;
  Watch watch_;
};

TEST_F(Plan, MaximumOfTheKeyReadsOneRow) {
  Watched().OpenRecordset(u"Select MAX(ID) AS LaatsteID FROM tblSpots"_s);
  EXPECT_EQ(watch_.accessPaths, QStringList{u"backwards tblSpots(ID)"_s});
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, EqualityOnTheKeyIsALookup) {
  Watched().OpenRecordset(u"SELECT tblSpots.Naam From tblSpots WHERE tblSpots.ID = 2"_s);
  EXPECT_EQ(watch_.accessPaths, QStringList{u"lookup1 tblSpots(ID,Naam)"_s});
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, KeyedUpdateReadsOneRowAndSetsOnlyItsFields) {
  EXPECT_EQ(Watched().Execute(u"UPDATE tblSpots SET Aktief = 0 WHERE ID = 3"_s), 1);
  ASSERT_EQ(watch_.accessPaths.size(), 2);
  EXPECT_TRUE(watch_.accessPaths[0].startsWith(u"lookup1 tblSpots("_s)) << qPrintable(watch_.accessPaths[0]);
  EXPECT_EQ(watch_.accessPaths[1], u"set Aktief"_s);
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, KeyedDeleteReadsOneRow) {
  EXPECT_EQ(Watched().Execute(u"DELETE FROM tblSpots WHERE tblSpots.ID = 3"_s), 1);
  EXPECT_EQ(watch_.accessPaths, QStringList{u"lookup1 tblSpots(ID)"_s});
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, JoinUsesKeys) {
  Watched().OpenRecordset(
      u"SELECT tblSpots.* FROM (tblLinks INNER JOIN tblSpots ON tblLinks.SpotID = tblSpots.ID) "
      "WHERE tblLinks.ItemID = 5"_s);
  EXPECT_EQ(watch_.accessPaths.filter(u"scan"_s), QStringList());
  EXPECT_EQ(watch_.accessPaths.first(), u"lookup1 tblLinks(ItemID,SpotID)"_s);
  EXPECT_EQ(watch_.rows, 6);
}

TEST_F(Plan, WholeKeyOfTwoFieldsIsUsed) {
  Watched().OpenRecordset(u"SELECT SpotID FROM tblLinks WHERE Plaats = 2 AND ItemID = 5"_s);
  EXPECT_TRUE(watch_.accessPaths.first().startsWith(u"lookup2"_s));
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, TextIndexIsUsedByTheTextOrder) {
  const auto rows = Watched().OpenRecordset(u"SELECT SpotID FROM tblLinks WHERE Code = \"c2\""_s);
  EXPECT_EQ(rows.Field(u"SpotID"_s), 2);
  EXPECT_TRUE(watch_.accessPaths.first().startsWith(u"lookup1"_s));
  EXPECT_EQ(watch_.rows, 1);
}

TEST_F(Plan, ConditionsWithoutAnIndexScanOnlyTheFieldsUsed) {
  Watched().OpenRecordset(
      u"SELECT tblSpots.ID, tblSpots.Naam As Code From tblSpots WHERE tblSpots.Aktief = 1 "
      "ORDER BY tblSpots.Naam"_s);
  EXPECT_EQ(watch_.accessPaths, QStringList{u"scan tblSpots(ID,Naam,Aktief)"_s});
}

TEST_F(Plan, OrderByTheKeyReadsTheIndex) {
  const auto rows = Watched().OpenRecordset(u"SELECT Naam FROM tblSpots ORDER BY ID DESC"_s);
  EXPECT_EQ(rows.Field(u"Naam"_s), u"Cola"_s);
  EXPECT_EQ(watch_.accessPaths, QStringList{u"backwards tblSpots(ID,Naam)"_s});
}

TEST_F(Plan, SeveralKeysAreSeveralLookups) {
  EXPECT_EQ(Watched().OpenRecordset(u"SELECT Naam FROM tblSpots WHERE ID IN (1, 3, 9)"_s).RecordCount(), 2);
  EXPECT_EQ(Watched().OpenRecordset(u"SELECT Naam FROM tblSpots WHERE ID = 1 OR ID = 3 OR ID = 1"_s).RecordCount(), 2);
  EXPECT_EQ(watch_.accessPaths.filter(u"scan"_s), QStringList());
}

TEST_F(Plan, NullAsAKeyReadsNothing) {
  EXPECT_TRUE(Watched().OpenRecordset(u"SELECT Naam FROM tblSpots WHERE ID = NULL"_s).Eof());
  EXPECT_EQ(watch_.rows, 0);
}

TEST_F(Plan, DeletingAllRowsReadsNone) {
  EXPECT_EQ(Watched().Execute(u"DELETE FROM tblSpots"_s), 3);
  EXPECT_EQ(watch_.accessPaths, QStringList{});
  EXPECT_EQ(Watched().OpenRecordset(u"SELECT ID FROM tblSpots"_s).RecordCount(), 0);
}

}  // namespace
