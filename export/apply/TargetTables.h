// SPDX-License-Identifier: MIT
#pragma once

#include "data/ExportBasis.h"
#include "export/apply/ExportStatements.h"
#include "platform/dao/StatementTransaction.h"

#include <QHash>
#include <QList>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace apply {

// The values of a record in the order of the target table's fields.
using Row = std::vector<dao::Value>;

// The spots of an item: order and number of the spot, by order.
using SpotList = std::vector<std::pair<qint64, qint64>>;

// The catalogue tables of the database that exports are carried out on, within one transaction. Every failure is a
// runtime::Error.
class TargetTables {
 public:
  explicit TargetTables(dao::StatementTransaction& transaction);

  struct Found {
    dao::RowId id = 0;
    Row row;
  };
  std::optional<Found> Find(Table table, qint64 number);
  void Insert(Table table, const Row& row) { transaction_.Insert(NameOf(table), row); }
  void Update(Table table, dao::RowId id, const std::vector<dao::FieldValue>& changes);
  void Delete(Table table, dao::RowId id);
  qint64 Highest(Table table) { return transaction_.Highest(NameOf(table), QStringLiteral("ID")); }

  SpotList SpotsOf(qint64 item);
  void ReplaceSpotsOf(qint64 item, const SpotList& spots);

  const dao::TableDef& Definition(Table table) const { return definitions_[static_cast<std::size_t>(table)]; }
  QStringList FieldNames(Table table) const;
  // The place of a field. Throws runtime::Error when the target does not have it.
  std::size_t Place(Table table, const QString& field) const;
  std::optional<std::size_t> FindPlace(Table table, const QString& field) const;
  // A value as the target stores it in that field.
  dao::Value Converted(Table table, std::size_t place, const dao::Value& value) const;

  // A row of a basis. Fields that the target does not have must be empty; those that only it has are NULL.
  Row RowOf(Table table, const QStringList& fields, const basis::Row& values);
  // A new record of an INSERT; fields without a value are NULL.
  Row RowOf(const ExportStatement& statement) const;
  QString NaamOf(Table table, const Row& row) const;

 private:
  dao::StatementTransaction& transaction_;
  std::array<dao::TableDef, 4> definitions_;
  // By the name as it is defined and by its lower case.
  std::array<QHash<QString, std::size_t>, 4> places_;
  std::array<QStringList, 4> knownFields_;  // of the last basis row
  std::array<std::vector<std::optional<std::size_t>>, 4> knownPlaces_;
};

}  // namespace apply
