// SPDX-License-Identifier: MIT
#include "catalogue/frmGeldigheid.h"

#include "catalogue/ui_frmGeldigheid.h"
#include "data/AudioRules.h"
#include "data/Messages.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmGeldigheid::frmGeldigheid(QWidget* owner, Part part, const QString& count)
    : Form(owner), ui_(std::make_unique<Ui::frmGeldigheid>()), part_(part) {
  ui_->setupUi(this);
  const bool date = part_ == Part::EindDatum;
  setWindowTitle(date ? u"Einddatum"_s : u"Uren"_s);
  ui_->lblVoor->setText(u"Voor "_s + count + u':');
  ui_->lblEinddatum->setVisible(date);
  ui_->cobStop->setVisible(date);
  for (QWidget* hour :
       std::initializer_list<QWidget*>{ui_->lblStartUur, ui_->txtStartUur, ui_->lblEindUur, ui_->txtEindUur})
    hour->setVisible(!date);
  ui_->cmdOk->setDefault(true);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmGeldigheid::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, [this] { Unload(); });
}

frmGeldigheid::~frmGeldigheid() = default;

void frmGeldigheid::Form_Load() {
  Trapped(__func__, [&] {
    ui_->txtStartUur->setText(QString::number(kFirstHour));
    ui_->txtEindUur->setText(QString::number(kLastHour));
    if (part_ == Part::EindDatum) return ui_->cobStop->setFocus();
    ui_->txtStartUur->setFocus();
    ui_->txtStartUur->selectAll();
  });
}

// The editor's checks of the fields that are asked for here.
bool frmGeldigheid::OpslaanProceed() {
  return Trapped(__func__, false, [&] {
    ValidityInput input{true, ui_->txtStartUur->text(), part_ == Part::Uren || ui_->cobStop->HoldsDate(),
                        ui_->txtEindUur->text()};
    const std::optional<Refusal> refusal = CheckValidity(input);
    ui_->txtStartUur->setText(input.startUur);
    ui_->txtEindUur->setText(input.eindUur);
    if (!refusal) return true;
    ShowAppMessage(refusal->message, refusal->value1, refusal->value2);
    findChild<QWidget*>(refusal->control)->setFocus();
    return false;
  });
}

void frmGeldigheid::cmdOk_Click() {
  Trapped(__func__, [&] {
    if (!OpslaanProceed()) return;
    accepted_ = true;
    Unload();
  });
}

QDate frmGeldigheid::EindDatum() const {
  return ui_->cobStop->Date().value_or(QDate());
}

qint32 frmGeldigheid::StartUur() const {
  return runtime::ToLong(ui_->txtStartUur->text());
}

qint32 frmGeldigheid::EindUur() const {
  return runtime::ToLong(ui_->txtEindUur->text());
}
