// SPDX-License-Identifier: MIT
#include "items/frmItemsDetailOpt1.h"

#include "data/Catalogue.h"
#include "data/MessageNumbers.h"
#include "items/ui_frmItemsDetailOpt1.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Trapped.h"

#include <QScreen>

#include <vector>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {
constexpr QSize kAddingSize(600, 480);
}

frmItemsDetailOpt1::frmItemsDetailOpt1(QWidget* owner, controls::ListBox& lstOpt1ItemSpots)
    : EditorForm(owner), ui_(std::make_unique<Ui::frmItemsDetailOpt1>()), list_(lstOpt1ItemSpots) {
  ui_->setupUi(this);
  ConnectEvents();
}

frmItemsDetailOpt1::~frmItemsDetailOpt1() = default;

void frmItemsDetailOpt1::ConnectEvents() {
  connect(ui_->cboItemSpot, &QComboBox::currentIndexChanged, this, &frmItemsDetailOpt1::cboItemSpot_Click);
  connect(ui_->wgtMeerdere, &SpotChoice::addRequested, this, &frmItemsDetailOpt1::wgtMeerdere_Add);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmItemsDetailOpt1::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmItemsDetailOpt1::cmdAnnuleren_Click);
}

void frmItemsDetailOpt1::InitForm() {
  Trapped(__func__, [this] {
    setWindowTitle(isNew_ ? u"Item-spot ... toevoegen"_s : u"Item-spot ... wijzigen"_s);
    FillCboItemSpot();
    ui_->wgtMeerdere->setVisible(isNew_);
    if (!isNew_) return;
    ui_->lblItemSpot->setMinimumWidth(ui_->wgtMeerdere->LabelWidth());
    resize(kAddingSize.boundedTo(screen()->availableSize()));
  });
}

void frmItemsDetailOpt1::FillCboItemSpot() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    const QString& table = catalogue.itemSpots;
    std::vector<controls::ComboBox::Line> lines;
    dao::OpenDatabase(catalogue.databasePath)
        .Visit(
            u"SELECT "_s + table + u".ID, " + table + u".Naam As Code From " + table + u" ORDER BY " + table + u".Naam",
            [&](const dao::Row& row) {
              lines.push_back({row.Text(1).toString(), row.Field(0).toLongLong()});
              return true;
            });
    ui_->cboItemSpot->Refill(lines);
    if (!isNew_) return;
    std::vector<SpotChoiceModel::Spot> spots;
    spots.reserve(lines.size());
    for (const controls::ComboBox::Line& line : lines)
      spots.push_back({line.itemData, line.text});
    ui_->wgtMeerdere->SetSpots(std::move(spots));
  });
}

void frmItemsDetailOpt1::FillForm() {
  Trapped(__func__, [this] {
    if (id_ > 0) SetCboTextWhereID(u"cboItemSpot"_s, id_);
    isDirty_ = false;
  });
}

bool frmItemsDetailOpt1::OpslaanProceed() {
  return Trapped(__func__, false, [this] {
    if (ui_->cboItemSpot->ListIndex() != -1) return true;
    return Accept(Refusal{message::kNothingChosen, u"Item-spot"_s, u"spot"_s, u"cboItemSpot"_s});
  });
}

// Changing an entry replaces only its text: it keeps its ID and therefore its spot.
void frmItemsDetailOpt1::Opslaan() {
  isDirty_ = true;
  Trapped(__func__, [this] {
    const int chosen = ui_->cboItemSpot->ListIndex();
    const QString text = ui_->cboItemSpot->Text(chosen);
    if (isNew_) {
      list_.AddItem(text, ui_->cboItemSpot->ItemData(chosen));
    } else {
      for (int line = 0; line < list_.ListCount(); ++line) {
        if (list_.ItemData(line) != id_) continue;
        list_.SetText(line, text);
        break;
      }
    }
    isDirty_ = false;
    isNew_ = false;
  });
}

void frmItemsDetailOpt1::cboItemSpot_Click() {
  Changed();
}

// Adds the checked spots; the combo box is for cmdOk alone.
void frmItemsDetailOpt1::wgtMeerdere_Add() {
  Trapped(__func__, [this] {
    for (const SpotChoiceModel::Spot& spot : ui_->wgtMeerdere->Checked())
      list_.AddItem(spot.naam, spot.id);
    Unload();
  });
}

void frmItemsDetailOpt1::cmdOk_Click() {
  Trapped(__func__, [this] {
    if (!OpslaanProceed()) return;
    Opslaan();
    if (!isDirty_) Unload();
  });
}

void frmItemsDetailOpt1::cmdAnnuleren_Click() {
  Trapped(__func__, [this] { CancelAndClose(); });
}
