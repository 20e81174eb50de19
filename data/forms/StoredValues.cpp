// SPDX-License-Identifier: MIT
#include "data/forms/StoredValues.h"

#include "data/FieldWords.h"
#include "data/Messages.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int kStyleYesNoCancelDefaultCancel = 3 + 32 + 512;  // with the question icon

}  // namespace

StoredValues ValuesOf(const dao::Recordset& row, const QStringList& fields) {
  StoredValues values;
  if (row.Eof()) return values;
  for (const QString& field : fields) {
    const QVariant value = row.Field(field);
    values += {FieldWord(field), value, [field, value] { return ValueWord(field, value); }};
  }
  return values;
}

ChangedRecord AskWhenChanged(const StoredValues& read, const StoredValues& now) {
  QString changes;
  for (qsizetype i = 0; i < read.size() && i < now.size(); ++i) {
    if (read[i].value == now[i].value) continue;
    changes += u"\n%1: was %2, is nu %3"_s.arg(read[i].label, read[i].text(), now[i].text());
  }
  if (changes.isEmpty()) return ChangedRecord::Unchanged;
  const int answer = ShowItemsMessage(
      u"Dit record is intussen op een ander werkstation gewijzigd:\n%1\n\n"
      u"Die wijziging overnemen?\n"
      u"Ja: dit venster toont het record zoals het nu is; wat u hier wijzigde vervalt.\n"
      u"Nee: uw gegevens worden bewaard, ook waar ze die wijziging vervangen.\n"
      u"Annuleren: er wordt niets bewaard en het venster blijft open."_s.arg(changes),
      kStyleYesNoCancelDefaultCancel);
  if (answer == kAnswerYes) return ChangedRecord::Theirs;
  return answer == kAnswerNo ? ChangedRecord::Mine : ChangedRecord::Undecided;
}
