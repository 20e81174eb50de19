// SPDX-License-Identifier: MIT
#pragma once

#include "tests/export/apply/DayModel.h"
#include "tests/export/apply/Shared.h"
#include "tests/export/apply/Workstation.h"

#include <iterator>
#include <optional>
#include <random>
#include <utility>
#include <vector>

inline const QString kSpotTable = QStringLiteral("tblItemSpots");
inline const QString kItemTable = QStringLiteral("tblItems");
inline const QString kLinkTable = QStringLiteral("tblItemsItemSpots");
inline const QString kJingleTable = QStringLiteral("tblItemPingles");

inline QString AnyText(const dao::Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return QString::fromStdU16String(*text);
  if (const auto* number = std::get_if<std::int64_t>(&value)) return QString::number(*number);
  if (const auto* number = std::get_if<double>(&value)) return QString::number(*number);
  return {};
}

inline const QStringList kSpotFields{QStringLiteral("Naam"), QStringLiteral("LengteSec"), QStringLiteral("EindDatum"),
                                     QStringLiteral("Aktief"), kPlayCount};
inline const QStringList kJingleFields{QStringLiteral("Naam"), QStringLiteral("LengteSec"), QStringLiteral("Aktief")};
inline const QStringList kItemFields{QStringLiteral("AantalSpots"), QStringLiteral("MaxAantalSpots"),
                                     QStringLiteral("Aktief"), QStringLiteral("ItemSpotsOptID"),
                                     QStringLiteral("Opt2VastNaamGedeelte")};
inline const QStringList kItemJingles{QStringLiteral("Opener"), QStringLiteral("Midden"), QStringLiteral("Sluiter")};

inline Meant MeantOf(const Workstation::Fields& fields, const QStringList& names) {
  Meant meant;
  for (const QString& name : names)
    meant.fields[name] = AnyText(fields[name]);
  for (const dao::Value& value : fields)
    meant.row += AnyText(value) + u'|';
  return meant;
}

// The file of a spot or jingle, which a day never changes; of an item its name.
inline QString NameOf(const QString& table, const Workstation::Fields& fields) {
  if (table == kItemTable) return QStringLiteral("item ") + AnyText(fields[QStringLiteral("Naam")]);
  const QString file = AnyText(fields[QStringLiteral("Path")]).section(u'\\', -1).section(u'.', 0, 0);
  return (table == kSpotTable ? QStringLiteral("spot ") : QStringLiteral("jingle ")) + file;
}

// A planner who does something now and then, and the meaning of it.
class Planner {
 public:
  Planner(const QString& name, const QString& folder, std::mt19937& random) : at_(name, folder), random_(random) {}

  void Refresh(const QString& server, const QStringList& tables = {}) {
    at_.Refresh(server, tables);
    // A refreshed list of an item may have a spot that the copy of the spots does not have yet.
    Workstation shared(QStringLiteral("server"), {});
    shared.Refresh(server, {kSpotTable, kJingleTable});
    for (const QString& table : {kSpotTable, kJingleTable}) {
      Notice(table, shared.Of(table));
      Notice(table, at_.Of(table));
    }
  }

