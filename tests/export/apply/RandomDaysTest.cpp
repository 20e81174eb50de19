// SPDX-License-Identifier: MIT
// Random days of two workstations that work offline from one server, and a model of what they mean. In the model
// records are known by a name that never changes (the file of a spot or jingle, the name of an item), never by number:
// whatever was renumbered, each record must be in the database once, with the values that were meant.
#include "tests/export/apply/RandomPlanner.h"
#include "tests/export/apply/Shared.h"
#include "tests/support/LongTests.h"

#include <QFile>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace {

class RandomDays : public SharedStation {
 protected:
  RandomDays() { Fill(); }

  // The shared database as the model describes it.
  std::map<QString, Meant> Records(const QString& server) {
    Workstation seen(u"lezer"_s, Folder(u"lezer"_s));
    seen.Refresh(server);
    std::map<QString, Meant> records;
    const auto add = [&](const QString& table, qint64 id, const Workstation::Fields& fields, const QStringList& names) {
      const QString name = NameOf(table, fields);
      EXPECT_FALSE(records.contains(name)) << "twice: " << name.toStdString();
      names_[table][id] = name;
      return &(records[name] = MeantOf(fields, names));
    };
    for (const auto& [table, names] : {std::pair(kSpotTable, kSpotFields), std::pair(kJingleTable, kJingleFields)}) {
      const Workstation::Rows rows = seen.Of(table);
      for (auto row = rows.begin(); row != rows.end(); ++row)
        add(table, row.key(), *row, names);
    }
    const Workstation::Rows items = seen.Of(kItemTable);
    for (auto item = items.begin(); item != items.end(); ++item) {
      Meant& meant = *add(kItemTable, item.key(), *item, kItemFields);
      for (const QString& field : kItemJingles) {
        const dao::Value value = (*item)[field];
        const auto* jingle = std::get_if<std::int64_t>(&value);
        meant.fields[field] = jingle != nullptr ? names_[kJingleTable].value(*jingle, u"gone"_s) : QString();
      }
      for (const qint32 spot : seen.SpotsOf(static_cast<qint32>(item.key())))
        meant.list += names_[kSpotTable].value(spot, u"gone"_s);
    }
    return records;
  }

  Model ModelOf(const QString& server) {
    names_.clear();
    Model model;
    for (const auto& [record, meant] : Records(server))
      model.Put(record, meant);
    return model;
  }

  void ApplyTo(const QString& server, const ExportedFile& file, Model& model) {
    const apply::Result result = apply::CarryOut(server, apply::ReadExport(file.path), {file.source, {}, false, {}});
    EXPECT_FALSE(result.doneBefore);
    model.Apply(file);
    Compare(server, model);
  }

  // The studio counts one of the spots, if it is there.
  void Air(const QString& server, int spot, Model& model) {
    const QString name = names_[kSpotTable].value(spot);
    const int aired = dao::OpenDatabase(server).Execute(
        u"UPDATE tblItemSpots SET AantalGedraaid = AantalGedraaid + 1 WHERE ID = "_s + QString::number(spot));
    if (aired == 1) model.Air(name);
  }

  void Compare(const QString& server, const Model& model) {
    const std::map<QString, Meant> records = Records(server);
    QStringList differences;
    for (const auto& [record, meant] : model.Records()) {
      const auto there = records.find(record);
      if (there == records.end()) {
        differences += record + u" is missing"_s;
      } else if (!(WithLinksToRecords(there->second, records) == WithLinksToRecords(meant, records))) {
        differences += record + u": "_s + Shown(there->second) + u" instead of "_s + Shown(meant);
      }
    }
    for (const auto& [record, meant] : records) {
      if (!model.Records().contains(record)) differences += record + u" should not be there"_s;
    }
    EXPECT_EQ(differences.join(u'\n').toStdString(), "");
    QStringList waiting;
    for (const apply::Conflict& conflict : apply::ReadConflicts(server)) {
      const apply::Row& row = conflict.base ? *conflict.base : *conflict.offline;
      Workstation::Fields fields;
      for (qsizetype i = 0; i < conflict.fields.size(); ++i)
        fields[conflict.fields[i]] = row[static_cast<std::size_t>(i)];
      waiting += NameOf(apply::NameOf(conflict.table), fields);
    }
    waiting.sort();
    EXPECT_EQ(waiting.join(u',').toStdString(), model.Waiting().join(u',').toStdString());
  }

  // A link may remain to a spot that was made and deleted within one file; no record has its name then.
  static Meant WithLinksToRecords(Meant meant, const std::map<QString, Meant>& records) {
    meant.list.removeIf([&](const QString& spot) { return !records.contains(spot); });
    return meant;
  }

  static QString Shown(const Meant& meant) {
    return QStringList(meant.fields.values()).join(u'/') + u" ["_s + meant.list.join(u' ') + u']';
  }

