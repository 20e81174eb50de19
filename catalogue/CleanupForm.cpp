// SPDX-License-Identifier: MIT
#include "catalogue/CleanupForm.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

using namespace Qt::StringLiterals;
using runtime::Trapped;

void CleanupForm::Wire(const Controls& controls) {
  controls_ = controls;
  connect(controls_.chkVerwijderBestand, &QCheckBox::toggled, this, &CleanupForm::chkVerwijderBestand_Click);
  connect(controls_.chkVerwijderID, &QCheckBox::toggled, this, &CleanupForm::chkVerwijderID_Click);
  connect(controls_.cmdOk, &QPushButton::clicked, this, &CleanupForm::cmdOk_Click);
  connect(controls_.cmdSluiten, &QPushButton::clicked, this, &CleanupForm::cmdSluiten_Click);
  controls_.cmdOk->setIcon(desktop::Icon(u"verwijder"_s));
  constexpr QSize kOpeningSize(560, 340);
  resize(kOpeningSize.expandedTo(sizeHint()).boundedTo(screen()->availableSize()));
}

void CleanupForm::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    InitForm();
    FillForm();
    InitControls();
    InitCommands();
  });
}

void CleanupForm::FillForm() {
  Trapped(__func__, [&] {
    if (!runtime::IsNumeric(global.gstrOpruimenID)) return;
    const qint32 id = runtime::ToLong(global.gstrOpruimenID);
    controls_.txtOpruimenVan->setText(NameOf(id, CurrentCatalogue()));
    ShowUsage(id);
  });
}

// Only a help: a failure shows no box.
void CleanupForm::ShowUsage(qint32 id) {
  try {
    controls_.lblGebruik->setText(UsageOf(id, CurrentCatalogue()));
  } catch (const runtime::Error&) {
    controls_.lblGebruik->setText(u"Waar het gebruikt wordt, is nu niet te lezen."_s);
  }
}

void CleanupForm::InitControls() {
  Trapped(__func__, [&] { LockControl(u"txtOpruimenVan"_s, true); });
}

void CleanupForm::InitCommands() {
  Trapped(__func__, [&] { controls_.cmdOk->setEnabled(DeletesRecord() || DeletesFiles()); });
}

void CleanupForm::chkVerwijderBestand_Click() {
  Trapped(__func__, [&] { InitCommands(); });
}

void CleanupForm::chkVerwijderID_Click() {
  Trapped(__func__, [&] { InitCommands(); });
}

void CleanupForm::cmdOk_Click() {
  Trapped(__func__, [&] {
    if (!OpruimenProceed()) return;
    // No success message after a failed or cancelled cleanup.
    if (Opruimen()) ShowItemsMessage(u"Opruimen is uitgevoerd."_s, kStyleInformation);
    InitControls();
    InitCommands();
    Unload();
  });
}

bool CleanupForm::Opruimen() {
  return Trapped(__func__, false, [&] {
    const desktop::WaitPointer wait;
    allDeleted_ = true;
    CleanUp(CurrentCatalogue());
    desktop::RepaintWindows();
    return allDeleted_;
  });
}

QString CleanupForm::SelectByID(const QString& fields, const QString& table) {
  if (!runtime::IsNumeric(global.gstrOpruimenID)) return {};
  return u"SELECT "_s + fields + u" "_s + u"From "_s + table + u" "_s + u"WHERE "_s + table + u".ID = "_s +
         QString::number(runtime::ToLong(global.gstrOpruimenID));
}

void CleanupForm::DeleteRecords(qint32 id, const QString& table, const QString& keyField, const QString& databasePath) {
  global.lastResult = Delete_tblBeheer(id, table, keyField, databasePath);
  allDeleted_ = allDeleted_ && global.lastResult;
}

bool CleanupForm::DeletesFiles() const {
  return controls_.chkVerwijderBestand->isChecked();
}
bool CleanupForm::DeletesRecord() const {
  return controls_.chkVerwijderID->isChecked();
}

void CleanupForm::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}
