// SPDX-License-Identifier: MIT
// Random days of two workstations that work offline from one server, and a model of what they mean. In the model
// records are known by a name that never changes (the path of a spot, the name of an item), never by their numbers:
// whatever was renumbered, each record must be in the database once, with the values that were meant.
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

const QString kSpotTable = u"tblItemSpots"_s;
const QString kItemTable = u"tblItems"_s;
const QString kLinkTable = u"tblItemsItemSpots"_s;

// A record as it is meant: the fields that the days change, and the spots of an item by their names.
struct Meant {
  QMap<QString, QString> fields;
  QStringList list;

  bool operator==(const Meant&) const = default;
};

struct Operation {
  QString record;  // "spot A3", "item B1"
  std::optional<Meant> before;
  std::optional<Meant> after;
  bool hasList = false;
};

struct ExportedFile {
  QString path;
  QString source;
  std::vector<Operation> operations;
};

// What the shared database should be.
class Model {
 public:
  void Put(const QString& record, const Meant& meant) { records_[record] = meant; }

  void Apply(const ExportedFile& file) {
    for (const Operation& operation : file.operations)
      Apply(file.source, operation);
  }

  const std::map<QString, Meant>& Records() const { return records_; }
  QStringList Waiting() const {
    QStringList names;
    for (const auto& [key, state] : waiting_)
      names += key.second;
    names.sort();
    return names;
  }

 private:
  void Apply(const QString& source, const Operation& operation) {
    const QString& record = operation.record;
    if (!operation.before) {
      records_[record] = *operation.after;
      return;
    }
    const auto waiting = waiting_.find({source, record});
    if (waiting != waiting_.end() && waiting->second == operation.before->fields) {
      if (operation.after) {
        waiting->second = operation.after->fields;
      } else if (!records_.contains(record)) {
        waiting_.erase(waiting);
      } else {
        waiting->second = {{u"deleted"_s, u"1"_s}};
      }
      return;
    }
    const auto there = records_.find(record);
    if (!operation.after) {
      if (there == records_.end()) return;
      const bool isSame = there->second.fields == operation.before->fields &&
                          (!operation.hasList || there->second.list == operation.before->list);
      if (isSame) {
        records_.erase(there);
      } else {
        waiting_.insert({{source, record}, {{u"deleted"_s, u"1"_s}}});
      }
      return;
    }
    if (there == records_.end()) {
      waiting_.insert({{source, record}, operation.after->fields});
      return;
    }
    Meant merged = there->second;
    if (!Merge(operation, merged)) {
      waiting_.insert({{source, record}, operation.after->fields});
      return;
    }
    there->second = merged;
  }

  static bool Merge(const Operation& operation, Meant& merged) {
    for (auto field = merged.fields.begin(); field != merged.fields.end(); ++field) {
      const QString before = operation.before->fields[field.key()];
      const QString after = operation.after->fields[field.key()];
      if (before == after || field.value() == after) continue;
      if (field.value() != before) return false;
      field.value() = after;
    }
    if (!operation.hasList || operation.before->list == operation.after->list || merged.list == operation.after->list)
      return true;
    if (merged.list != operation.before->list) return false;
    merged.list = operation.after->list;
    return true;
  }

  std::map<QString, Meant> records_;
  std::multimap<std::pair<QString, QString>, QMap<QString, QString>> waiting_;  // source and record: its row there
};

QString AnyText(const dao::Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return QString::fromStdU16String(*text);
  if (const auto* number = std::get_if<std::int64_t>(&value)) return QString::number(*number);
  if (const auto* number = std::get_if<double>(&value)) return QString::number(*number);
  return {};
}

const QStringList kSpotFields{u"Naam"_s, u"LengteSec"_s, u"EindDatum"_s, u"Aktief"_s};
const QStringList kItemFields{u"AantalSpots"_s, u"MaxAantalSpots"_s, u"Opener"_s};

Meant MeantOf(const Workstation::Fields& fields, const QStringList& names) {
  Meant meant;
  for (const QString& name : names)
    meant.fields[name] = AnyText(fields[name]);
  return meant;
}

QString NameOfSpot(const Workstation::Fields& fields) {
  return u"spot "_s + AnyText(fields[u"Path"_s]).section(u'\\', 2).section(u'.', 0, 0);
}
QString NameOfItem(const Workstation::Fields& fields) {
  return u"item "_s + AnyText(fields[u"Naam"_s]);
}

