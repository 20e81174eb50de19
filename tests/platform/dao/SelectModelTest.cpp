// SPDX-License-Identifier: MIT
// Joins, groups, unions and subqueries against the same calculation on lists in the test.
#include "tests/platform/dao/Scratch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using namespace scratch;
using dao::FieldType;

namespace {

struct ModelItem {
  int id;
  int group;
};
struct ModelLink {
  int item;
  std::optional<int> amount;
};

class SelectModel : public testing::Test {
 protected:
  SelectModel() {
    database_.CreateTable(
        {u"tblItems"_s, {Field(u"ID"_s, FieldType::Long), Field(u"Groep"_s, FieldType::Integer)}, {Key({u"ID"_s})}});
    database_.CreateTable({u"tblLinks"_s,
                           {Field(u"ItemID"_s, FieldType::Long), Field(u"Aantal"_s, FieldType::Integer)},
                           {Index(u"OpItem"_s, {u"ItemID"_s})}});
    std::mt19937 random(23);
    for (int id = 1; id <= 25; ++id) {
      items_.push_back({id, static_cast<int>(random() % 5)});
      database_.Execute(u"INSERT INTO tblItems VALUES (%1, %2)"_s.arg(id).arg(items_.back().group));
    }
    for (int i = 0; i < 60; ++i) {
      ModelLink link{static_cast<int>(random() % 35), {}};
      if (random() % 5 != 0) link.amount = static_cast<int>(random() % 20);
      links_.push_back(link);
      database_.Execute(u"INSERT INTO tblLinks VALUES (%1, %2)"_s.arg(link.item).arg(Shown(link.amount, u"NULL"_s)));
    }
  }

  static QString Shown(std::optional<int> number, const QString& null = u"-"_s) {
    return number ? QString::number(*number) : null;
  }
  bool HasItem(int id) const {
    return std::any_of(items_.begin(), items_.end(), [id](const ModelItem& item) { return item.id == id; });
  }
  std::vector<ModelLink> LinksOf(int item) const {
    std::vector<ModelLink> found;
    std::copy_if(links_.begin(), links_.end(), std::back_inserter(found),
                 [item](const ModelLink& link) { return link.item == item; });
    return found;
  }

  void Expect(const QString& sql, QStringList expected, bool isOrdered = false) {
    QStringList rows = Rows(database_, sql);
    if (!isOrdered) {
      rows.sort();
      expected.sort();
    }
    EXPECT_EQ(rows, expected) << qPrintable(sql);
    EXPECT_FALSE(expected.isEmpty()) << "the test data is too small: " << qPrintable(sql);
  }

