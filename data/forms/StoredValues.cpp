// SPDX-License-Identifier: MIT
#include "data/forms/StoredValues.h"

#include "data/Messages.h"
#include "platform/runtime/Numbers.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

constexpr int kStyleYesNoCancelDefaultCancel = 3 + 32 + 512;  // with the question icon

bool IsYesNo(const QString& field) {
  return field == u"Aktief"_s || field == u"Locked"_s || field == u"OptMeerdereSpots"_s || field.startsWith(u"Chk"_s);
}

QString TextOf(const QString& field, const QVariant& value) {
  if (value.isNull() || value.toString().isEmpty()) return u"leeg"_s;
  if (value.typeId() == QMetaType::QDateTime) return value.toDateTime().toString(u"dd-MM-yyyy"_s);
  if (IsYesNo(field)) return value.toInt() != 0 ? u"ja"_s : u"nee"_s;
  return value.toString();
}

}  // namespace

StoredValues ValuesOf(const dao::Recordset& row, const QList<LabelledField>& fields) {
  StoredValues values;
  if (row.Eof()) return values;
  for (const auto& [field, label] : fields) {
    const QVariant value = row.Field(field);
    values += {label, value, [field = field, value] { return TextOf(field, value); }};
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
      u"Dit record is intussen op een andere werkplek gewijzigd:\n%1\n\n"
      u"Die wijziging overnemen?\n"
      u"Ja: dit venster toont het record zoals het nu is; wat u hier wijzigde vervalt.\n"
      u"Nee: uw gegevens worden bewaard, ook waar ze die wijziging vervangen.\n"
      u"Annuleren: er wordt niets bewaard en het venster blijft open."_s.arg(changes),
      kStyleYesNoCancelDefaultCancel);
  if (answer == kAnswerYes) return ChangedRecord::Theirs;
  return answer == kAnswerNo ? ChangedRecord::Mine : ChangedRecord::Undecided;
}
