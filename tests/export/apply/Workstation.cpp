// SPDX-License-Identifier: MIT
#include "tests/export/apply/Workstation.h"

#include "data/Schema.h"
#include "data/Statements.h"
#include "export/ContentDigest.h"
#include "platform/dao/Conversion.h"
#include "platform/runtime/CodePage.h"

#include <QFile>
#include <QUuid>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const QString kItems = u"tblItems"_s;
const QString kSpots = u"tblItemSpots"_s;
const QString kJingles = u"tblItemPingles"_s;
const QString kLinks = u"tblItemsItemSpots"_s;

dao::Value Text(const QString& text) {
  return text.trimmed().isEmpty() ? dao::Value() : dao::Value(text.toStdU16String());
}
dao::Value Whole(qint64 number) {
  return std::int64_t{number};
}
dao::Value Maybe(const std::optional<qint32>& number) {
  return number ? Whole(*number) : dao::Value();
}
// A date field holds a floating-point number.
dao::Value Day(const std::optional<qint32>& day) {
  return day ? dao::Value(static_cast<double>(*day)) : dao::Value();
}

QString TextOf(const dao::Value& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  return text != nullptr ? QString::fromStdU16String(*text) : QString();
}
std::optional<qint32> NumberOf(const dao::Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return static_cast<qint32>(*number);
  if (const auto* number = std::get_if<double>(&value)) return static_cast<qint32>(*number);
  return std::nullopt;
}

void Write(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
    throw std::runtime_error("cannot write an export");
}

// What the editor gives, over what the row has.
Workstation::Fields Over(Workstation::Fields fields, const ItemSpotRow& row) {
  fields[u"ID"_s] = Whole(row.id);
  fields[u"Path"_s] = Text(row.path);
  fields[u"Naam"_s] = Text(row.naam);
  fields[u"LengteSec"_s] = Maybe(row.lengteSec);
  fields[u"StartPunt"_s] = Maybe(row.startPunt);
  fields[u"Mixpunt"_s] = Maybe(row.mixpunt);
  fields[u"StartDatum"_s] = Day(row.startDatum);
  fields[u"StartUur"_s] = Maybe(row.startUur);
  fields[u"EindDatum"_s] = Day(row.eindDatum);
  fields[u"EindUur"_s] = Maybe(row.eindUur);
  fields[u"Aktief"_s] = Whole(row.aktief);
  return fields;
}

Workstation::Fields Over(Workstation::Fields fields, const ItemPingleRow& row) {
  fields[u"ID"_s] = Whole(row.id);
  fields[u"Path"_s] = Text(row.path);
  fields[u"Naam"_s] = Text(row.naam);
  fields[u"LengteSec"_s] = Maybe(row.lengteSec);
  fields[u"StartPunt"_s] = Maybe(row.startPunt);
  fields[u"Mixpunt"_s] = Maybe(row.mixPunt);
  fields[u"Aktief"_s] = Whole(row.aktief);
  return fields;
}

Workstation::Fields Over(Workstation::Fields fields, const ItemRow& row) {
  fields[u"ID"_s] = Whole(row.id);
  fields[u"Naam"_s] = row.naam.toStdU16String();
  fields[u"ItemSpotsOptID"_s] = Whole(row.itemSpotsOptID);
  const bool isPattern = row.itemSpotsOptID == 2;
  fields[u"Opt2Directory"_s] = isPattern ? row.opt2Directory.toStdU16String() : dao::Value();
  fields[u"Opt2VastNaamGedeelte"_s] = isPattern ? row.opt2VastNaamGedeelte.toStdU16String() : dao::Value();
  fields[u"Opt2VariabelNaamGedeelte"_s] = isPattern ? Whole(row.opt2VariabelNaamGedeelte) : dao::Value();
  fields[u"Opt2FormatGedeelte"_s] = isPattern ? row.opt2FormatGedeelte.toStdU16String() : dao::Value();
  fields[u"Opt2Eerstedagvanweek"_s] = isPattern ? Whole(row.opt2Eerstedagvanweek) : dao::Value();
  fields[u"Opt2FileExtensie"_s] = isPattern ? row.opt2FileExtensie.toStdU16String() : dao::Value();
  fields[u"Opt2MixPunt"_s] = isPattern ? Whole(row.opt2MixPunt) : dao::Value();
  fields[u"OptMeerdereSpots"_s] = Whole(row.optMeerdereSpots);
  fields[u"AantalSpots"_s] = Whole(row.aantalSpots);
  fields[u"MaxAantalSpots"_s] = Whole(row.maxAantalSpots);
  fields[u"ChkRandomizeMeerdereSpots"_s] = Whole(row.chkRandomizeMeerdereSpots);
  fields[u"Opener"_s] = Maybe(row.opener);
  fields[u"Midden"_s] = Maybe(row.midden);
  fields[u"Sluiter"_s] = Maybe(row.sluiter);
  fields[u"Aktief"_s] = Whole(row.aktief);
  fields[u"Locked"_s] = Whole(row.locked);
  return fields;
}

}  // namespace

