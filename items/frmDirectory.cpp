// SPDX-License-Identifier: MIT
#include "items/frmDirectory.h"

#include "data/Globals.h"
#include "data/Text.h"
#include "items/ui_frmDirectory.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trapped.h"

#include <QKeyEvent>
#include <QSignalBlocker>

using runtime::Trapped;

frmDirectory::frmDirectory(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmDirectory>()) {
  ui_->setupUi(this);
  ConnectEvents();
}

frmDirectory::~frmDirectory() = default;

void frmDirectory::ConnectEvents() {
  connect(ui_->cboDrive, &QComboBox::currentIndexChanged, this, &frmDirectory::cboDrive_Change);
  connect(ui_->lstDir, &controls::ListBox::clicked, this, &frmDirectory::lstDir_Click);
  connect(ui_->lstDir, &controls::ListBox::doubleClicked, this, &frmDirectory::lstDir_Open);
  ui_->lstDir->installEventFilter(this);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmDirectory::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmDirectory::cmdAnnuleren_Click);
}

// Enter in the list opens a folder instead of pressing the default button.
bool frmDirectory::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->lstDir && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      lstDir_Open();
      return true;
    }
  }
  return Form::eventFilter(watched, event);
}

void frmDirectory::Form_Load() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    ShowDefaults();
    FillForm(IsKull(global.gstrSelectedID) ? QString() : runtime::TrimBlanks(global.gstrSelectedID));
  });
}

// The first drive and its folders, without a selection.
void frmDirectory::ShowDefaults() {
  const QSignalBlocker quiet(ui_->cboDrive);
  for (const QString& drive : runtime::Drives())
    ui_->cboDrive->AddItem(drive);
  if (ui_->cboDrive->ListCount() == 0) return;
  ui_->cboDrive->SetListIndex(0);
  ui_->lstDir->SetPath(ui_->cboDrive->Text(0));
}

void frmDirectory::FillForm(const QString& startFolder) {
  Trapped(__func__, [&] {
    if (startFolder.isEmpty()) return;
    SetDrive(startFolder);
    if (runtime::IsFolder(startFolder)) ui_->lstDir->SetPath(startFolder);
    ui_->lstDir->SetListIndex(ui_->lstDir->PathLine());
  });
}

void frmDirectory::SetDrive(const QString& startFolder) {
  static_cast<void>(runtime::HostRoot(startFolder));  // throws for an unmapped drive
  for (int line = 0; line < ui_->cboDrive->ListCount(); ++line) {
    const QString drive = ui_->cboDrive->Text(line) + u'\\';
    if (QString(startFolder + u'\\').startsWith(drive, Qt::CaseInsensitive)) ui_->cboDrive->SetListIndex(line);
  }
}

void frmDirectory::ShowFolder(const QString& pathText) {
  const desktop::WaitPointer wait;
  ui_->lstDir->SetPath(pathText);
  ui_->lstDir->SetListIndex(ui_->lstDir->PathLine());
}

void frmDirectory::cboDrive_Change() {
  Trapped(__func__, [this] {
    if (ui_->cboDrive->ListIndex() != -1) ShowFolder(ui_->cboDrive->Text(ui_->cboDrive->ListIndex()));
  });
}

void frmDirectory::lstDir_Click() {
  Trapped(__func__, [this] {
    chosen_ = ui_->lstDir->List(ui_->lstDir->ListIndex());
    ui_->lblGekozen->setText(chosen_);
    ui_->lblGekozen->setToolTip(chosen_);
  });
}

void frmDirectory::lstDir_Open() {
  Trapped(__func__, [this] {
    if (ui_->lstDir->ListIndex() != -1) ShowFolder(ui_->lstDir->List(ui_->lstDir->ListIndex()));
  });
}

void frmDirectory::cmdOk_Click() {
  Trapped(__func__, [this] {
    global.gstrSelectedID = chosen_;
    Unload();
  });
}

void frmDirectory::cmdAnnuleren_Click() {
  Trapped(__func__, [this] { Unload(); });
}
