// SPDX-License-Identifier: MIT
#include "data/forms/EditorForm.h"

#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/MessageNumbers.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "data/forms/SavedRecords.h"
#include "platform/dao/Database.h"
#include "platform/dao/SqlText.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void EditorForm::Form_Load() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    ReadSelectedID();
    InitForm();
    // Before FillForm: a change between the two is asked about, not lost.
    unreadReason_ = isNew_ ? QString() : ReadStored();
    FillForm();
    InitControls();
    InitCommands();
    Loaded();
  });
}

void EditorForm::ReadSelectedID() {
  isNew_ = !runtime::IsNumeric(global.gstrSelectedID);
  id_ = isNew_ ? 0 : runtime::ToLong(global.gstrSelectedID);
}

void EditorForm::MarkLoaded() {
  isDirty_ = false;
  loaded_ = true;
}

// Shows no error: FillForm, which reads the same record, shows its own.
QString EditorForm::ReadStored() {
  stored_.clear();
  try {
    stored_ = ReadStoredValues();
    return {};
  } catch (const runtime::Error& error) {
    return error.Description();
  }
}

bool EditorForm::MayUpdate() {
  StoredValues now = ReadStoredValues();
  switch (AskWhenChanged(stored_, now)) {
    case ChangedRecord::Theirs:
      stored_ = std::move(now);
      Refill();
      return false;
    case ChangedRecord::Undecided:
      return false;
    default:
      return true;
  }
}

void EditorForm::Refill() {
  EmptyFields();
  FillForm();
  InitControls();
  InitCommands();
  isDirty_ = false;
  refilled_ = true;
}

void EditorForm::RequireLoaded() const {
  if (!isNew_ && !(loaded_ && complete_)) {
    throw runtime::Error(u"Dit record kon bij het openen niet in zijn geheel gelezen worden. Er is niets bewaard."_s);
  }
  if (!isNew_ && !unreadReason_.isEmpty()) {
    throw runtime::Error(
        u"Dit record kon bij het openen niet in zijn geheel gelezen worden. Er is niets bewaard. Open het opnieuw.\n%1"_s
            .arg(unreadReason_));
  }
}

std::optional<bool> EditorForm::WriteRecord(const QString& databasePath, const QString& table,
                                            const std::function<bool(qint32 id)>& write) {
  if (!isNew_ && !MayUpdate()) return std::nullopt;
  const std::optional<qint32> id = isNew_ ? GetNewIDIfAny(table, table + u".ID", databasePath) : id_;
  if (!id) return std::nullopt;
  const bool succeeded = write(*id);
  if (!WasExecuted()) return std::nullopt;
  id_ = *id;
  isNew_ = false;
  written_ = true;
  NoteSavedRecord(id_);
  return succeeded;
}

bool EditorForm::Accept(const std::optional<Refusal>& refusal) {
  if (!refusal) return true;
  ShowAppMessage(refusal->message, refusal->value1, refusal->value2);
  if (!refusal->control.isEmpty()) findChild<QWidget*>(refusal->control)->setFocus();
  return false;
}

// A form that stays open after a failure is compared with what it has written; where that cannot be read now, the next
// save compares nothing: it must complete what this one began.
void EditorForm::Save() {
  written_ = refilled_ = false;
  Opslaan();
  if (written_ && isDirty_) ReadStored();
}

bool EditorForm::IsFormDirty() {
  return Trapped(__func__, true, [&] {
    if (!isDirty_) return false;
    refilled_ = false;
    const int answer = ShowAppMessage(message::kSaveChanges);
    if (answer == kAnswerNone) return true;  // the question could not be shown: keep the user's input
    if (answer != kAnswerYes) {
      isDirty_ = false;
    } else if (OpslaanProceed()) {
      Save();
    }
    return isDirty_ || refilled_;
  });
}

void EditorForm::SaveAndClose() {
  refilled_ = false;
  if (OpslaanProceed()) {
    Save();
  } else {
    isDirty_ = true;
  }
  if (!isDirty_ && !refilled_) Unload();
}

void EditorForm::CancelAndClose() {
  if (!IsFormDirty()) Unload();
}

namespace {

QString QueryByName(const QString& table, const QString& field, const QString& naam) {
  return u"SELECT "_s + table + u'.' + field + u" From " + table + u" WHERE UCase(" + table + u".Naam) =  " + u'"' +
         dao::UCase(naam) + u'"';
}

// Stored names keep their apostrophes, so the cleaned name does not match them.
bool ExistsAsTyped(dao::Database& database, const QString& table, const QString& naam, bool isNew, qint32 id) {
  dao::Recordset rows = database.OpenRecordset(QueryByName(table, u"ID"_s, naam));
  const bool found = !rows.Eof();
  for (; !rows.Eof(); rows.MoveNext()) {
    if (!isNew && rows.Field(u"ID"_s).toInt() == id) return false;  // the record keeps its name
  }
  return found;
}

}  // namespace

bool NameExists(const QString& databasePath, const QString& table, const QString& naam, bool isNew, qint32 id) {
  const QString cleaned = RemReservedChr(naam);
  QString query = QueryByName(table, u"Naam"_s, cleaned);
  if (!isNew) query += u" AND NOT "_s + table + u".ID = " + QString::number(id);
  dao::Database database = dao::OpenDatabase(databasePath);
  const dao::Recordset rows = database.OpenRecordset(query);
  if (!(rows.Bof() && rows.Eof())) return true;
  const QString typed = runtime::TrimBlanks(naam);
  // A double quote would end the literal in the query; such a name is never stored.
  if (typed == cleaned || typed.contains(u'"')) return false;
  return ExistsAsTyped(database, table, typed, isNew, id);
}
