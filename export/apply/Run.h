// SPDX-License-Identifier: MIT
#pragma once

#include "export/apply/Apply.h"
#include "export/apply/Conflicts.h"
#include "export/apply/Ledger.h"
#include "export/apply/OwnNumbers.h"
#include "export/apply/Report.h"
#include "export/apply/TargetTables.h"

#include <array>
#include <optional>
#include <vector>

namespace apply {

// Carries out one export within a transaction, its row in the ledger included; the caller commits. One object, one use.
class Run {
 public:
  Run(dao::StatementTransaction& transaction, const ExportFile& file, const Options& options);

  Result Do();

 private:
  // Statements that belong together: one on a record, and for an item those on its list of spots. They are carried out
  // together or wait together, so that no block is half changed.
  struct Unit {
    Table table = Table::Items;
    qint64 key = 0;
    std::optional<std::size_t> record;  // all three: places in the file
    std::optional<std::size_t> clear;
    std::vector<std::size_t> links;

    bool HasList() const { return clear || !links.empty(); }
  };
  // What the workstation did with a record, in numbers of the target.
  struct Change {
    Table table = Table::Items;
    qint64 key = 0;     // on the workstation
    qint64 number = 0;  // in the target
    int line = 0;
    bool deletes = false;
    const basis::Entry* entry = nullptr;
    std::optional<Row> base;
    std::optional<Row> after;
    QStringList fields;  // that `after` has; all when there is a basis
    bool hasList = false;
    std::optional<SpotList> baseList;
    SpotList list;
    QString before;       // fingerprints of the workstation's rows
    QString fingerprint;  // after
  };
  // What is to be written for it, or why not.
  struct Merge {
    std::vector<dao::FieldValue> fields;
    bool replacesList = false;
    std::optional<Reason> conflict;
  };

  void RequireOrder(const QList<Processed>& ledger) const;
  std::size_t TakeUnit(std::size_t first, Unit& unit) const;
  bool IsDeleteOfItem(std::size_t place, qint64 key) const;
  void Handle(const Unit& unit);

  void InsertRecord(const Unit& unit);
  void UpdateRecord(const Unit& unit);
  void DeleteRecord(const Unit& unit);
  void ChangeList(const Unit& unit);

  Change ChangeOf(const Unit& unit);
  // Rows and fields of the change, from its basis (exact rows) or from the statement (`after` has only its fields).
  // Returns the record as the workstation's own, if it made it.
  const OwnNumbers::Own* TakeBasis(const Unit& unit, const ExportStatement& statement, Change& change);
  const OwnNumbers::Own* TakeStatement(const Unit& unit, const ExportStatement& statement, Change& change);
  void TakeList(const Unit& unit, Change& change);
  Merge MergeOf(const Change& change, const Row& found, const SpotList& list) const;
  void MergeFields(const Change& change, const Row& found, Merge& merge) const;
  bool IsOtherRecord(const Change& change, const Row& found) const;
  bool SameRecord(Table table, const Row& left, const Row& right) const;

  Row RowOfStatement(std::size_t place);
  QString WithApostrophes(const ExportStatement& statement, const QString& field, const QString& text);
  void FollowReferences(Row& row, const basis::Entry* entry);
  qint64 ServerNumber(Table table, qint64 number, const basis::Entry* entry) const;
  qint64 NextNumber(Table table);

  Conflict* WaitingOn(Change& change);
  void Extend(Conflict& conflict, const Change& change);
  void Wait(const Change& change, Reason reason, const std::optional<Row>& server, const SpotList& serverList);

  void Add(What what, const Change& change, const QString& text);
  void Note(int line, const QString& text);
  QString Shown(const Change& change) const;

  dao::StatementTransaction& transaction_;
  const ExportFile& file_;
  const Options& options_;
  TargetTables target_;
  std::optional<OwnNumbers> numbers_;
  QList<Conflict> conflicts_;  // of this workstation that wait
  std::vector<bool> changedConflicts_;
  qint64 fileID_ = 0;
  std::array<qint64, 3> seen_{};     // highest numbers that were ever seen before this file
  std::array<qint64, 3> highest_{};  // so far
  std::array<qint64, 3> wanted_{};   // by the inserts of this file
  QSet<std::pair<int, qint64>> insertedHere_;
  Result result_;
};

}  // namespace apply