  Scratch scratch_;
  dao::Database database_ = scratch_.Open();
  std::vector<ModelItem> items_;
  std::vector<ModelLink> links_;
};

TEST_F(SelectModel, AnInnerJoinHasEachPair) {
  QStringList expected;
  for (const ModelItem& item : items_) {
    for (const ModelLink& link : LinksOf(item.id))
      expected += u"%1|%2"_s.arg(item.id).arg(Shown(link.amount));
  }
  Expect(u"SELECT tblItems.ID, Aantal FROM tblItems INNER JOIN tblLinks ON tblItems.ID = tblLinks.ItemID"_s, expected);
  Expect(u"SELECT ID, Aantal FROM tblItems, tblLinks WHERE ID = ItemID"_s, expected);
}

TEST_F(SelectModel, ALeftJoinHasRowsWithoutAPartnerToo) {
  QStringList expected;
  for (const ModelItem& item : items_) {
    const auto links = LinksOf(item.id);
    if (links.empty()) expected += u"%1|-"_s.arg(item.id);
    for (const ModelLink& link : links)
      expected += u"%1|%2"_s.arg(item.id).arg(link.item);
  }
  Expect(u"SELECT ID, ItemID FROM tblItems LEFT JOIN tblLinks ON tblItems.ID = tblLinks.ItemID"_s, expected);
}

TEST_F(SelectModel, RowsWithoutAPartnerAreFound) {
  QStringList unused;
  for (const ModelItem& item : items_) {
    if (LinksOf(item.id).empty()) unused += QString::number(item.id);
  }
  Expect(u"SELECT ID FROM tblItems WHERE ID NOT IN (SELECT ItemID FROM tblLinks) ORDER BY ID"_s, unused, true);
  Expect(u"SELECT ID FROM tblItems WHERE NOT EXISTS (SELECT ItemID FROM tblLinks WHERE ItemID = tblItems.ID)"_s,
         unused);
  QStringList orphans;
  for (const ModelLink& link : links_) {
    if (!HasItem(link.item)) orphans += QString::number(link.item);
  }
  orphans.removeDuplicates();
  Expect(u"SELECT DISTINCT ItemID FROM tblLinks WHERE ItemID NOT IN (SELECT ID FROM tblItems)"_s, orphans);
}

TEST_F(SelectModel, GroupsHaveTheirSumsAndCounts) {
  std::map<int, std::vector<std::optional<int>>> groups;
  for (const ModelLink& link : links_)
    groups[link.item].push_back(link.amount);
  QStringList expected;
  QStringList large;
  for (const auto& [item, amounts] : groups) {
    int sum = 0;
    int known = 0;
    for (const auto& amount : amounts) {
      sum += amount.value_or(0);
      known += amount ? 1 : 0;
    }
    const QString sumText = known == 0 ? u"-"_s : QString::number(sum);
    expected += u"%1|%2|%3|%4"_s.arg(item).arg(amounts.size()).arg(known).arg(sumText);
    if (amounts.size() > 2) large += QString::number(item);
  }
  Expect(u"SELECT ItemID, COUNT(*), COUNT(Aantal), SUM(Aantal) FROM tblLinks GROUP BY ItemID"_s, expected);
  Expect(u"SELECT ItemID FROM tblLinks GROUP BY ItemID HAVING COUNT(*) > 2 ORDER BY ItemID"_s, large, true);
}

TEST_F(SelectModel, NullIsIgnoredByAggregates) {
  int sum = 0;
  int known = 0;
  int most = 0;
  int least = 99;
  for (const ModelLink& link : links_) {
    if (!link.amount) continue;
    ++known;
    sum += *link.amount;
    most = std::max(most, *link.amount);
    least = std::min(least, *link.amount);
  }
  Expect(u"SELECT SUM(Aantal), COUNT(Aantal), MAX(Aantal), MIN(Aantal) FROM tblLinks"_s,
         {u"%1|%2|%3|%4"_s.arg(sum).arg(known).arg(most).arg(least)});
  EXPECT_DOUBLE_EQ(Value(database_, u"SELECT AVG(Aantal) AS g FROM tblLinks"_s, u"g"_s).toDouble(),
                   static_cast<double>(sum) / known);
}

TEST_F(SelectModel, ConditionsOnNullMatchNothing) {
  QStringList small;
  QStringList unknown;
  for (const ModelLink& link : links_) {
    if (!link.amount) unknown += QString::number(link.item);
    if (link.amount && (*link.amount < 5 || *link.amount > 15)) small += QString::number(link.item);
  }
  Expect(u"SELECT ItemID FROM tblLinks WHERE NOT (Aantal BETWEEN 5 AND 15)"_s, small);
  Expect(u"SELECT ItemID FROM tblLinks WHERE Aantal IS NULL"_s, unknown);
  EXPECT_TRUE(Rows(database_, u"SELECT ItemID FROM tblLinks WHERE Aantal = NULL"_s).isEmpty());
}

TEST_F(SelectModel, UnionsAreWithAndWithoutDuplicates) {
  QStringList all;
  for (const ModelItem& item : items_)
    all += QString::number(item.group);
  for (const ModelLink& link : links_) {
    if (link.amount && *link.amount < 5) all += QString::number(*link.amount);
  }
  const QString sql = u"SELECT Groep FROM tblItems UNION %1 SELECT Aantal FROM tblLinks WHERE Aantal < 5"_s;
  Expect(sql.arg(u"ALL"_s), all);
  all.removeDuplicates();
  Expect(sql.arg(QString()), all);
}

TEST_F(SelectModel, ASubqueryMayUseTheOuterRow) {
  QStringList expected;
  for (const ModelItem& item : items_)
    expected += u"%1|%2"_s.arg(item.id).arg(LinksOf(item.id).size());
  Expect(u"SELECT ID, (SELECT COUNT(*) FROM tblLinks WHERE ItemID = tblItems.ID) AS n FROM tblItems"_s, expected);
}

TEST_F(SelectModel, OrdersByTwoFieldsAreStable) {
  std::vector<ModelItem> sorted = items_;
  std::sort(sorted.begin(), sorted.end(), [](const ModelItem& a, const ModelItem& b) {
    return a.group != b.group ? a.group > b.group : a.id < b.id;
  });
  QStringList expected;
  for (const ModelItem& item : sorted)
    expected += u"%1|%2"_s.arg(item.group).arg(item.id);
  Expect(u"SELECT Groep, ID FROM tblItems ORDER BY Groep DESC, ID"_s, expected, true);
}

TEST_F(SelectModel, AnInsertFromASelectCopiesItsRows) {
  database_.CreateTable(
      {u"tblSom"_s, {Field(u"Groep"_s, FieldType::Integer), Field(u"Aantal"_s, FieldType::Long)}, {}});
  std::map<int, int> counts;
  for (const ModelItem& item : items_)
    ++counts[item.group];
  EXPECT_EQ(database_.Execute(u"INSERT INTO tblSom SELECT Groep, COUNT(*) AS Aantal FROM tblItems GROUP BY Groep"_s),
            static_cast<int>(counts.size()));
  QStringList expected;
  for (const auto& [group, count] : counts)
    expected += u"%1|%2"_s.arg(group).arg(count);
  Expect(u"SELECT * FROM tblSom ORDER BY Groep"_s, expected, true);
}

TEST_F(SelectModel, AnUpdateMayReadAnotherTable) {
  database_.Execute(u"UPDATE tblItems SET Groep = (SELECT COUNT(*) FROM tblLinks WHERE ItemID = tblItems.ID)"_s);
  QStringList expected;
  for (const ModelItem& item : items_)
    expected += u"%1|%2"_s.arg(item.id).arg(LinksOf(item.id).size());
  Expect(u"SELECT ID, Groep FROM tblItems"_s, expected);
}

TEST_F(SelectModel, ADeleteMayReadAnotherTable) {
  const auto orphans =
      std::count_if(links_.begin(), links_.end(), [&](const ModelLink& link) { return !HasItem(link.item); });
  EXPECT_EQ(database_.Execute(u"DELETE FROM tblLinks WHERE ItemID NOT IN (SELECT ID FROM tblItems)"_s), orphans);
  EXPECT_EQ(Rows(database_, u"SELECT ItemID FROM tblLinks"_s).size(), static_cast<qsizetype>(links_.size()) - orphans);
}

}  // namespace
