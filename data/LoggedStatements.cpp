// SPDX-License-Identifier: MIT
#include "data/LoggedStatements.h"

#include "data/OfflineBasis.h"
#include "data/Statements.h"
#include "platform/dao/OrderedRows.h"
#include "platform/dao/Storage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::optional<qint32> NumberIn(const QVariant& field) {
  return field.isNull() ? std::nullopt : std::optional(runtime::ToLong(field));
}

// One reading of the local database, in which log and basis belong together.
class Reading {
 public:
  explicit Reading(const QString& path) : storage_(dao::OpenStorage(path)) {
    turn_ = storage_->Begin(dao::Access::Read);
  }

  void VisitRows(std::optional<qint32> last, const std::function<void(const LogRow&)>& visit) const {
    dao::OrderedRows rows(*storage_, u"tblOfflineLog"_s, {u"ID"_s, u"SqlSyntax"_s});
    while (rows.Next()) {
      const LogRow row{NumberIn(rows.Field(0)), rows.Text(1)};
      if (last && row.id > last) return;
      visit(row);
    }
  }
  dao::Storage& Storage() const { return *storage_; }

 private:
  std::unique_ptr<dao::Storage> storage_;
  std::unique_ptr<dao::Transaction> turn_;
};

// What is kept of the statements in the log, read along with it.
class KeptStatements {
 public:
  explicit KeptStatements(dao::Storage& storage) {
    if (!storage.TableNames().contains(basis::OfflineTableName(), Qt::CaseInsensitive)) return;
    rows_.emplace(storage, basis::OfflineTableName(), QStringList{u"LogID"_s, u"ID"_s, u"SqlSyntax"_s, u"Basis"_s});
    Advance();
  }

  // What a row of the log changed; the rows come in the order of their numbers. The first that has its text counts: a
  // number may have been expected for several statements.
  std::optional<basis::Entry> EntryOf(const LogRow& row) {
    if (!row.id) return std::nullopt;
    TurnTo(*row.id);
    const auto found = std::ranges::find_if(
        kept_, [&](const Kept& one) { return statements::LogText(one.statement) == row.sqlSyntax; });
    if (found == kept_.end()) return std::nullopt;
    try {
      return basis::Decode(found->basis.toUtf8());
    } catch (const runtime::Error&) {
      return std::nullopt;  // as a statement whose rows were not kept
    }
  }

 private:
  struct Kept {
    qint32 id = 0;
    QString statement;
    QString basis;
  };

  void Advance() {
    if (!rows_->Next()) rows_.reset();
  }
  void TurnTo(qint32 logID) {
    if (logID_ == logID) return;
    logID_ = logID;
    kept_.clear();
    for (; rows_; Advance()) {
      const std::optional<qint32> number = NumberIn(rows_->Field(0));
      if (number > logID) break;
      if (number == logID && !rows_->Text(2).isNull())
        kept_.push_back({NumberIn(rows_->Field(1)).value_or(0), rows_->Text(2).toString(), rows_->Text(3).toString()});
    }
    std::ranges::stable_sort(kept_, {}, &Kept::id);
  }

  std::optional<dao::OrderedRows> rows_;  // none after the last
  std::optional<qint32> logID_;           // whose statements kept_ has
  std::vector<Kept> kept_;
};

}  // namespace

void VisitLogRows(const QString& localDatabasePath, std::optional<qint32> last,
                  const std::function<void(const LogRow&)>& visit) {
  Reading(localDatabasePath).VisitRows(last, visit);
}

void VisitLog(const QString& localDatabasePath, std::optional<qint32> last,
              const std::function<void(const LoggedStatement&)>& visit) {
  const Reading reading(localDatabasePath);
  KeptStatements kept(reading.Storage());
  reading.VisitRows(last, [&](const LogRow& row) {
    visit({row.id.value_or(0), runtime::TrimBlanks(row.sqlSyntax).toString(), kept.EntryOf(row)});
  });
}