basis::Row RowOf(const QStringList& fields, const Workstation::Fields& values) {
  basis::Row row;
  for (const QString& field : fields)
    row.push_back(values.value(field));
  return row;
}

void Workstation::Refresh(const QString& serverPath, const QStringList& tables) {
  dao::Database server = dao::OpenDatabase(serverPath);
  for (const dao::TableDef& table : schema::ServerTables()) {
    if (!tables.isEmpty() && !tables.contains(table.name)) continue;
    QStringList fields;
    const QList<basis::Row> rows = basis::RowsOf(server.OpenRecordset(u"SELECT * FROM "_s + table.name), fields);
    if (table.name == kLinks) {
      links_.clear();
      for (const basis::Row& row : rows)
        links_[*NumberOf(row[0])][*NumberOf(row[1])] = *NumberOf(row[2]);
      continue;
    }
    fields_[table.name] = fields;
    tables_[table.name].clear();
    for (const basis::Row& row : rows) {
      Fields values;
      for (qsizetype i = 0; i < fields.size(); ++i)
        values[fields[i]] = row[static_cast<std::size_t>(i)];
      tables_[table.name][*NumberOf(values[u"ID"_s])] = values;
    }
  }
}

qint32 Workstation::NewID(const QString& table) const {
  const Rows rows = tables_[table];
  return rows.isEmpty() ? 1 : static_cast<qint32>(rows.lastKey()) + 1;
}

QList<qint32> Workstation::SpotsOf(qint32 item) const {
  QList<qint32> spots;
  for (const qint64 spot : links_.value(item))
    spots += static_cast<qint32>(spot);
  return spots;
}

QString Workstation::Fingerprint(const QString& table, qint64 id) const {
  const auto row = tables_[table].constFind(id);
  return row == tables_[table].constEnd() ? QString() : basis::Fingerprint(RowOf(fields_[table], *row));
}

void Workstation::Refer(basis::Entry& entry, const QString& table, qint64 id) const {
  for (const basis::Reference& reference : entry.references) {
    if (reference.table == table && reference.id == id) return;
  }
  entry.references.append({table, id, Fingerprint(table, id)});
}

void Workstation::ReferJingles(basis::Entry& entry) const {
  for (const QList<basis::Row>* rows : {&entry.before, &entry.after}) {
    for (const basis::Row& row : *rows) {
      for (const QString& field : {u"Opener"_s, u"Midden"_s, u"Sluiter"_s}) {
        const auto number = NumberOf(row[static_cast<std::size_t>(entry.fields.indexOf(field))]);
        if (number) Refer(entry, kJingles, *number);
      }
    }
  }
}

void Workstation::Change(const QString& statement, const QString& table, qint64 id,
                         const std::optional<Fields>& after) {
  Logged logged{statement, {table, u"ID"_s, id, fields_[table], {}, {}, {}}};
  if (tables_[table].contains(id)) logged.entry.before.append(RowOf(fields_[table], tables_[table][id]));
  if (after) {
    tables_[table][id] = *after;
    logged.entry.after.append(RowOf(fields_[table], *after));
  } else {
    tables_[table].remove(id);
  }
  if (table == kItems) ReferJingles(logged.entry);
  log_ += logged;
}

