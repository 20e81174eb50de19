// SPDX-License-Identifier: MIT
#include "app/frmVersie.h"

#include "app/SupportText.h"
#include "app/ui_frmVersie.h"
#include "platform/desktop/ErrorHistory.h"
#include "platform/desktop/ScaledFont.h"
#include "platform/runtime/Trapped.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmVersie::frmVersie(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmVersie>()) {
  ui_->setupUi(this);
  ui_->lblNaam->setFont(desktop::ScaledFont(font(), 1.4, QFont::DemiBold));
  connect(ui_->cmdKopieren, &QPushButton::clicked, this, &frmVersie::cmdKopieren_Click);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, &frmVersie::cmdSluiten_Click);
  constexpr QSize kOpeningSize(560, 300);
  resize(kOpeningSize);
}

frmVersie::~frmVersie() = default;

void frmVersie::Form_Load() {
  Trapped(__func__, [&] { ui_->lblGegevens->setText(InstallationText()); });
}

void frmVersie::cmdKopieren_Click() {
  Trapped(__func__, [&] {
    QGuiApplication::clipboard()->setText(SupportText());
    const qsizetype count = desktop::RecentErrors().size();
    const QString errors = count == 1 ? u"1 fout"_s : u"%1 fouten"_s.arg(count);
    ui_->lblGekopieerd->setText(
        u"Gekopieerd, met %1 sinds de start. Plak het in een bericht aan de beheerder."_s.arg(errors));
  });
}

void frmVersie::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}