  static QByteArray ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  // What two planners export in a day.
  std::array<std::vector<ExportedFile>, 2> DayOfTwo(unsigned seed) {
    std::mt19937 random(seed);
    std::array<std::vector<ExportedFile>, 2> files;
    for (const std::size_t station : {0U, 1U}) {
      const QString name = station == 0 ? u"A"_s : u"B"_s;
      Planner planner(name, Folder(name + QString::number(seed)), random);
      planner.Refresh(Server());
      for (int step = 6 + static_cast<int>(random() % 14); step > 0; --step) {
        planner.Work(Server());
        if (random() % 8 != 0 || files[station].size() == 2) continue;
        if (auto file = planner.Export()) files[station].push_back(std::move(*file));
      }
      if (auto file = planner.Export()) files[station].push_back(std::move(*file));
    }
    return files;
  }

  // Applying the files again changes nothing.
  static void ApplyAgain(const QString& server, const std::vector<const ExportedFile*>& files) {
    const QByteArray before = ContentOf(server);
    for (const ExportedFile* file : files)
      EXPECT_TRUE(apply::CarryOut(server, apply::ReadExport(file->path), {file->source, {}, false, {}}).doneBefore);
    EXPECT_EQ(ContentOf(server), before);
  }

  QMap<QString, QMap<qint64, QString>> names_;  // by table, of all records that were ever in the database
};

// Every order of the files that keeps each workstation's own.
std::vector<std::vector<const ExportedFile*>> Orders(const std::vector<ExportedFile>& first,
                                                     const std::vector<ExportedFile>& second) {
  std::vector<bool> fromSecond(first.size(), false);
  fromSecond.resize(first.size() + second.size(), true);
  std::vector<std::vector<const ExportedFile*>> orders;
  do {
    std::size_t a = 0;
    std::size_t b = 0;
    std::vector<const ExportedFile*>& order = orders.emplace_back();
    for (const bool takesSecond : fromSecond)
      order.push_back(takesSecond ? &second[b++] : &first[a++]);
  } while (std::next_permutation(fromSecond.begin(), fromSecond.end()));
  return orders;
}

int Days() {
  const char* days = std::getenv("SPOTROOSTER_APPLY_DAYS");
  return days != nullptr ? std::atoi(days) : 12 * testing_support::LongTests();
}
unsigned FirstSeed() {
  const char* seed = std::getenv("SPOTROOSTER_SEED");
  return seed != nullptr ? static_cast<unsigned>(std::atoi(seed)) : 20261122U;
}

}  // namespace

TEST_F(RandomDays, InEveryOrderNothingIsLostOrMixed) {
  int orders = 0;
  int conflicts = 0;
  const auto day = [&](unsigned seed) {
    SCOPED_TRACE(seed);
    const std::array<std::vector<ExportedFile>, 2> files = DayOfTwo(seed);
    for (const auto& order : Orders(files[0], files[1])) {
      const QString server = Folder(u"orders"_s) + u"/server.mdb"_s;
      QFile::remove(server);
      ASSERT_TRUE(QFile::copy(Server(), server));
      Model model = ModelOf(server);
      for (const ExportedFile* file : order)
        ApplyTo(server, *file, model);
      ++orders;
      conflicts += static_cast<int>(model.Waiting().size());
      ApplyAgain(server, order);
      if (HasFailure()) return;
    }
  };
  for (int n = 0; n < Days() && !HasFailure(); ++n)
    day(FirstSeed() + static_cast<unsigned>(n));
  std::printf("%d days, %d orders, %d conflicts\n", Days(), orders, conflicts);
}

// Files are carried out while the work goes on, and the copies that are taken then have their records.
TEST_F(RandomDays, WorkThatGoesOnMeanwhileIsNotMixedUp) {
  const auto week = [&](unsigned seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const QString server = Folder(u"weeks"_s) + u"/server.mdb"_s;
    QFile::remove(server);
    ASSERT_TRUE(QFile::copy(Server(), server));
    Model model = ModelOf(server);
    std::array<Planner, 2> planners{Planner(u"A"_s, Folder(u"WA"_s + QString::number(seed)), random),
                                    Planner(u"B"_s, Folder(u"WB"_s + QString::number(seed)), random)};
    std::array<std::deque<ExportedFile>, 2> waiting;
    for (Planner& planner : planners)
      planner.Refresh(server);
    for (int step = 0; step < 60 && !HasFailure(); ++step) {
      const std::size_t station = random() % 2;
      planners[station].Work(server);
      if (random() % 6 == 0) {
        if (auto file = planners[station].Export()) waiting[station].push_back(std::move(*file));
      }
      if (random() % 7 == 0) Air(server, static_cast<int>(random() % 8), model);
      const std::size_t applied = random() % 2;
      if (random() % 5 == 0 && !waiting[applied].empty()) {
        ApplyTo(server, waiting[applied].front(), model);
        waiting[applied].pop_front();
      }
    }
  };
  for (int n = 0; n < Days() && !HasFailure(); ++n)
    week(FirstSeed() + static_cast<unsigned>(n));
}
