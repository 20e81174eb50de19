// SPDX-License-Identifier: MIT
#include "items/frmItemsDetail.h"

#include "data/forms/OptionButton.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/TextAsToolTip.h"
#include "platform/runtime/Trapped.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using runtime::Trapped;

frmItemsDetail::frmItemsDetail(QWidget* owner)
    : EditorForm(owner),
      ui_(std::make_unique<Ui::frmItemsDetail>()),
      lengths_(this, [this] { lengths_.Show(*ui_->lstOpt1ItemSpots); }),
      example_(this, [this](const QString& text) { ui_->lblOpt2Bestand->setText(text); }) {
  ui_->setupUi(this);
  ui_->cmdOpt1Toevoegen->setIcon(desktop::Icon(u"nieuw"_s));
  ui_->cmdOpt1Wijzigen->setIcon(desktop::Icon(u"open"_s));
  ui_->cmdOpt1Verwijderen->setIcon(desktop::Icon(u"verwijder"_s, desktop::IconTint::Danger));
  ui_->cmdNormalizeItem->setIcon(desktop::Icon(u"nul"_s));
  ui_->cmdDirectory->setIcon(desktop::Icon(u"map"_s));
  ui_->cmdShowItemSpots->setIcon(desktop::Icon(u"item-spots"_s));
  ui_->cmdShowItemPingles->setIcon(desktop::Icon(u"item-pingles"_s));
  ui_->cmdBeluisteren->setIcon(desktop::Icon(u"geluid"_s));
  desktop::ShowTextAsToolTip(ui_->txtOpt2Directory);
  desktop::ShowTextAsToolTip(ui_->txtOpt2Voorbeeld);
  QFont strong = ui_->lblVergrendeld->font();
  strong.setWeight(QFont::DemiBold);
  ui_->lblVergrendeld->setFont(strong);
  ConnectChanges();
  ConnectList();
  ConnectButtons();
}

frmItemsDetail::~frmItemsDetail() = default;

// Required: the controls without a handler here (cboMiddenPingle, the two counts, the random order, ledMix) do not make
// the form dirty.
void frmItemsDetail::ConnectChanges() {
  using Self = frmItemsDetail;
  connect(ui_->txtNaam, &QLineEdit::textChanged, this, &Self::txtNaam_Change);
  connect(ui_->chkAktief, &QCheckBox::toggled, this, &Self::chkAktief_Click);
  OnOptionClick(ui_->opt1, [this] { opt1_Click(); });
  OnOptionClick(ui_->opt2, [this] { opt2_Click(); });
  connect(ui_->txtOpt2Directory, &QLineEdit::textChanged, this, &Self::txtOpt2Directory_Change);
  connect(ui_->txtOpt2VastNaamGedeelte, &QLineEdit::textChanged, this, &Self::txtOpt2VastNaamGedeelte_Change);
  connect(ui_->cboOpt2VariabelNaamGedeelte, &QComboBox::currentIndexChanged, this,
          &Self::cboOpt2VariabelNaamGedeelte_Click);
  connect(ui_->cboOpt2Eerstedagvanweek, &QComboBox::currentIndexChanged, this, &Self::cboOpt2Eerstedagvanweek_Click);
  connect(ui_->txtOpt2FileExtensie, &QLineEdit::textChanged, this, &Self::txtOpt2FileExtensie_Change);
  connect(ui_->txtAantalSpots, &QLineEdit::textChanged, this,
          [this] { example_.Look(PatternOnScreen(), ui_->txtAantalSpots->text().toInt()); });
  OnOptionClick(ui_->opt1Spot, [this] { opt1Spot_Click(); });
  OnOptionClick(ui_->optMeerdereSpots, [this] { optMeerdereSpots_Click(); });
  connect(ui_->chkOpenerPingle, &QCheckBox::toggled, this, &Self::chkOpenerPingle_Click);
  connect(ui_->chkMiddenPingle, &QCheckBox::toggled, this, &Self::chkMiddenPingle_Click);
  connect(ui_->chkSluiterPingle, &QCheckBox::toggled, this, &Self::chkSluiterPingle_Click);
  connect(ui_->cboOpenerPingle, &QComboBox::currentIndexChanged, this, &Self::cboOpenerPingle_Click);
  connect(ui_->cboSluiterPingle, &QComboBox::currentIndexChanged, this, &Self::cboSluiterPingle_Click);
}

void frmItemsDetail::ConnectList() {
  const auto* list = ui_->lstOpt1ItemSpots;
  connect(list, &controls::ListBox::clicked, this, &frmItemsDetail::lstOpt1ItemSpots_Click);
  connect(list, &controls::ListBox::selectionLost, this, &frmItemsDetail::InitCommands);
  connect(list, &controls::ListBox::doubleClicked, this, &frmItemsDetail::lstOpt1ItemSpots_DblClick);
  connect(list, &controls::ListBox::lineMoved, this, [this] { Changed(); });
  const auto* remove = new QShortcut(QKeySequence::Delete, ui_->lstOpt1ItemSpots, nullptr, nullptr, Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, ui_->cmdOpt1Verwijderen, &QPushButton::click);
}

void frmItemsDetail::ConnectButtons() {
  const auto on = [this](const QPushButton* button, void (frmItemsDetail::*handler)()) {
    connect(button, &QPushButton::clicked, this, handler);
  };
  on(ui_->cmdOpt1Toevoegen, &frmItemsDetail::cmdOpt1Toevoegen_Click);
  on(ui_->cmdOpt1Wijzigen, &frmItemsDetail::cmdOpt1Wijzigen_Click);
  on(ui_->cmdOpt1Verwijderen, &frmItemsDetail::cmdOpt1Verwijderen_Click);
  on(ui_->cmdNormalizeItem, &frmItemsDetail::cmdNormalizeItem_Click);
  on(ui_->cmdDirectory, &frmItemsDetail::cmdDirectory_Click);
  on(ui_->cmdShowItemSpots, &frmItemsDetail::cmdShowItemSpots_Click);
  on(ui_->cmdShowItemPingles, &frmItemsDetail::cmdShowItemPingles_Click);
  on(ui_->cmdBeluisteren, &frmItemsDetail::cmdBeluisteren_Click);
  const auto* listen = new QShortcut(Qt::CTRL | Qt::Key_B, this);
  connect(listen, &QShortcut::activated, ui_->cmdBeluisteren, &QPushButton::click);
  on(ui_->cmdOk, &frmItemsDetail::cmdOk_Click);
  on(ui_->cmdAnnuleren, &frmItemsDetail::cmdAnnuleren_Click);
  connect(ui_->ledMix, &controls::LedPanel::clicked, this, &frmItemsDetail::ledMix_Click);
}

void frmItemsDetail::cmdOk_Click() {
  Trapped(__func__, [this] { SaveAndClose(); });
}

// A locked item cannot be changed, so there is no question about saving.
void frmItemsDetail::cmdAnnuleren_Click() {
  Trapped(__func__, [this] {
    if (isLocked_) isDirty_ = false;
    CancelAndClose();
  });
}
