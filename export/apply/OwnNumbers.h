// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/CatalogueTables.h"
#include "platform/dao/StatementTransaction.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <utility>

namespace apply {

// The numbers in the shared database of the records that one workstation made. The same number can mean the
// workstation's new record or a server record, because closing a list refreshes the copy and the number is reused; the
// fingerprint of the row after the workstation's last statement on it tells which. Stored in tblVerwerktNummers.
class OwnNumbers {
 public:
  struct Own {
    qint64 server = 0;
    QString fingerprint;  // empty: not known; kDeleted: the workstation deleted it
  };
  static inline const QString kDeleted = QStringLiteral("weg");

  OwnNumbers(dao::StatementTransaction& transaction, const QString& source);

  // The workstation's own record of that number, made by its last INSERT.
  const Own* Find(Table table, qint64 number) const;
  // The own record when `fingerprint` is that of its row, or one of the two is empty.
  const Own* FindAs(Table table, qint64 number, const QString& fingerprint) const;
  // Whether the record of that number in the shared database was made by an export, of any workstation.
  bool IsMadeByExport(Table table, qint64 server) const;

  void Add(Table table, qint64 number, const Own& own);
  void SetFingerprint(Table table, qint64 number, const QString& fingerprint);

  // Writes what changed.
  void Store();

 private:
  using Key = std::pair<int, qint64>;
  struct Kept : Own {
    std::optional<dao::RowId> row;
    bool isChanged = false;
  };
  static Key KeyOf(Table table, qint64 number) { return {static_cast<int>(table), number}; }

  dao::StatementTransaction& transaction_;
  QString source_;
  QHash<Key, Kept> own_;
  QSet<Key> made_;
  std::vector<std::pair<Key, Kept>> replaced_;  // new in this transaction, and replaced by another of that number
};

}  // namespace apply
