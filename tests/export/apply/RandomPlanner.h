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

inline QString AnyText(const dao::Value& value) {
  if (const auto* text = std::get_if<std::u16string>(&value)) return QString::fromStdU16String(*text);
  if (const auto* number = std::get_if<std::int64_t>(&value)) return QString::number(*number);
  if (const auto* number = std::get_if<double>(&value)) return QString::number(*number);
  return {};
}

inline const QStringList kSpotFields{QStringLiteral("Naam"), QStringLiteral("LengteSec"), QStringLiteral("EindDatum"),
                                     QStringLiteral("Aktief")};
inline const QStringList kItemFields{QStringLiteral("AantalSpots"), QStringLiteral("MaxAantalSpots"),
                                     QStringLiteral("Opener")};

inline Meant MeantOf(const Workstation::Fields& fields, const QStringList& names) {
  Meant meant;
  for (const QString& name : names)
    meant.fields[name] = AnyText(fields[name]);
  return meant;
}

inline QString NameOfSpot(const Workstation::Fields& fields) {
  return QStringLiteral("spot ") + AnyText(fields[QStringLiteral("Path")]).section(u'\\', 2).section(u'.', 0, 0);
}
inline QString NameOfItem(const Workstation::Fields& fields) {
  return QStringLiteral("item ") + AnyText(fields[QStringLiteral("Naam")]);
}

// A planner who does something now and then, and the meaning of it.
class Planner {
 public:
  Planner(const QString& name, const QString& folder, std::mt19937& random) : at_(name, folder), random_(random) {}

  void Refresh(const QString& server, const QStringList& tables = {}) {
    at_.Refresh(server, tables);
    // A refreshed list of an item may have a spot that the copy of the spots does not have yet.
    Workstation shared(QStringLiteral("server"), {});
    shared.Refresh(server, {kSpotTable});
    Notice(shared.Of(kSpotTable));
    Notice(at_.Of(kSpotTable));
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
  void Notice(const Workstation::Rows& spots) {
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
    ItemSpotRow row = ::NewSpot(at_.NewID(kSpotTable), QStringLiteral("spot '") + name);
    row.path = QStringLiteral("D:\\x\\") + name + u".wav";
    at_.InsertSpot(row);
    own_[row.id] = QStringLiteral("spot ") + name;
    operations_.push_back({QStringLiteral("spot ") + name, std::nullopt, Spot(row.id)});
  }

  void ChangeSpot() {
    const auto id = Any(kSpotTable);
    if (!id) return;
    Operation operation{NameOfSpot(at_.Of(kSpotTable)[*id]), Spot(*id), std::nullopt};
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
    operations_.push_back({QStringLiteral("item ") + row.naam, std::nullopt, Item(row.id), true});
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
