// SPDX-License-Identifier: MIT
#include "export/apply/Run.h"

#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

constexpr std::size_t kBetweenProgress = 200;  // statements

QString MomentText(const QDateTime& moment) {
  return moment.toString(u"dd-MM-yyyy HH:mm:ss"_s);
}

}  // namespace

Run::Run(dao::StatementTransaction& transaction, const ExportFile& file, const Options& options)
    : transaction_(transaction), file_(file), options_(options), target_(transaction) {}

Result Run::Do() {
  MakeLedgerTables(transaction_);
  const QList<Processed> ledger = ReadLedger(transaction_);
  if (const auto processed = FindProcessed(ledger, file_, options_.source)) return DoneBefore(file_, *processed);
  RequireOrder(ledger);
  numbers_.emplace(transaction_, options_.source);
  for (Conflict& conflict : ReadConflicts(transaction_, false)) {
    if (conflict.source.compare(options_.source, Qt::CaseInsensitive) == 0) conflicts_ += std::move(conflict);
  }
  changedConflicts_.resize(static_cast<std::size_t>(conflicts_.size()));
  fileID_ = ledger.isEmpty() ? 1 : ledger.last().id + 1;
  for (const Table table : {Table::Items, Table::Spots, Table::Jingles}) {
    seen_[At(table)] = target_.Highest(table);
    for (const Processed& row : ledger)
      seen_[At(table)] = std::max(seen_[At(table)], row.highest[At(table)]);
  }
  highest_ = seen_;
  for (const ExportStatement& statement : file_.statements) {
    if (statement.verb == Verb::Insert && statement.table != Table::Links)
      wanted_[At(statement.table)] = std::max(wanted_[At(statement.table)], statement.key);
  }
  result_.path = file_.path;
  result_.hasBasis = file_.basis.has_value();
  result_.statements = static_cast<int>(file_.statements.size());
  result_.processed = runtime::Now();
  result_.processedName = file_.name;
  if (!result_.hasBasis && result_.statements > 0) {
    Note(0, u"dit bestand heeft geen basis: waar ook op de server iets gewijzigd is, wint dit bestand"_s);
  }
  std::size_t reported = 0;
  for (std::size_t place = 0; place < file_.statements.size();) {
    Unit unit;
    place += TakeUnit(place, unit);
    Handle(unit);
    if (!options_.progress || place < reported + kBetweenProgress) continue;
    reported = place;
    options_.progress(static_cast<int>(place), result_.statements);
  }
  numbers_->Store();
  for (std::size_t i = 0; i < changedConflicts_.size(); ++i) {
    if (changedConflicts_[i]) StoreConflict(transaction_, conflicts_[static_cast<qsizetype>(i)]);
  }
  AddToLedger(transaction_, {fileID_, file_.basis ? file_.basis->exportID : QString(), options_.source, file_.name,
                             file_.stamp, QString::fromLatin1(file_.digest), result_.processed, options_.who,
                             result_.statements, result_.Summary(), highest_});
  return result_;
}

void Run::RequireOrder(const QList<Processed>& ledger) const {
  if (options_.outOfOrder) return;
  if (file_.stamp.isEmpty()) {
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: de naam van een export is jjjjmmdduummss.tql, en daaruit "
        "blijkt de volgorde. Geef het zijn naam terug, of kies ervoor om het buiten de volgorde te "
        "verwerken."_s.arg(file_.path));
  }
  for (const Processed& row : ledger) {
    if (row.source.compare(options_.source, Qt::CaseInsensitive) != 0 || row.stamp <= file_.stamp) continue;
    throw runtime::Error(
        u"Het bestand '%1' is niet verwerkt: van '%2' is '%3' al verwerkt (%4), en dat is van later. "
        "Kies ervoor om het buiten de volgorde te verwerken als dat zo moet."_s.arg(file_.path, row.source, row.name,
                                                                                    MomentText(row.moment)));
  }
}

bool Run::IsDeleteOfItem(std::size_t place, qint64 key) const {
  if (place >= file_.statements.size()) return false;
  const ExportStatement& statement = file_.statements[place];
  return statement.verb == Verb::Delete && statement.table == Table::Items && statement.key == key;
}

// The statements from `first` on that belong together; how many.
std::size_t Run::TakeUnit(std::size_t first, Unit& unit) const {
  const auto& statements = file_.statements;
  const auto isLink = [&](std::size_t place, Verb verb) {
    return place < statements.size() && statements[place].table == Table::Links && statements[place].verb == verb &&
           statements[place].key == statements[first].key;
  };
  unit.table = statements[first].table == Table::Links ? Table::Items : statements[first].table;
  unit.key = statements[first].key;
  std::size_t place = first;
  if (statements[first].table != Table::Links) unit.record = place++;
  if (unit.table != Table::Items || IsDeleteOfItem(first, unit.key)) return place - first;
  const bool endsInDelete = isLink(place, Verb::Delete) && IsDeleteOfItem(place + 1, unit.key);
  if (endsInDelete && unit.record) return place - first;  // a cleanup follows
  if (isLink(place, Verb::Delete)) unit.clear = place++;
  if (endsInDelete) {
    unit.record = place++;
    return place - first;
  }
  while ((unit.clear || !unit.record) && isLink(place, Verb::Insert))
    unit.links.push_back(place++);
  return place - first;
}

void Run::Handle(const Unit& unit) {
  if (!unit.record) return ChangeList(unit);
  switch (file_.statements[*unit.record].verb) {
    case Verb::Insert:
      return InsertRecord(unit);
    case Verb::Update:
      return UpdateRecord(unit);
    case Verb::Delete:
      return DeleteRecord(unit);
  }
}

QString Run::Shown(const Change& change) const {
  const std::optional<Row>& row = change.after ? change.after : change.base;
  return RecordText(change.table, change.key, row ? target_.NaamOf(change.table, *row) : QString());
}

void Run::Add(What what, const Change& change, const QString& text) {
  const std::optional<Row>& row = change.after ? change.after : change.base;
  result_.lines +=
      {what, change.line, change.table, change.key, change.number, row ? target_.NaamOf(change.table, *row) : QString(),
       text};
}

void Run::Note(int line, const QString& text) {
  result_.lines += {What::Note, line, Table::Items, 0, 0, {}, text};
}

}  // namespace apply
