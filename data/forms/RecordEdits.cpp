// SPDX-License-Identifier: MIT
#include "data/forms/RecordEdits.h"

#include "data/AudioList.h"
#include "data/AudioRules.h"
#include "data/Catalogue.h"
#include "data/Globals.h"
#include "data/ItemRules.h"
#include "data/LogQueue.h"
#include "data/Lookups.h"
#include "data/Messages.h"
#include "data/ReadRows.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "data/forms/EditorForm.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Dates.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QRegularExpression>
#include <QSet>

#include <type_traits>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr qint32 kNumberedParts = 4;  // entries of cboOpt2VariabelNaamGedeelte

EditOutcome OutcomeOf(bool written) {
  global.lastResult = written;
  return written ? EditOutcome::Written : EditOutcome::Failed;
}

// Changes the row of an item-spot and writes it when that made a difference.
template <class Change>
EditOutcome WriteSpot(qint32 id, Change change) {
  const Catalogue catalogue = CurrentCatalogue();
  std::optional<ItemSpotRow> row = ReadItemSpot(catalogue, id);
  if (!row) return EditOutcome::NotThere;
  if (IsKull(row->naam) || IsKull(row->path)) return EditOutcome::Refused;
  if (!change(*row)) return EditOutcome::Same;
  return OutcomeOf(Update_tblItemSpots(*row, catalogue.databasePath, catalogue.itemSpots));
}

// Sets the field and returns whether that changed it.
bool Set(std::optional<qint32>& field, qint32 value) {
  const bool changed = field != value;
  field = value;
  return changed;
}

bool Accepted(const std::optional<Refusal>& refusal) {
  if (refusal) ShowAppMessage(refusal->message, refusal->value1, refusal->value2);
  return !refusal;
}

// Inserts the row under a new ID. The path of an audio record is added to Audio.tae as its editor does.
template <class Row, class Insert>
Duplicated InsertCopy(Row row, Insert insert, const Catalogue& catalogue, const QString& table) {
  const std::optional<qint32> id = GetNewIDIfAny(table, table + u".ID"_s, catalogue.databasePath);
  if (!id) return {};
  row.id = *id;
  const bool written = insert(row, catalogue.databasePath, table);
  if (!WasExecuted()) return {OutcomeOf(written)};
  return {OutcomeOf(written), row.id, row.naam};
}

// The record exists already, so an error is shown here.
bool ListPath(const QString& path) {
  return runtime::Trapped(__func__, false, [&] {
    if (WaitsForLog()) return QueueAudioPath(path);
    AppendToAudioList(path);
    return true;
  });
}

template <class Row, class Insert>
Duplicated DuplicateAudio(std::optional<Row> row, Insert insert, const Catalogue& catalogue, const QString& table) {
  if (!row) return {EditOutcome::NotThere};
  row->naam = FreeName(runtime::TrimBlanks(row->naam), kLongestAudioNaam, catalogue.databasePath, table);
  row->startPunt = 0;
  row->lengteSec = row->lengteSec.value_or(0);
  const auto isDuplicate = [&] { return NameExists(catalogue.databasePath, table, row->naam, true, 0); };
  if (!Accepted(CheckAudio({row->path, row->naam}, isDuplicate))) return {EditOutcome::Refused};
  if constexpr (std::is_same_v<Row, ItemSpotRow>) {
    const auto text = [](const std::optional<qint32>& hour) { return hour ? QString::number(*hour) : QString(); };
    ValidityInput validity{row->startDatum.has_value(), text(row->startUur), row->eindDatum.has_value(),
                           text(row->eindUur)};
    if (!Accepted(CheckValidity(validity))) return {EditOutcome::Refused};
    row->startUur = runtime::ToLong(validity.startUur);
    row->eindUur = runtime::ToLong(validity.eindUur);
    row->mixpunt = row->mixpunt.value_or(0);
  } else {
    row->mixPunt = row->mixPunt.value_or(0);
  }
  Duplicated copy = InsertCopy(*row, insert, catalogue, table);
  if (copy.id != 0 && !ListPath(row->path)) copy.outcome = EditOutcome::Failed;
  return copy;
}

// The values as the item editor would save them after opening this item.
void AsEdited(ItemRow& item, int listedSpots, const Catalogue& catalogue) {
  item.locked = 0;
  if (item.optMeerdereSpots == 0) {
    item.aantalSpots = item.maxAantalSpots = item.chkRandomizeMeerdereSpots = 0;
    item.midden.reset();
  } else if (item.itemSpotsOptID == 1) {
    item.maxAantalSpots = listedSpots;
  }
  for (std::optional<qint32>* jingle : {&item.opener, &item.midden, &item.sluiter}) {
    if (*jingle && !ReadItemPingle(catalogue, **jingle)) jingle->reset();
  }
}

bool ItemAccepted(const ItemRow& item, int listedSpots, const Catalogue& catalogue) {
  ItemInput input;
  input.naam = item.naam;
  input.hasList = item.itemSpotsOptID == 1;
  input.listedSpots = listedSpots;
  input.hasPattern = item.itemSpotsOptID == 2;
  input.directory = item.opt2Directory;
  input.fixedPart = item.opt2VastNaamGedeelte;
  input.hasVariablePart = item.opt2VariabelNaamGedeelte >= 1 && item.opt2VariabelNaamGedeelte <= kNumberedParts;
  input.extension = item.opt2FileExtensie;
  input.severalSpots = item.optMeerdereSpots != 0;
  input.aantalSpots = QString::number(item.aantalSpots);
  input.maxAantalSpots = QString::number(item.maxAantalSpots);
  return Accepted(
      CheckItem(input, [&] { return NameExists(catalogue.databasePath, catalogue.items, item.naam, true, 0); }));
}

