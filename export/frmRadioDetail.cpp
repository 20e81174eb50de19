// SPDX-License-Identifier: MIT
#include "export/frmRadioDetail.h"

#include "data/Globals.h"
#include "export/StationMemory.h"
#include "export/ui_frmRadioDetail.h"
#include "platform/dao/Database.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <optional>

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
  connect(ui_->cboRadio, &QComboBox::currentIndexChanged, this, &frmRadioDetail::cboRadio_Change);
  connect(ui_->cmdLaatste, &QPushButton::clicked, this, &frmRadioDetail::cmdLaatste_Click);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmRadioDetail::cmdOk_Click);
}

void frmRadioDetail::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    FillCboRadio();
    OfferLast();
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

void frmRadioDetail::OfferLast() {
  const int line = LineOfLast();
  ui_->cmdLaatste->setVisible(line != -1);
  if (line == -1) return;
  const QString name = ui_->cboRadio->Text(line);
  constexpr int kLongest = 140;  // px
  QString shown = fontMetrics().elidedText(name, Qt::ElideRight, kLongest);
  shown.replace(u'&', u"&&"_s);
  ui_->cmdLaatste->setText(u"&Verder met %1"_s.arg(shown));
  ui_->cmdLaatste->setToolTip(u"De zender van de vorige keer: %1"_s.arg(name));
}

// -1 when no station is remembered or it is no longer in the list.
int frmRadioDetail::LineOfLast() const {
  const std::optional<qint16> last = StationMemory::Last();
  for (int line = 0; last && line < ui_->cboRadio->ListCount(); ++line) {
    if (ui_->cboRadio->ItemData(line) == *last) return line;
  }
  return -1;
}

void frmRadioDetail::cboRadio_Change() {
  Trapped(__func__, [&] { ui_->lblKiesEerst->hide(); });
}

void frmRadioDetail::cmdLaatste_Click() {
  Trapped(__func__, [&] {
    ui_->cboRadio->SetListIndex(LineOfLast());
    cmdOk_Click();
  });
}

void frmRadioDetail::cmdOk_Click() {
  Trapped(__func__, [&] {
    const int chosen = ui_->cboRadio->ListIndex();
    ui_->lblKiesEerst->setVisible(chosen == -1 && ui_->cboRadio->ListCount() > 0);
    if (chosen == -1) return;
    global.stationNumber = runtime::ToInteger(static_cast<double>(ui_->cboRadio->ItemData(chosen)));
    hasChosen_ = true;
    StationMemory::Chosen(global.stationNumber);
    Unload();
  });
}
