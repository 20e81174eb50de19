// SPDX-License-Identifier: MIT
// The records that wait for a choice.
#include "data/FieldWords.h"
#include "data/Globals.h"
#include "export/frmExportsVerwerken.h"
#include "export/ui_frmExportsVerwerken.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr int kConflictTab = 1;

QString NameOf(const apply::Conflict& conflict) {
  return apply::RecordText(conflict.table, conflict.number, conflict.Name());
}

}  // namespace

void frmExportsVerwerken::ShowConflicts() {
  ui_->lstBotsingen->Clear();
  for (qsizetype i = 0; i < contents_.conflicts.size(); ++i) {
    const apply::Conflict& conflict = contents_.conflicts[i];
    const int line = ui_->lstBotsingen->AddItem(NameOf(conflict), i);
    controls::LineDetails details;
    details.mark = controls::LineMark::Cross;
    details.tone = controls::LineTone::Wrong;
    details.word = u"van "_s + conflict.source;
    details.toolTip = apply::TextFor(conflict.reason);
    ui_->lstBotsingen->SetDetails(line, details);
  }
  const auto count = contents_.conflicts.size();
  ui_->tabVerwerken->setTabText(kConflictTab, count == 0 ? u"&Botsingen"_s : u"&Botsingen (%1)"_s.arg(count));
  ShowCounts();
  ShowDifferences();
}

void frmExportsVerwerken::ShowDifferences() {
  ui_->tblVelden->setRowCount(0);
  InitCommands();
  const int line = ui_->lstBotsingen->ListIndex();
  ui_->lblReden->setText(line < 0 ? QString() : apply::TextFor(contents_.conflicts[line].reason));
  if (line < 0) return;
  const apply::Conflict& conflict = contents_.conflicts[line];
  const auto cell = [](const QString& text, bool isConflict) {
    auto* item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    item->setToolTip(text);
    if (isConflict) {
      QFont bold = item->font();
      bold.setBold(true);
      item->setFont(bold);
    }
    return item;
  };
  for (const apply::FieldDifference& field : apply::DifferencesOf(conflict)) {
    const int row = ui_->tblVelden->rowCount();
    ui_->tblVelden->insertRow(row);
    ui_->tblVelden->setItem(row, 0, cell(FieldWord(field.field), field.isConflict));
    ui_->tblVelden->setItem(row, 1, cell(field.before, false));
    ui_->tblVelden->setItem(row, 2, cell(conflict.server ? field.server : u"(verwijderd)"_s, field.isConflict));
    ui_->tblVelden->setItem(row, 3, cell(conflict.offline ? field.offline : u"(verwijderd)"_s, field.isConflict));
  }
}

void frmExportsVerwerken::lstBotsingen_Click() {
  Trapped(__func__, [&] { ShowDifferences(); });
}

void frmExportsVerwerken::Settle(apply::Side side) {
  Trapped(__func__, [&] {
    const int line = ui_->lstBotsingen->ListIndex();
    if (line < 0) return;
    {
      const desktop::WaitPointer wait;
      apply::Settle(global.serverDatabasePath, {contents_.conflicts[line].id}, side, qEnvironmentVariable("USER"));
      contents_.conflicts = apply::ReadConflicts(global.serverDatabasePath);
    }
    ShowConflicts();
  });
}