// Links left by an item that had this ID are removed first.
bool WriteSpotsOfItem(qint32 itemID, const std::vector<qint32>& spots, const Catalogue& catalogue) {
  const QString& link = catalogue.itemsItemSpots;
  if (!Delete_tblBeheer(itemID, link, link + u".ItemID"_s, catalogue.databasePath)) return false;
  qint32 order = 0;
  for (const qint32 spot : spots) {
    if (!Insert_tblItemsItemSpots({itemID, ++order, spot}, catalogue.databasePath, link)) return false;
  }
  return true;
}

Duplicated DuplicateItem(qint32 id) {
  const Catalogue catalogue = CurrentCatalogue();
  std::optional<ItemRow> item = ReadItem(catalogue, id);
  if (!item) return {EditOutcome::NotThere};
  const bool hasList = item->itemSpotsOptID == 1;
  const std::vector<qint32> spots = hasList ? ReadSpotsOfItem(catalogue, id) : std::vector<qint32>();
  const int listed = static_cast<int>(spots.size());
  AsEdited(*item, listed, catalogue);
  item->naam = FreeName(runtime::TrimBlanks(item->naam), kLongestItemNaam, catalogue.databasePath, catalogue.items);
  if (!ItemAccepted(*item, listed, catalogue)) return {EditOutcome::Refused};
  Duplicated copy = InsertCopy(*item, Insert_tblItems, catalogue, catalogue.items);
  if (copy.outcome == EditOutcome::Written) copy.outcome = OutcomeOf(WriteSpotsOfItem(copy.id, spots, catalogue));
  return copy;
}

}  // namespace

std::optional<qint32> ReadAktief(RecordKind kind, qint32 id) {
  const Catalogue catalogue = CurrentCatalogue();
  if (kind == RecordKind::Item) {
    const std::optional<ItemRow> item = ReadItem(catalogue, id);
    return item ? std::optional(item->aktief) : std::nullopt;
  }
  const std::optional<ItemSpotRow> spot = ReadItemSpot(catalogue, id);
  return spot ? std::optional(spot->aktief) : std::nullopt;
}

EditOutcome WriteAktief(RecordKind kind, qint32 id, qint32 aktief) {
  const std::optional<qint32> now = ReadAktief(kind, id);
  if (!now) return EditOutcome::NotThere;
  if (*now == aktief) return EditOutcome::Same;
  const Catalogue catalogue = CurrentCatalogue();
  return OutcomeOf(kind == RecordKind::Item
                       ? Update_tblItems_Aktief(id, aktief, catalogue.databasePath, catalogue.items)
                       : Update_tblItemSpots_Aktief(id, aktief, catalogue.databasePath, catalogue.itemSpots));
}

EditOutcome WriteEindDatum(qint32 spotID, QDate day) {
  return WriteSpot(spotID, [&](ItemSpotRow& row) { return Set(row.eindDatum, runtime::DayNumber(day)); });
}

EditOutcome WriteUren(qint32 spotID, qint32 startUur, qint32 eindUur) {
  return WriteSpot(spotID, [&](ItemSpotRow& row) {
    const bool start = Set(row.startUur, startUur);
    return Set(row.eindUur, eindUur) || start;
  });
}

Duplicated Duplicate(RecordKind kind, qint32 id) {
  const Catalogue catalogue = CurrentCatalogue();
  switch (kind) {
    case RecordKind::ItemSpot:
      return DuplicateAudio(ReadItemSpot(catalogue, id), Insert_tblItemSpots, catalogue, catalogue.itemSpots);
    case RecordKind::ItemPingle:
      return DuplicateAudio(ReadItemPingle(catalogue, id), Insert_tblItemPingles, catalogue, catalogue.itemPingles);
    case RecordKind::Item:
      break;
  }
  return DuplicateItem(id);
}

namespace {

// Case-folded, of all names that begin so.
QSet<QString> NamesBeginning(const QString& beginning, const QString& databasePath, const QString& table) {
  QSet<QString> names;
  dao::OpenDatabase(databasePath).Visit(u"SELECT Naam FROM "_s + table, [&](const dao::Row& row) {
    const QString naam = row.Text(0).toString();
    if (naam.startsWith(beginning, Qt::CaseInsensitive)) names.insert(naam.toCaseFolded());
    return true;
  });
  return names;
}

}  // namespace

// Every look-up of a name reads the whole table, so the names that are obviously taken are read at once.
QString FreeName(const QString& naam, int longest, const QString& databasePath, const QString& table) {
  if (naam.isEmpty()) return naam;
  constexpr int kLongestSuffix = 9;
  static const QRegularExpression kNumbered(u"^(.*\\S) \\((\\d{1,6})\\)$"_s);
  const QRegularExpressionMatch numbered = kNumbered.match(naam);
  QString base = numbered.hasMatch() ? numbered.captured(1) : naam;
  const QSet<QString> taken = NamesBeginning(base.left(longest - kLongestSuffix), databasePath, table);
  for (int number = numbered.hasMatch() ? numbered.captured(2).toInt() + 1 : 2;; ++number) {
    const QString suffix = u" (%1)"_s.arg(number);
    if (base.size() + suffix.size() > longest) {
      base.truncate(longest - suffix.size());
      if (!base.isEmpty() && base.back().isHighSurrogate()) base.chop(1);
      base = runtime::TrimBlanks(base);
    }
    QString free = base + suffix;
    if (!taken.contains(free.toCaseFolded()) && !NameExists(databasePath, table, free, true, 0)) return free;
  }
}