// A planner who does something now and then, and the meaning of it.
class Planner {
 public:
  Planner(const QString& name, const QString& folder, std::mt19937& random) : at_(name, folder), random_(random) {}

  void Refresh(const QString& server, const QStringList& tables = {}) {
    at_.Refresh(server, tables);
    Notice();
  }

  void Work(const QString& server) {
    switch (Draw(10)) {
      case 0:
      case 1:
        return NewSpot();
      case 2:
      case 3:
      case 4:
        return ChangeSpot();
      case 5:
        return DeleteSpot();
      case 6:
        return NewItem();
      case 7:
        return ChangeItem();
      case 8:
        return Draw(3) == 0 ? DeleteItem() : ChangeItem();
      default:
        return Refresh(server, Draw(2) == 0 ? QStringList{kSpotTable} : QStringList{kItemTable, kLinkTable});
    }
  }

  std::optional<ExportedFile> Export() {
    if (!at_.HasLog()) return std::nullopt;
    return ExportedFile{at_.Export(), at_.Name(), std::exchange(operations_, {})};
  }

 private:
  int Draw(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

  std::optional<qint32> Any(const QString& table) {
    const Workstation::Rows rows = at_.Of(table);
    if (rows.isEmpty()) return std::nullopt;
    return static_cast<qint32>(std::next(rows.begin(), Draw(static_cast<int>(rows.size()))).key());
  }

  // A spot that is gone from the copy is the own one of that number, or else the one that was seen there last.
  void Notice() {
    const Workstation::Rows spots = at_.Of(kSpotTable);
    for (auto spot = spots.begin(); spot != spots.end(); ++spot)
      seen_[spot.key()] = NameOfSpot(*spot);
  }
  QString SpotName(qint32 id) {
    const Workstation::Rows spots = at_.Of(kSpotTable);
    if (spots.contains(id)) return NameOfSpot(spots[id]);
    return own_.value(id, seen_.value(id));
  }
  QStringList ListOf(qint32 item) {
    QStringList list;
    for (const qint32 spot : at_.SpotsOf(item))
      list += SpotName(spot);
    return list;
  }
  Meant Spot(qint32 id) { return MeantOf(at_.Of(kSpotTable)[id], kSpotFields); }
  Meant Item(qint32 id) {
    Meant meant = MeantOf(at_.Of(kItemTable)[id], kItemFields);
    meant.list = ListOf(id);
    return meant;
  }

  void NewSpot() {
    const QString name = at_.Name() + QString::number(++made_);
    ItemSpotRow row = ::NewSpot(at_.NewID(kSpotTable), u"spot '"_s + name);
    row.path = u"D:\\x\\"_s + name + u".wav";
    at_.InsertSpot(row);
    own_[row.id] = u"spot "_s + name;
    operations_.push_back({u"spot "_s + name, std::nullopt, Spot(row.id)});
  }

  void ChangeSpot() {
    const auto id = Any(kSpotTable);
    if (!id) return;
    Operation operation{NameOfSpot(at_.Of(kSpotTable)[*id]), Spot(*id), std::nullopt};
    ItemSpotRow row = at_.Spot(*id);
    if (Draw(3) == 0) row.naam = u"naam *"_s + QString::number(Draw(4));
    if (Draw(2) == 0) row.lengteSec = 10 + Draw(4);
    if (Draw(2) == 0) row.eindDatum = 45700 + Draw(4);
    at_.UpdateSpot(row);
    if (Draw(4) == 0) {  // and once more, by the button of the list
      operation.after = Spot(*id);
      operations_.push_back(operation);
      operation.before = operation.after;
      at_.SetAktief(kSpotTable, *id, Draw(2));
    }
    operation.after = Spot(*id);
    operations_.push_back(operation);
  }

  void DeleteSpot() {
    const auto id = Any(kSpotTable);
    if (!id) return;
    operations_.push_back({NameOfSpot(at_.Of(kSpotTable)[*id]), Spot(*id), std::nullopt});
    at_.DeleteSpot(*id);
  }

  QList<qint32> SomeSpots() {
    QList<qint32> spots;
    for (int i = Draw(4); i > 0; --i) {
      if (const auto spot = Any(kSpotTable)) spots += *spot;
    }
    return spots;
  }

  void NewItem() {
    ItemRow row;
    row.id = at_.NewID(kItemTable);
    row.naam = at_.Name() + QString::number(++made_);
    row.aktief = 1;
    at_.InsertItem(row, SomeSpots());
    operations_.push_back({u"item "_s + row.naam, std::nullopt, Item(row.id), true});
  }

  void ChangeItem() {
    const auto id = Any(kItemTable);
    if (!id) return;
    Operation operation{NameOfItem(at_.Of(kItemTable)[*id]), Item(*id), std::nullopt, true};
    ItemRow row = at_.Item(*id);
    if (Draw(2) == 0) row.aantalSpots = Draw(3);
    if (Draw(3) == 0) row.opener = Draw(2) == 0 ? std::optional<qint32>() : 1 + Draw(2);
    at_.UpdateItem(row, Draw(2) == 0 ? at_.SpotsOf(*id) : SomeSpots());
    operation.after = Item(*id);
    operations_.push_back(operation);
  }

  void DeleteItem() {
    const auto id = Any(kItemTable);
    if (!id) return;
    operations_.push_back({NameOfItem(at_.Of(kItemTable)[*id]), Item(*id), std::nullopt, true});
    at_.DeleteItem(*id);
  }

  Workstation at_;
  std::mt19937& random_;
  std::vector<Operation> operations_;
  QMap<qint64, QString> own_;
  QMap<qint64, QString> seen_;
  int made_ = 0;
};

class RandomDays : public SharedStation {
 protected:
  RandomDays() { Fill(); }

