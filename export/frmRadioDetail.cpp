// SPDX-License-Identifier: MIT
#include "export/frmRadioDetail.h"

#include "data/Globals.h"
#include "export/ui_frmRadioDetail.h"
#include "platform/dao/Database.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmRadioDetail::frmRadioDetail(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmRadioDetail>()) {
  ui_->setupUi(this);
  ConnectEvents();
  constexpr QSize kOpeningSize(440, 196);
  resize(kOpeningSize);
}

frmRadioDetail::~frmRadioDetail() = default;

void frmRadioDetail::ConnectEvents() {
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmRadioDetail::cmdOk_Click);
}

void frmRadioDetail::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    FillCboRadio();
    ui_->lblGeenZender->setVisible(ui_->cboRadio->ListCount() == 0);  // OK does nothing then
    ui_->cboRadio->setFocus();
  });
}

void frmRadioDetail::FillCboRadio() {
  Trapped(__func__, [&] {
    dao::Database database = dao::OpenDatabase(global.localDatabasePath);
    dao::Recordset rows = database.OpenRecordset(
        u"SELECT cdeLicenties.LicentieNummer AS ID, cdeLicenties.RadioNaam AS Code From cdeLicenties ORDER BY "
        "cdeLicenties.RadioNaam"_s);
    ui_->cboRadio->Clear();
    for (; !rows.Eof(); rows.MoveNext()) {
      ui_->cboRadio->AddItem(rows.Field(u"Code"_s).toString(), runtime::ToLong(rows.Field(u"ID"_s)));
    }
  });
}

void frmRadioDetail::cmdOk_Click() {
  Trapped(__func__, [&] {
    const int chosen = ui_->cboRadio->ListIndex();
    if (chosen == -1) return;
    global.stationNumber = runtime::ToInteger(static_cast<double>(ui_->cboRadio->ItemData(chosen)));
    Unload();
  });
}
