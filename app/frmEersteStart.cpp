// SPDX-License-Identifier: MIT
#include "app/frmEersteStart.h"

#include "app/ui_frmEersteStart.h"
#include "data/Globals.h"
#include "data/Text.h"
#include "data/stations/DemoStation.h"
#include "data/stations/ProgramFolder.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmEersteStart::frmEersteStart(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmEersteStart>()) {
  ui_->setupUi(this);
  ConnectEvents();
  constexpr QSize kOpeningSize(520, 300);
  resize(kOpeningSize);
}

frmEersteStart::~frmEersteStart() = default;

void frmEersteStart::ConnectEvents() {
  connect(ui_->optLeeg, &QRadioButton::toggled, this, &frmEersteStart::optLeeg_Change);
  connect(ui_->txtNaam, &QLineEdit::textChanged, this, &frmEersteStart::txtNaam_Change);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmEersteStart::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmEersteStart::cmdAnnuleren_Click);
}

void frmEersteStart::Form_Load() {
  Trapped(__func__, [&] {
    ui_->lblMap->setText(u"De bestanden komen in %1"_s.arg(runtime::HostPath(global.programFolder)));
    InitCommands();
    ui_->optDemo->setFocus();
  });
}

// An empty station needs a name: the user chooses it at each start.
void frmEersteStart::InitCommands() {
  ui_->txtNaam->setEnabled(ui_->optLeeg->isChecked());
  ui_->cmdOk->setEnabled(ui_->optDemo->isChecked() || !IsKull(ui_->txtNaam->text()));
}

void frmEersteStart::optLeeg_Change() {
  Trapped(__func__, [&] {
    InitCommands();
    if (ui_->optLeeg->isChecked()) ui_->txtNaam->setFocus();
  });
}

void frmEersteStart::txtNaam_Change() {
  Trapped(__func__, [&] { InitCommands(); });
}

void frmEersteStart::cmdOk_Click() {
  Trapped(__func__, [&] {
    {
      const desktop::WaitPointer wait;
      MakeStation();
    }
    made_ = true;
    Unload();
  });
}

void frmEersteStart::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { Unload(); });
}

void frmEersteStart::MakeStation() const {
  const QString folder = runtime::HostPath(global.programFolder);
  if (ui_->optDemo->isChecked()) {
    MakeDemoStation(folder);
  } else {
    ProgramFolder(folder).MakeStation(0, runtime::TrimBlanks(ui_->txtNaam->text()));
  }
}