  // The shared database as the model describes it.
  std::map<QString, Meant> Records(const QString& server) {
    Workstation seen(u"lezer"_s, Folder(u"lezer"_s));
    seen.Refresh(server);
    std::map<QString, Meant> records;
    const Workstation::Rows spots = seen.Of(kSpotTable);
    for (auto spot = spots.begin(); spot != spots.end(); ++spot) {
      EXPECT_FALSE(records.contains(NameOfSpot(*spot))) << "twice: " << NameOfSpot(*spot).toStdString();
      records[NameOfSpot(*spot)] = MeantOf(*spot, kSpotFields);
      names_[spot.key()] = NameOfSpot(*spot);
    }
    const Workstation::Rows items = seen.Of(kItemTable);
    for (auto item = items.begin(); item != items.end(); ++item) {
      EXPECT_FALSE(records.contains(NameOfItem(*item))) << "twice: " << NameOfItem(*item).toStdString();
      Meant& meant = records[NameOfItem(*item)] = MeantOf(*item, kItemFields);
      for (const qint32 spot : seen.SpotsOf(static_cast<qint32>(item.key())))
        meant.list += names_.value(spot);
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

  void Compare(const QString& server, const Model& model) {
    const std::map<QString, Meant> records = Records(server);
    QStringList differences;
    for (const auto& [record, meant] : model.Records()) {
      const auto there = records.find(record);
      if (there == records.end()) {
        differences += record + u" is missing"_s;
      } else if (!(there->second == meant)) {
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
      waiting += conflict.table == apply::Table::Items ? NameOfItem(fields) : NameOfSpot(fields);
    }
    waiting.sort();
    EXPECT_EQ(waiting.join(u',').toStdString(), model.Waiting().join(u',').toStdString());
  }

  static QString Shown(const Meant& meant) {
    return QStringList(meant.fields.values()).join(u'/') + u" ["_s + meant.list.join(u' ') + u']';
  }

  static QByteArray ContentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QMap<qint64, QString> names_;  // of all spots that were ever in the database
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
    for (const auto& order : Orders(files[0], files[1])) {
      const QString server = Folder(u"orders"_s) + u"/server.mdb"_s;
      QFile::remove(server);
      ASSERT_TRUE(QFile::copy(Server(), server));
      Model model = ModelOf(server);
      for (const ExportedFile* file : order)
        ApplyTo(server, *file, model);
      ++orders;
      conflicts += static_cast<int>(model.Waiting().size());
      const QByteArray before = ContentOf(server);
      for (const ExportedFile* file : order)
        EXPECT_TRUE(apply::CarryOut(server, apply::ReadExport(file->path), {file->source, {}, false, {}}).doneBefore);
      EXPECT_EQ(ContentOf(server), before);
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
