// SPDX-License-Identifier: MIT
#include "export/frmPlanningExporteren.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/MessageNumbers.h"
#include "data/Messages.h"
#include "data/WaitingChanges.h"
#include "export/ExportChecks.h"
#include "export/InterruptedExport.h"
#include "export/OfflineLogExport.h"
#include "export/SameNumbers.h"
#include "export/ui_frmPlanningExporteren.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/MessageBox.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// The caption while an export runs; it also marks that an export is running.
QString Interrupt() {
  return u"Onderbreken"_s;
}

}  // namespace

frmPlanningExporteren::frmPlanningExporteren(QWidget* owner)
    : Form(owner), ui_(std::make_unique<Ui::frmPlanningExporteren>()) {
  ui_->setupUi(this);
  ui_->cmdOk->setIcon(desktop::Icon(u"exporteren"_s));
  ConnectEvents();
  constexpr QSize kOpeningSize(560, 300);
  resize(kOpeningSize);
}

frmPlanningExporteren::~frmPlanningExporteren() = default;

void frmPlanningExporteren::ConnectEvents() {
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmPlanningExporteren::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmPlanningExporteren::cmdAnnuleren_Click);
}

void frmPlanningExporteren::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    InitForm();
    FillForm();
    InitControls();
    InitCommands();
    ui_->cmdOk->setFocus();
  });
}

// The layout has placed the panel over the working area, with its label at full width.
void frmPlanningExporteren::InitForm() {
  Trapped(__func__, [&] {
    ui_->picProgress->hide();
    ui_->picProgress->raise();
  });
}

void frmPlanningExporteren::FillForm() {
  Trapped(__func__, [&] { ui_->txtBestemming->setText(runtime::TrimBlanks(global.exportPath)); });
  ShowWaiting();
}

// The window also opens after each change from offline to online, with or without something to export.
void frmPlanningExporteren::ShowWaiting() {
  try {
    const int waiting = CountWaitingChanges();
    ui_->lblWachten->setText(waiting == 0 ? u"Er wacht niets op een export: u kunt dit venster sluiten."_s
                                          : runtime::Counted(waiting, u"wijziging wacht"_s, u"wijzigingen wachten"_s) +
                                                u" op deze export."_s);
  } catch (const runtime::Error&) {
    ui_->lblWachten->clear();  // the export itself reports a log that cannot be read
  }
}

void frmPlanningExporteren::InitControls() {
  Trapped(__func__, [&] { LockControl(u"txtBestemming"_s, true); });
}

void frmPlanningExporteren::InitCommands() {
  Trapped(__func__, [&] { SetButtonCaption(u"Sluiten"_s); });
}

void frmPlanningExporteren::SetButtonCaption(const QString& caption) {
  ui_->cmdAnnuleren->setText(u"&"_s + caption);
  ui_->cmdAnnuleren->setToolTip(caption);
}

bool frmPlanningExporteren::OpslaanProceed() {
  return Trapped(__func__, false, [&] { return MayExport(ui_->txtBestemming->text()); });
}

void frmPlanningExporteren::cmdOk_Click() {
  Trapped(__func__, [&] {
    if (!OpslaanProceed()) return;
    ShowProgress();
    Opslaan();
    HideProgress();
    InitControls();
    InitCommands();
    ShowAppMessage(message::kExportEnded);
    Unload();
  });
}

void frmPlanningExporteren::ShowProgress() {
  EnableControls(false);
  ui_->lblProgressStatus->setText(u"Opstarten van export ..."_s);
  ui_->imgProgress->SetProgress(0);
  ui_->picProgress->show();
  SetButtonCaption(Interrupt());
  ui_->cmdAnnuleren->setFocus();
  interrupted_ = false;
}

void frmPlanningExporteren::HideProgress() {
  ui_->picProgress->hide();
  EnableControls(true);
}

// All controls except the progress panel, its children and the button that interrupts.
void frmPlanningExporteren::EnableControls(bool enable) {
  for (QWidget* control : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (control != ui_->picProgress && control != ui_->cmdAnnuleren) control->setEnabled(enable);
  }
}

void frmPlanningExporteren::ShowStep(const QString& text, double progress) {
  ui_->lblProgressStatus->setText(text);
  ui_->imgProgress->SetProgress(progress);
  desktop::YieldToEvents();
}

void frmPlanningExporteren::Opslaan() {
  Trapped(__func__, [&] {
    AlteredStatements altered;
    QString path;
    {
      const desktop::WaitPointer wait;
      ShowStep(u"Initializeren ... "_s, 1.0 / 3);
      const QString folder = runtime::TrimBlanks(ui_->txtBestemming->text());
      ShowStep(u"Offline-log controleren en exporteren"_s, 2.0 / 3);
      FinishInterruptedExport(global.localDatabasePath);
      OfflineLogExport logExport(global.localDatabasePath);
      path = logExport.WriteFile(folder, OfflineLogExport::SameSecond::ReplaceOwn);
      if (!path.isEmpty()) {
        const QStringList& same = logExport.RecordsWithSameNumber();
        global.exported = {path, logExport.ChangeCount(), same, SameNumbersWarning(same, path)};
      }
      global.lastResult = EmptyLog(logExport);
      LogQueuedStatements();
      AddQueuedAudioLines();
      altered = logExport.Altered();
      ui_->imgProgress->SetProgress(1);
      desktop::YieldToEvents();
    }
    if (altered.count > 0) desktop::ShowMessageBox(this, AlteredWarning(altered, path), kStyleExclamation, u"Items"_s);
  });
}

// Users know this error under the name of the write that empties a table.
bool frmPlanningExporteren::EmptyLog(const OfflineLogExport& logExport) {
  return Trapped("DeleteAllInTable", false, [&] {
    logExport.EmptyLog();
    return true;
  });
}

// Required: the request to interrupt is noted and never read; an export always runs to its end.
void frmPlanningExporteren::cmdAnnuleren_Click() {
  Trapped(__func__, [&] {
    if (ui_->cmdAnnuleren->toolTip() == Interrupt()) {
      interrupted_ = true;
    } else {
      Unload();
    }
  });
}
