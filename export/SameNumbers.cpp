// SPDX-License-Identifier: MIT
#include "export/SameNumbers.h"

using namespace Qt::StringLiterals;

namespace {

QString KindOf(const QString& table) {
  if (table == u"tblItems"_s) return u"item"_s;
  return table == u"tblItemSpots"_s ? u"item-spot"_s : u"item-pingle"_s;
}

QString NameIn(const basis::Entry& entry) {
  const qsizetype field = entry.fields.indexOf(u"Naam"_s, 0);
  if (field < 0) return {};
  const auto* name = std::get_if<std::u16string>(&entry.after.first()[static_cast<std::size_t>(field)]);
  return name != nullptr ? QString::fromStdU16String(*name) : QString();
}

}  // namespace

void SameNumbers::Add(const std::optional<basis::Entry>& entry) {
  if (!entry || entry->keyField != u"ID"_s) return;  // links have no number of their own
  const QString record = KindOf(entry->table) + u' ' + QString::number(entry->key);
  if (entry->after.isEmpty()) {
    made_.remove(record);  // its number is free again
  } else if (entry->before.isEmpty()) {
    QStringList& names = made_[record];
    names += NameIn(*entry);
    if (names.size() == 2) order_ += record;
  }
}

QStringList SameNumbers::Found() const {
  QStringList found;
  for (const QString& record : order_) {
    const QStringList names = made_.value(record);
    if (names.size() > 1) found += record + u" ("_s + names.join(u", "_s) + u')';
  }
  found.removeDuplicates();
  return found;
}

QString SameNumbersWarning(const QStringList& found, const QString& path) {
  if (found.isEmpty()) return {};
  const QString text =
      u"In '%1' hebben verschillende nieuwe records hetzelfde nummer: %2. Exports verwerken, of spotrooster-db apply, "
      u"maakt er aparte records van; een programma dat het bestand gewoon uitvoert weigert het tweede."_s;
  return text.arg(path, found.join(u"; "_s));
}