void Workstation::InsertSpot(const ItemSpotRow& row) {
  Fields fields = Over({}, row);
  fields[u"AantalGedraaid"_s] = Whole(0);
  Change(statements::InsertItemSpot(row, kSpots), kSpots, row.id, fields);
}

void Workstation::UpdateSpot(const ItemSpotRow& row) {
  Change(statements::UpdateItemSpot(row, kSpots), kSpots, row.id, Over(tables_[kSpots][row.id], row));
}

void Workstation::SetAktief(const QString& table, qint32 id, qint32 aktief) {
  Fields fields = tables_[table][id];
  fields[u"Aktief"_s] = Whole(aktief);
  Change(statements::SetAktief(id, aktief, table), table, id, fields);
}

void Workstation::ResetPlayCount(qint32 spot) {
  Fields fields = tables_[kSpots][spot];
  fields[u"AantalGedraaid"_s] = Whole(0);
  Change(statements::ResetAantalGedraaid(spot, kSpots), kSpots, spot, fields);
}

void Workstation::DeleteSpot(qint32 id) {
  Change(statements::Delete(id, kSpots, u"tblItemSpots.ID"_s), kSpots, id, std::nullopt);
}

void Workstation::InsertJingle(const ItemPingleRow& row) {
  Change(statements::InsertItemPingle(row, kJingles), kJingles, row.id, Over({}, row));
}

void Workstation::UpdateJingle(const ItemPingleRow& row) {
  Change(statements::UpdateItemPingle(row, kJingles), kJingles, row.id, Over(tables_[kJingles][row.id], row));
}

// Required: never logged.
void Workstation::DeleteJingle(qint32 id) {
  tables_[kJingles].remove(id);
}

void Workstation::SetLinks(qint32 item, const QList<qint32>& spots) {
  const QStringList fields{u"ItemID"_s, u"ItemSpotOrder"_s, u"ItemSpotID"_s};
  Logged clear{statements::Delete(item, u"tblCopie_ItemsItemSpots"_s, u"tblCopie_ItemsItemSpots.ItemID"_s),
               {kLinks, u"ItemID"_s, item, fields, {}, {}, {}}};
  Refer(clear.entry, kItems, item);
  const QMap<qint64, qint64> old = links_.take(item);
  for (auto link = old.begin(); link != old.end(); ++link) {
    clear.entry.before.append(basis::Row{Whole(item), Whole(link.key()), Whole(link.value())});
    Refer(clear.entry, kSpots, link.value());
  }
  log_ += clear;
  for (qsizetype i = 0; i < spots.size(); ++i) {
    const ItemsItemSpotsRow row{item, static_cast<qint32>(i) + 1, spots[i]};
    Logged insert{statements::InsertLink(row, kLinks), {kLinks, u"ItemID"_s, item, fields, {}, {}, {}}};
    insert.entry.after.append(basis::Row{Whole(item), Whole(row.itemSpotOrder), Whole(row.itemSpotID)});
    Refer(insert.entry, kItems, item);
    Refer(insert.entry, kSpots, row.itemSpotID);
    links_[item][row.itemSpotOrder] = row.itemSpotID;
    log_ += insert;
  }
}

void Workstation::InsertItem(const ItemRow& row, const QList<qint32>& spots) {
  Change(statements::InsertItem(row, kItems), kItems, row.id, Over({}, row));
  SetLinks(row.id, spots);
}

void Workstation::UpdateItem(const ItemRow& row, const QList<qint32>& spots) {
  Change(statements::UpdateItem(row, kItems), kItems, row.id, Over(tables_[kItems][row.id], row));
  SetLinks(row.id, spots);
}

void Workstation::DeleteItem(qint32 id) {
  SetLinks(id, {});
  Change(statements::Delete(id, u"tblCopie_Items"_s, u"tblCopie_Items.ID"_s), kItems, id, std::nullopt);
}

