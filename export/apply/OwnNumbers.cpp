// SPDX-License-Identifier: MIT
#include "export/apply/OwnNumbers.h"

#include "export/apply/Ledger.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace apply {
namespace {

// The fields of tblVerwerktNummers.
enum NumberField : std::size_t { kID, kBron, kTabel, kNummer, kNummerServer, kVingerafdruk };

QString TextOf(const dao::Value& value) {
  const auto* text = std::get_if<std::u16string>(&value);
  return text != nullptr ? QString::fromStdU16String(*text) : QString();
}

qint64 WholeOf(const dao::Value& value) {
  const auto* number = std::get_if<std::int64_t>(&value);
  return number != nullptr ? *number : 0;
}

std::optional<Table> TableOf(const QString& name) {
  for (const Table table : {Table::Items, Table::Spots, Table::Jingles}) {
    if (NameOf(table) == name) return table;
  }
  return std::nullopt;
}

}  // namespace

// Rows come in the order in which they were made only by their ID.
OwnNumbers::OwnNumbers(dao::StatementTransaction& transaction, const QString& source)
    : transaction_(transaction), source_(source) {
  auto rows = transaction.All(ledger::kNumbers);
  std::ranges::sort(rows, {}, [](const auto& row) { return WholeOf(row.values[kID]); });
  for (const auto& row : rows) {
    const auto table = TableOf(TextOf(row.values[kTabel]));
    if (!table) continue;
    const qint64 server = WholeOf(row.values[kNummerServer]);
    made_.insert(KeyOf(*table, server));
    if (TextOf(row.values[kBron]).compare(source, Qt::CaseInsensitive) != 0) continue;
    own_[KeyOf(*table, WholeOf(row.values[kNummer]))] =
        Kept{{server, TextOf(row.values[kVingerafdruk])}, row.id, false};
  }
}

const OwnNumbers::Own* OwnNumbers::Find(Table table, qint64 number) const {
  const auto own = own_.constFind(KeyOf(table, number));
  return own == own_.constEnd() ? nullptr : &*own;
}

const OwnNumbers::Own* OwnNumbers::FindAs(Table table, qint64 number, const QString& fingerprint) const {
  const Own* own = Find(table, number);
  if (own == nullptr || own->fingerprint.isEmpty() || fingerprint.isEmpty()) return own;
  return own->fingerprint == fingerprint ? own : nullptr;
}

bool OwnNumbers::IsMadeByExport(Table table, qint64 server) const {
  return made_.contains(KeyOf(table, server));
}

void OwnNumbers::Add(Table table, qint64 number, const Own& own) {
  Kept& kept = own_[KeyOf(table, number)];
  if (kept.server != 0 && !kept.row) replaced_.emplace_back(KeyOf(table, number), kept);
  kept = Kept{own, std::nullopt, true};
  made_.insert(KeyOf(table, own.server));
}

void OwnNumbers::SetFingerprint(Table table, qint64 number, const QString& fingerprint) {
  Kept& kept = own_[KeyOf(table, number)];
  kept.fingerprint = fingerprint;
  kept.isChanged = true;
}

void OwnNumbers::Store() {
  qint64 id = transaction_.Highest(ledger::kNumbers, u"ID"_s);
  const auto insert = [&](const Key& key, const Own& own) {
    const std::vector<dao::Value> values{
        std::int64_t{++id},       source_.toStdU16String(), NameOf(static_cast<Table>(key.first)).toStdU16String(),
        std::int64_t{key.second}, std::int64_t{own.server}, own.fingerprint.toStdU16String()};
    transaction_.Insert(ledger::kNumbers, values);
  };
  for (const auto& [key, kept] : replaced_)
    insert(key, kept);
  for (auto kept = own_.begin(); kept != own_.end(); ++kept) {
    if (!kept->isChanged) continue;
    if (kept->row) {
      const std::vector<dao::FieldValue> changes{{kVingerafdruk, kept->fingerprint.toStdU16String()}};
      transaction_.Update(ledger::kNumbers, *kept->row, changes);
    } else {
      insert(kept.key(), *kept);
    }
  }
}

}  // namespace apply
