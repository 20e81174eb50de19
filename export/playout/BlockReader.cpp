// SPDX-License-Identifier: MIT
#include "export/playout/BlockReader.h"

#include "data/ReadRows.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Numbers.h"

#include <QHash>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A field that is not a number counts as 0, like NULL.
qint32 NumberIn(const dao::Recordset& row, const QString& field) {
  const QVariant value = row.Field(field);
  return runtime::IsNumeric(value) ? runtime::ToLong(value) : 0;
}

QString TextIn(const dao::Recordset& row, const QString& field) {
  return runtime::TrimBlanks(row.Field(field).toString());
}

dao::Recordset Rows(const Catalogue& catalogue, const QString& select) {
  return dao::OpenDatabase(catalogue.databasePath, {.readOnly = true}).OpenRecordset(select);
}

QHash<qint32, BlockSpot> ReadSpots(const Catalogue& catalogue) {
  QHash<qint32, BlockSpot> spots;
  for (dao::Recordset row = Rows(catalogue, u"SELECT * FROM "_s + catalogue.itemSpots); !row.Eof(); row.MoveNext()) {
    BlockSpot spot;
    spot.id = NumberIn(row, u"ID"_s);
    spot.naam = TextIn(row, u"Naam"_s);
    spot.facts = FactsOf(row);
    spot.mixMs = NumberIn(row, u"Mixpunt"_s);
    spot.playCount = NumberIn(row, u"AantalGedraaid"_s);
    spot.lastPlayed = row.Field(u"LaatstGedraaid"_s).toDateTime();
    spots.insert(spot.id, spot);
  }
  return spots;
}

QHash<qint32, BlockJingle> ReadJingles(const Catalogue& catalogue) {
  QHash<qint32, BlockJingle> jingles;
  for (dao::Recordset row = Rows(catalogue, u"SELECT * FROM "_s + catalogue.itemPingles); !row.Eof(); row.MoveNext()) {
    const ItemPingleRow stored = ItemPingleRowOf(row);
    BlockJingle jingle;
    jingle.id = stored.id;
    jingle.naam = runtime::TrimBlanks(stored.naam);
    jingle.path = stored.path;
    jingle.aktief = stored.aktief != 0;
    jingle.mixMs = stored.mixPunt.value_or(0);
    jingle.lengteSec = stored.lengteSec;
    jingles.insert(jingle.id, jingle);
  }
  return jingles;
}

// The spots of each item, in list order.
QHash<qint32, std::vector<qint32>> ReadLists(const Catalogue& catalogue, const QString& condition) {
  QHash<qint32, std::vector<qint32>> lists;
  const QString select =
      u"SELECT ItemID, ItemSpotID FROM %1 %2 ORDER BY ItemID, ItemSpotOrder"_s.arg(catalogue.itemsItemSpots, condition);
  for (dao::Recordset row = Rows(catalogue, select); !row.Eof(); row.MoveNext())
    lists[row.Field(0).toInt()].push_back(row.Field(1).toInt());
  return lists;
}

FileNamePattern PatternOf(const ItemRow& item) {
  FileNamePattern pattern;
  pattern.directory = runtime::TrimBlanks(item.opt2Directory);
  pattern.fixedPart = runtime::TrimBlanks(item.opt2VastNaamGedeelte);
  pattern.variableCode = item.opt2VariabelNaamGedeelte;
  pattern.format = runtime::TrimBlanks(item.opt2FormatGedeelte);
  pattern.firstDayOfWeek = item.opt2Eerstedagvanweek;
  pattern.extension = runtime::TrimBlanks(item.opt2FileExtensie);
  pattern.severalSpots = item.optMeerdereSpots != 0;
  return pattern;
}

Block::Filling FillingOf(qint32 option) {
  if (option == 1) return Block::Filling::List;
  return option == 2 ? Block::Filling::Files : Block::Filling::Unknown;
}

Block BlockOf(const ItemRow& item, const BlockParts& parts) {
  Block block;
  block.id = item.id;
  block.naam = runtime::TrimBlanks(item.naam);
  block.aktief = item.aktief != 0;
  block.filling = FillingOf(item.itemSpotsOptID);
  block.pattern = PatternOf(item);
  block.patternMixMs = item.opt2MixPunt;
  block.several = block.pattern.severalSpots;
  block.count = item.aantalSpots;
  block.most = item.maxAantalSpots;
  block.random = item.chkRandomizeMeerdereSpots != 0;
  block.opener = parts.Jingle(item.opener.value_or(0));
  block.middle = parts.Jingle(item.midden.value_or(0));
  block.closer = parts.Jingle(item.sluiter.value_or(0));
  return block;
}

}  // namespace

BlockParts::BlockParts(const Catalogue& catalogue) : spots_(ReadSpots(catalogue)), jingles_(ReadJingles(catalogue)) {}

namespace {

template <class Part>
std::vector<Part> ByName(const QHash<qint32, Part>& parts) {
  std::vector<Part> sorted(parts.cbegin(), parts.cend());
  std::ranges::sort(sorted, {}, [](const Part& part) { return std::pair(part.naam.toCaseFolded(), part.id); });
  return sorted;
}

}  // namespace

std::vector<BlockSpot> BlockParts::Spots() const {
  return ByName(spots_);
}

std::vector<BlockJingle> BlockParts::Jingles() const {
  return ByName(jingles_);
}

const BlockSpot* BlockParts::Spot(qint32 id) const {
  const auto spot = spots_.constFind(id);
  return spot == spots_.constEnd() ? nullptr : &*spot;
}

std::optional<BlockJingle> BlockParts::Jingle(qint32 id) const {
  if (id == 0) return std::nullopt;
  BlockJingle gone;
  gone.id = id;
  gone.exists = false;
  return jingles_.value(id, gone);
}

namespace {

// Links to deleted spots play nothing and are left out. `ofItem` is a condition appended to the name of a field with an
// item's ID; empty for all items.
std::vector<Block> ReadSome(const Catalogue& catalogue, const QString& ofItem) {
  const auto where = [&](const QString& field) { return ofItem.isEmpty() ? QString() : u"WHERE "_s + field + ofItem; };
  const BlockParts parts(catalogue);
  const QHash<qint32, std::vector<qint32>> lists = ReadLists(catalogue, where(u"ItemID"_s));
  std::vector<Block> blocks;
  const QString select = u"SELECT * FROM %1 %2 ORDER BY Naam, ID"_s.arg(catalogue.items, where(u"ID"_s));
  for (dao::Recordset row = Rows(catalogue, select); !row.Eof(); row.MoveNext()) {
    Block block = BlockOf(ItemRowOf(row), parts);
    if (block.filling == Block::Filling::List) {
      for (const qint32 id : lists.value(block.id)) {
        if (const BlockSpot* spot = parts.Spot(id)) block.spots.push_back(*spot);
      }
    }
    blocks.push_back(std::move(block));
  }
  return blocks;
}

}  // namespace

std::vector<Block> ReadBlocks(const Catalogue& catalogue) {
  return ReadSome(catalogue, {});
}

Block ReadBlock(const Catalogue& catalogue, qint32 id) {
  const std::vector<Block> found = ReadSome(catalogue, u" = "_s + QString::number(id));
  return found.empty() ? Block() : found.front();
}
