// SPDX-License-Identifier: MIT
#include "export/apply/Ledger.h"

#include "platform/dao/Conversion.h"
#include "platform/runtime/Dates.h"

using namespace Qt::StringLiterals;
using dao::FieldDef;
using dao::FieldType;

namespace apply {
namespace {

FieldDef Field(const QString& name, FieldType type, int size = 0) {
  FieldDef field;
  field.name = name;
  field.type = type;
  field.size = size;
  return field;
}

dao::IndexDef Key() {
  dao::IndexDef index;
  index.name = u"PrimaryKey"_s;
  index.fields.append({u"ID"_s, dao::Direction::Ascending});
  index.primary = index.unique = index.required = true;
  return index;
}

QList<Processed> LedgerOf(dao::Recordset rows) {
  QList<Processed> ledger;
  for (; !rows.Eof(); rows.MoveNext()) {
    const auto text = [&](const QString& field) { return rows.Field(field).toString(); };
    const auto number = [&](const QString& field) { return rows.Field(field).toLongLong(); };
    ledger += {number(u"ID"_s),
               text(u"Export"_s),
               text(u"Bron"_s),
               text(u"Bestand"_s),
               text(u"Stempel"_s),
               text(u"Inhoud"_s),
               rows.Field(u"Verwerkt"_s).toDateTime(),
               text(u"Door"_s),
               rows.Field(u"Opdrachten"_s).toInt(),
               text(u"Resultaat"_s),
               {number(u"HoogsteItem"_s), number(u"HoogsteSpot"_s), number(u"HoogsteJingle"_s)}};
  }
  return ledger;
}

QString SelectLedger() {
  return u"SELECT * FROM "_s + ledger::kFiles + u" ORDER BY ID";
}

dao::Value TextValue(const QString& text) {
  return text.isEmpty() ? dao::Value() : dao::Value(text.toStdU16String());
}

}  // namespace

QList<dao::TableDef> ledger::Tables() {
  return {{kFiles,
           {Field(u"ID"_s, FieldType::Long), Field(u"Export"_s, FieldType::Text, 50),
            Field(u"Bron"_s, FieldType::Text, 100), Field(u"Bestand"_s, FieldType::Text, 255),
            Field(u"Stempel"_s, FieldType::Text, 14), Field(u"Inhoud"_s, FieldType::Text, 64),
            Field(u"Verwerkt"_s, FieldType::Date), Field(u"Door"_s, FieldType::Text, 100),
            Field(u"Opdrachten"_s, FieldType::Long), Field(u"Resultaat"_s, FieldType::Text, 255),
            Field(u"HoogsteItem"_s, FieldType::Long), Field(u"HoogsteSpot"_s, FieldType::Long),
            Field(u"HoogsteJingle"_s, FieldType::Long)},
           {Key()}},
          {kNumbers,
           {Field(u"ID"_s, FieldType::Long), Field(u"Bron"_s, FieldType::Text, 100),
            Field(u"Tabel"_s, FieldType::Text, 50), Field(u"Nummer"_s, FieldType::Long),
            Field(u"NummerServer"_s, FieldType::Long), Field(u"Vingerafdruk"_s, FieldType::Text, 32)},
           {Key()}},
          {kConflicts,
           {Field(u"ID"_s, FieldType::Long), Field(u"Verwerkt"_s, FieldType::Long),
            Field(u"Bron"_s, FieldType::Text, 100), Field(u"Tabel"_s, FieldType::Text, 50),
            Field(u"Nummer"_s, FieldType::Long), Field(u"Reden"_s, FieldType::Text, 20),
            Field(u"Versies"_s, FieldType::Memo), Field(u"Keuze"_s, FieldType::Text, 10),
            Field(u"Gekozen"_s, FieldType::Date), Field(u"Door"_s, FieldType::Text, 100)},
           {Key()}}};
}

QList<Processed> ReadLedger(dao::Database database) {
  if (!database.TableNames().contains(ledger::kFiles, Qt::CaseInsensitive)) return {};
  return LedgerOf(database.OpenRecordset(SelectLedger()));
}

QList<Processed> ReadLedger(dao::StatementTransaction& transaction) {
  if (!transaction.HasTable(ledger::kFiles)) return {};
  return LedgerOf(transaction.OpenRecordset(SelectLedger()));
}

// An export without a basis has no number of its own: two with the same content are distinguished by their file names.
std::optional<Processed> FindProcessed(const QList<Processed>& ledger, const ExportFile& file, const QString& source) {
  for (const Processed& row : ledger) {
    if (file.basis && row.exportID == file.basis->exportID) return row;
    const bool hasBoth = file.basis && !row.exportID.isEmpty();
    if (!hasBoth && row.source.compare(source, Qt::CaseInsensitive) == 0 &&
        row.name.compare(file.name, Qt::CaseInsensitive) == 0 && row.digest == QString::fromLatin1(file.digest))
      return row;
  }
  return std::nullopt;
}

Result DoneBefore(const ExportFile& file, const Processed& processed) {
  Result result;
  result.path = file.path;
  result.doneBefore = true;
  result.processed = processed.moment;
  result.processedName = processed.name;
  result.hasBasis = file.basis.has_value();
  result.statements = static_cast<int>(file.statements.size());
  return result;
}

void MakeLedgerTables(dao::StatementTransaction& transaction) {
  for (const dao::TableDef& table : ledger::Tables()) {
    if (!transaction.HasTable(table.name)) transaction.CreateTable(table);
  }
}

void AddToLedger(dao::StatementTransaction& transaction, const Processed& row) {
  const std::vector<dao::Value> values{std::int64_t{row.id},           TextValue(row.exportID),
                                       TextValue(row.source),          TextValue(row.name.left(255)),
                                       TextValue(row.stamp),           TextValue(row.digest),
                                       runtime::DayNumber(row.moment), TextValue(row.who.left(100)),
                                       std::int64_t{row.statements},   TextValue(row.summary.left(255)),
                                       std::int64_t{row.highest[0]},   std::int64_t{row.highest[1]},
                                       std::int64_t{row.highest[2]}};
  transaction.Insert(ledger::kFiles, values);
}

}  // namespace apply
