// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <utility>
#include <vector>

inline const QString kPlayCount = QStringLiteral("AantalGedraaid");
inline const QString kDeletedRow = QStringLiteral("deleted");

// A record as it is meant: the fields that the days change, and the spots of an item by their names.
struct Meant {
  QMap<QString, QString> fields;
  QStringList list;
  // All that the row has on the workstation, with its numbers: a reference may be the same number and another record
  // after the copies were taken again.
  QString row;

  bool operator==(const Meant& other) const { return fields == other.fields && list == other.list; }
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

  // A spot was aired once more.
  void Air(const QString& record) {
    QString& count = records_[record].fields[kPlayCount];
    count = QString::number(count.toInt() + 1);
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
    auto waiting = waiting_.lower_bound({source, record});
    const auto end = waiting_.upper_bound({source, record});
    while (waiting != end && waiting->second != operation.before->row)
      ++waiting;
    if (waiting != end) {
      if (operation.after) {
        waiting->second = operation.after->row;
      } else if (!records_.contains(record)) {
        waiting_.erase(waiting);
      } else {
        waiting->second = kDeletedRow;
      }
      return;
    }
    const auto there = records_.find(record);
    if (!operation.after) {
      if (there == records_.end()) return;
      const bool isSame = WithoutCount(there->second.fields) == WithoutCount(operation.before->fields) &&
                          (!operation.hasList || there->second.list == operation.before->list);
      if (isSame) {
        records_.erase(there);
      } else {
        waiting_.insert({{source, record}, kDeletedRow});
      }
      return;
    }
    if (there == records_.end()) {
      waiting_.insert({{source, record}, operation.after->row});
      return;
    }
    Meant merged = there->second;
    if (!Merge(operation, merged)) {
      waiting_.insert({{source, record}, operation.after->row});
      return;
    }
    there->second = merged;
  }

  static QMap<QString, QString> WithoutCount(QMap<QString, QString> fields) {
    fields.remove(kPlayCount);
    return fields;
  }

  static bool Merge(const Operation& operation, Meant& merged) {
    for (auto field = merged.fields.begin(); field != merged.fields.end(); ++field) {
      const QString before = operation.before->fields[field.key()];
      const QString after = operation.after->fields[field.key()];
      if (before == after || field.value() == after) continue;
      // A reset of the play count is carried out whatever was aired meanwhile.
      if (field.value() != before && field.key() != kPlayCount) return false;
      field.value() = after;
    }
    if (!operation.hasList || operation.before->list == operation.after->list || merged.list == operation.after->list)
      return true;
    if (merged.list != operation.before->list) return false;
    merged.list = operation.after->list;
    return true;
  }

  std::map<QString, Meant> records_;
  std::multimap<std::pair<QString, QString>, QString> waiting_;  // source and record: its row there
};