ItemSpotRow Workstation::Spot(qint32 id) const {
  const Fields fields = tables_[kSpots][id];
  return {id,
          TextOf(fields[u"Path"_s]),
          TextOf(fields[u"Naam"_s]),
          NumberOf(fields[u"LengteSec"_s]),
          NumberOf(fields[u"StartPunt"_s]),
          NumberOf(fields[u"Mixpunt"_s]),
          NumberOf(fields[u"StartDatum"_s]),
          NumberOf(fields[u"StartUur"_s]),
          NumberOf(fields[u"EindDatum"_s]),
          NumberOf(fields[u"EindUur"_s]),
          NumberOf(fields[u"Aktief"_s]).value_or(0)};
}

ItemPingleRow Workstation::Jingle(qint32 id) const {
  const Fields fields = tables_[kJingles][id];
  return {id,
          TextOf(fields[u"Path"_s]),
          TextOf(fields[u"Naam"_s]),
          NumberOf(fields[u"LengteSec"_s]),
          NumberOf(fields[u"StartPunt"_s]),
          NumberOf(fields[u"Mixpunt"_s]),
          NumberOf(fields[u"Aktief"_s]).value_or(0)};
}

ItemRow Workstation::Item(qint32 id) const {
  const Fields fields = tables_[kItems][id];
  const auto number = [&](const QString& field) { return NumberOf(fields[field]).value_or(0); };
  ItemRow row;
  row.id = id;
  row.naam = TextOf(fields[u"Naam"_s]);
  row.aktief = number(u"Aktief"_s);
  row.locked = number(u"Locked"_s);
  row.itemSpotsOptID = number(u"ItemSpotsOptID"_s);
  row.optMeerdereSpots = number(u"OptMeerdereSpots"_s);
  row.aantalSpots = number(u"AantalSpots"_s);
  row.maxAantalSpots = number(u"MaxAantalSpots"_s);
  row.chkRandomizeMeerdereSpots = number(u"ChkRandomizeMeerdereSpots"_s);
  row.opt2Directory = TextOf(fields[u"Opt2Directory"_s]);
  row.opt2VastNaamGedeelte = TextOf(fields[u"Opt2VastNaamGedeelte"_s]);
  row.opt2VariabelNaamGedeelte = number(u"Opt2VariabelNaamGedeelte"_s);
  row.opt2FormatGedeelte = TextOf(fields[u"Opt2FormatGedeelte"_s]);
  row.opt2Eerstedagvanweek = number(u"Opt2Eerstedagvanweek"_s);
  row.opt2FileExtensie = TextOf(fields[u"Opt2FileExtensie"_s]);
  row.opt2MixPunt = number(u"Opt2MixPunt"_s);
  row.opener = NumberOf(fields[u"Opener"_s]);
  row.midden = NumberOf(fields[u"Midden"_s]);
  row.sluiter = NumberOf(fields[u"Sluiter"_s]);
  return row;
}

QString Workstation::Export(bool withBasis) {
  if (log_.isEmpty()) return {};
  QByteArray content;
  for (const Logged& logged : std::as_const(log_))
    content += runtime::ToCodePage(statements::LogText(logged.statement)) + ";\r\n";
  // Every workstation's first export has the same name, and so on.
  const QDateTime moment = QDateTime(QDate(2026, 11, 22), QTime(8, 0)).addSecs(60 * ++exports_);
  QString path = folder_ + u'/' + moment.toString(u"yyyyMMddHHmmss"_s) + u".tql";
  Write(path, content);
  if (withBasis) {
    QByteArray lines = basis::HeaderLine(
        {QUuid::createUuid().toString(QUuid::WithoutBraces), ContentDigest::Of(content), content.size(), name_});
    for (const Logged& logged : std::as_const(log_))
      lines += basis::EntryLine(logged.entry);
    Write(basis::PathOf(path), lines + basis::LastLine(log_.size()));
  }
  log_.clear();
  return path;
}
