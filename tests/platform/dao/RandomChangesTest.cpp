// SPDX-License-Identifier: MIT
// Random statements on a table and on a simple model of it: both always have the same rows and the same errors.
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

struct ModelRow {
  QString name;
  std::optional<int> count;
};

class RandomChanges : public testing::TestWithParam<unsigned> {
 protected:
  RandomChanges() {
    dao::TableDef table{
        u"t"_s,
        {Field(u"ID"_s, FieldType::Long), Field(u"Naam"_s, FieldType::Text, 12),
         Field(u"Aantal"_s, FieldType::Integer)},
        {Key({u"ID"_s}), Index(u"OpNaam"_s, {u"Naam"_s}), Index(u"OpAantal"_s, {u"Aantal"_s, u"ID"_s})}};
    table.indexes[1].unique = true;
    database_.CreateTable(table);
  }

  int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  QString RandomName() {
    return QString(QChar(Pick(2) == 0 ? u'a' + Pick(20) : u'A' + Pick(20))) + QString::number(Pick(4));
  }

  bool HasName(const QString& name, std::optional<int> except = {}) const {
    return std::any_of(model_.begin(), model_.end(), [&](const auto& entry) {
      return entry.first != except && entry.second.name.compare(name, Qt::CaseInsensitive) == 0;
    });
  }

  // Executes the statement; whether it failed must be as expected.
  int Execute(const QString& sql, bool isError) {
    int changed = 0;
    const QString error = ErrorOf([&] { changed = database_.Execute(sql); });
    EXPECT_EQ(!error.isEmpty(), isError) << qPrintable(sql) << ": " << qPrintable(error);
    return changed;
  }

  void Insert() {
    const int id = Pick(60);
    const QString name = RandomName();
    const std::optional<int> count = Pick(4) == 0 ? std::nullopt : std::optional(Pick(50));
    const bool isError = model_.contains(id) || HasName(name);
    Execute(u"INSERT INTO t (ID, Naam, Aantal) VALUES (%1, \"%2\", %3)"_s.arg(id).arg(
                name, count ? QString::number(*count) : u"NULL"_s),
            isError);
    if (!isError) model_[id] = {name, count};
  }

  void Rename() {
    const int id = Pick(60);
    const QString name = RandomName();
    const bool isThere = model_.contains(id);
    const bool isError = isThere && HasName(name, id);
    const int changed = Execute(u"UPDATE t SET Naam = \"%1\" WHERE ID = %2"_s.arg(name).arg(id), isError);
    EXPECT_EQ(changed, isThere && !isError ? 1 : 0);
    if (isThere && !isError) model_[id].name = name;
  }

  void AddToCounts() {
    const int most = Pick(50);
    const int changed = Execute(u"UPDATE t SET Aantal = Aantal + 1 WHERE Aantal <= %1"_s.arg(most), false);
    int expected = 0;
    for (auto& [id, row] : model_) {
      if (!row.count || *row.count > most) continue;
      ++*row.count;
      ++expected;
    }
    EXPECT_EQ(changed, expected);
  }

  // Some of the rows would get a key that exists: then no row may change.
  void ShiftKeys() {
    const int from = Pick(60);
    std::map<int, ModelRow> shifted;
    bool collides = false;
    for (const auto& [id, row] : model_)
      collides = !shifted.emplace(id >= from ? id + 100 : id, row).second || collides;
    Execute(u"UPDATE t SET ID = ID + 100 WHERE ID >= %1"_s.arg(from), collides);
    if (!collides) model_ = shifted;
    Execute(u"UPDATE t SET ID = ID - 100 WHERE ID >= 100"_s, false);
    std::map<int, ModelRow> back;
    for (const auto& [id, row] : model_)
      back[id >= 100 ? id - 100 : id] = row;
    model_ = back;
  }

  void Delete() {
    const QString letter(QChar(u'a' + Pick(20)));
    const int changed = Execute(u"DELETE FROM t WHERE Naam >= \"%1\" AND Naam < \"%1z\""_s.arg(letter), false);
    const auto before = model_.size();
    std::erase_if(model_, [&](const auto& entry) { return entry.second.name.startsWith(letter, Qt::CaseInsensitive); });
    EXPECT_EQ(static_cast<std::size_t>(changed), before - model_.size());
  }

  void ExpectModel() {
    QStringList expected;
    for (const auto& [id, row] : model_)
      expected += u"%1|%2|%3"_s.arg(id).arg(row.name, row.count ? QString::number(*row.count) : u"-"_s);
    ASSERT_EQ(Rows(database_, u"SELECT * FROM t ORDER BY ID"_s), expected);
    const int id = Pick(60);
    const QStringList found = Rows(database_, u"SELECT Naam FROM t WHERE ID = %1"_s.arg(id));
    ASSERT_EQ(found, model_.contains(id) ? QStringList{model_[id].name} : QStringList());
    const QString name = RandomName();
    ASSERT_EQ(Rows(database_, u"SELECT ID FROM t WHERE Naam = \"%1\""_s.arg(name)).size(), HasName(name) ? 1 : 0);
  }

  std::mt19937 random_{GetParam()};
  Scratch scratch_;
  dao::Database database_ = scratch_.Open();
  std::map<int, ModelRow> model_;
};

TEST_P(RandomChanges, TheTableAlwaysAgreesWithTheModel) {
  std::size_t most = 0;
  for (int step = 0; step < 150; ++step) {
    switch (Pick(8)) {
      case 0:
        Rename();
        break;
      case 1:
        AddToCounts();
        break;
      case 2:
        ShiftKeys();
        break;
      case 3:
        if (Pick(4) == 0) Delete();
        break;
      default:
        Insert();
    }
    ExpectModel();
    if (HasFatalFailure() || HasNonfatalFailure()) FAIL() << "seed " << GetParam() << " step " << step;
    most = std::max(most, model_.size());
  }
  EXPECT_GT(most, 15U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomChanges, testing::Range(1U, 6U));

}  // namespace
