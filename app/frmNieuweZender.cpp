// SPDX-License-Identifier: MIT
#include "app/frmNieuweZender.h"

#include "app/ui_frmNieuweZender.h"
#include "data/Globals.h"
#include "data/Text.h"
#include "data/stations/NewStation.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmNieuweZender::frmNieuweZender(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmNieuweZender>()) {
  ui_->setupUi(this);
  ConnectEvents();
  constexpr QSize kOpeningSize(520, 260);
  resize(kOpeningSize);
}

frmNieuweZender::~frmNieuweZender() = default;

void frmNieuweZender::ConnectEvents() {
  connect(ui_->txtNaam, &QLineEdit::textChanged, this, &frmNieuweZender::InitCommands);
  connect(ui_->txtNummer, &QLineEdit::textChanged, this, &frmNieuweZender::InitCommands);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmNieuweZender::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmNieuweZender::cmdAnnuleren_Click);
}

void frmNieuweZender::Form_Load() {
  Trapped(__func__, [&] {
    ui_->lblMap->setText(u"De zender komt in %1"_s.arg(runtime::HostPath(global.programFolder)));
    ui_->lblOffline->setVisible(!global.stationsOwnMode);
    ui_->txtNaam->setFocus();
    InitCommands();
    ui_->txtNummer->setText(QString::number(FreeStationNumber()));
  });
}

// The user chooses the station by its name, and its number is part of the file names.
void frmNieuweZender::InitCommands() {
  bool isNumber = false;
  const short number = ui_->txtNummer->text().toShort(&isNumber);
  ui_->cmdOk->setEnabled(isNumber && number > 0 && !IsKull(ui_->txtNaam->text()));
}

void frmNieuweZender::cmdOk_Click() {
  Trapped(__func__, [&] {
    const qint16 number = ui_->txtNummer->text().toShort();
    {
      const desktop::WaitPointer wait;
      MakeNumberedStation(number, runtime::TrimBlanks(ui_->txtNaam->text()));
    }
    made_ = true;
    Unload();
  });
}

void frmNieuweZender::cmdAnnuleren_Click() {
  Trapped(__func__, [&] { Unload(); });
}