  // One of what the screens can do.
  void Work(const QString& server) {
    switch (Draw(17)) {
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
      case 8:
        return ChangeItem();
      case 9:
        return SwitchItem();
      case 10:
        return CleanUpItem(server);
      case 11:
        return NewJingle();
      case 12:
      case 13:
        return ChangeJingle();
      case 14:
        return DeleteJingle();
      case 15:
        return ResetPlayCounts();
      default:
        break;
    }
    const QStringList lists[] = {{kSpotTable}, {kItemTable, kLinkTable}, {kJingleTable}};
    Refresh(server, lists[Draw(3)]);
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

  // A record that is gone from the copy is the own one of that number, or else the one that was seen there last.
  void Notice(const QString& table, const Workstation::Rows& rows) {
    for (auto row = rows.begin(); row != rows.end(); ++row)
      seen_[table][row.key()] = NameOf(table, *row);
  }
  QString Name(const QString& table, qint64 id) {
    const Workstation::Rows rows = at_.Of(table);
    if (rows.contains(id)) return NameOf(table, rows[id]);
    return own_[table].value(id, seen_[table].value(id));
  }
  Meant Spot(qint32 id) { return MeantOf(at_.Of(kSpotTable)[id], kSpotFields); }
  Meant Jingle(qint32 id) { return MeantOf(at_.Of(kJingleTable)[id], kJingleFields); }
  Meant Item(qint32 id) {
    const Workstation::Fields fields = at_.Of(kItemTable)[id];
    Meant meant = MeantOf(fields, kItemFields);
    for (const QString& field : kItemJingles) {
      const dao::Value value = fields[field];
      const auto* jingle = std::get_if<std::int64_t>(&value);
      meant.fields[field] = jingle != nullptr ? Name(kJingleTable, *jingle) : QString();
    }
    for (const qint32 spot : at_.SpotsOf(id))
      meant.list += Name(kSpotTable, spot);
    return meant;
  }
  QString NextName() { return at_.Name() + QString::number(++made_); }

  void NewSpot() {
    const QString name = NextName();
    ItemSpotRow row = ::NewSpot(at_.NewID(kSpotTable), QStringLiteral("spot '") + name);
    row.path = QStringLiteral("D:\\x\\") + name + u".wav";
    at_.InsertSpot(row);
    own_[kSpotTable][row.id] = QStringLiteral("spot ") + name;
    operations_.push_back({QStringLiteral("spot ") + name, std::nullopt, Spot(row.id)});
  }

  void ChangeSpot() {
    const auto id = Any(kSpotTable);
    if (!id) return;
    Operation operation{Name(kSpotTable, *id), Spot(*id), std::nullopt};
    ItemSpotRow row = at_.Spot(*id);
    if (Draw(3) == 0) row.naam = QStringLiteral("naam *") + QString::number(Draw(4));
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
    if (const auto id = Any(kSpotTable)) DeleteSpot(*id);
  }
  void DeleteSpot(qint32 id) {
    operations_.push_back({Name(kSpotTable, id), Spot(id), std::nullopt});
    at_.DeleteSpot(id);
  }

  QList<qint32> SomeSpots() {
    QList<qint32> spots;
    for (int i = Draw(4); i > 0; --i) {
      if (const auto spot = Any(kSpotTable)) spots += *spot;
    }
    return spots;
  }

  std::optional<qint32> SomeJingle() { return Draw(2) == 0 ? std::nullopt : Any(kJingleTable); }

  void NewItem() {
    ItemRow row;
    row.id = at_.NewID(kItemTable);
    row.naam = NextName();
    row.aktief = 1;
    row.opener = SomeJingle();
    at_.InsertItem(row, SomeSpots());
    operations_.push_back({QStringLiteral("item ") + row.naam, std::nullopt, Item(row.id), true});
  }

  void ChangeItem() {
    const auto id = Any(kItemTable);
    if (!id) return;
    Operation operation{Name(kItemTable, *id), Item(*id), std::nullopt, true};
    ItemRow row = at_.Item(*id);
    if (Draw(2) == 0) row.aantalSpots = Draw(3);
    if (Draw(3) == 0) row.opener = SomeJingle();
    if (Draw(4) == 0) row.midden = SomeJingle();
    if (Draw(4) == 0) row.sluiter = SomeJingle();
    if (Draw(6) == 0) row.itemSpotsOptID = 3 - row.itemSpotsOptID;
    if (row.itemSpotsOptID == 2) row.opt2VastNaamGedeelte = QStringLiteral("blok ") + QString::number(Draw(3));
    const QList<qint32> list = Draw(2) == 0 ? at_.SpotsOf(*id) : SomeSpots();
    at_.UpdateItem(row, row.itemSpotsOptID == 2 ? QList<qint32>() : list);
    operation.after = Item(*id);
    operations_.push_back(operation);
  }

  // The button of the list, which does not touch the spots.
  void SwitchItem() {
    const auto id = Any(kItemTable);
    if (!id) return;
    Operation operation{Name(kItemTable, *id), Item(*id), std::nullopt, false};
    at_.SetAktief(kItemTable, *id, Draw(2));
    operation.after = Item(*id);
    operations_.push_back(operation);
  }

  // Closing the cleanup takes the copy of the spots again, also offline.
  void CleanUpItem(const QString& server) {
    const auto id = Any(kItemTable);
    if (!id) return;
    const int boxes = Draw(4);
    if (boxes >= 2) {
      for (const qint32 spot : at_.SpotsOf(*id)) {
        if (at_.Of(kSpotTable).contains(spot)) DeleteSpot(spot);
      }
    }
    if (boxes != 3) {
      operations_.push_back({Name(kItemTable, *id), Item(*id), std::nullopt, true});
      at_.DeleteItem(*id);
    }
    Refresh(server, {kSpotTable});
  }

  void NewJingle() {
    ItemPingleRow row;
    const QString name = NextName();
    row.id = at_.NewID(kJingleTable);
    row.naam = QStringLiteral("jingle ") + name;
    row.path = QStringLiteral("D:\\j\\") + name + u".wav";
    row.aktief = 1;
    at_.InsertJingle(row);
    own_[kJingleTable][row.id] = QStringLiteral("jingle ") + name;
    operations_.push_back({QStringLiteral("jingle ") + name, std::nullopt, Jingle(row.id)});
  }

  void ChangeJingle() {
    const auto id = Any(kJingleTable);
    if (!id) return;
    Operation operation{Name(kJingleTable, *id), Jingle(*id), std::nullopt};
    ItemPingleRow row = at_.Jingle(*id);
    if (Draw(2) == 0) row.naam = QStringLiteral("jingle *") + QString::number(Draw(4));
    if (Draw(2) == 0) row.lengteSec = 3 + Draw(4);
    row.aktief = Draw(2);
    at_.UpdateJingle(row);
    operation.after = Jingle(*id);
    operations_.push_back(operation);
  }

  // Not logged: the jingle stays in the shared database, and its number may be given again here.
  void DeleteJingle() {
    if (const auto id = Any(kJingleTable)) at_.DeleteJingle(*id);
  }

  // The button in the editor of an item.
  void ResetPlayCounts() {
    const auto id = Any(kItemTable);
    if (!id) return;
    for (const qint32 spot : at_.SpotsOf(*id)) {
      if (!at_.Of(kSpotTable).contains(spot)) continue;
      Operation operation{Name(kSpotTable, spot), Spot(spot), std::nullopt};
      at_.ResetPlayCount(spot);
      operation.after = Spot(spot);
      operations_.push_back(operation);
    }
  }

  Workstation at_;
  std::mt19937& random_;
  std::vector<Operation> operations_;
  // By table and number.
  QMap<QString, QMap<qint64, QString>> own_;
  QMap<QString, QMap<qint64, QString>> seen_;
  int made_ = 0;
};
