// SPDX-License-Identifier: MIT
// The item editor's controls: connections, change events and buttons.
#include "items/frmItemsDetail.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Writes.h"
#include "data/forms/OptionButton.h"
#include "data/forms/Screens.h"
#include "export/playout/BlockToHear.h"
#include "export/playout/FileNameExample.h"
#include "items/frmDirectory.h"
#include "items/frmItemsDetailOpt1.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/FocusFallback.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/TextAsToolTip.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// The message after the play counts of an item's spots were reset. `failed`: number of failures.
QString ResetText(int spots, int failed) {
  if (failed == 0) {
    return u"Het 'Aantal gedraaid' van de item-spots verbonden met dit item werden op nul gezet,\r\n"
           u"zodat elke item-spot voortaan gelijkwaardig behandeld wordt."_s;
  }
  return u"Het 'Aantal gedraaid' van %1 van de %2 item-spots verbonden met dit item werd op nul gezet.\r\n"
         u"Bij %3 item-spot%4 is dat niet gelukt."_s.arg(QString::number(spots - failed), QString::number(spots),
                                                         QString::number(failed), failed == 1 ? u""_s : u"s"_s);
}

}  // namespace

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
  ConnectUnsaved();
}

frmItemsDetail::~frmItemsDetail() = default;

// Required: the controls that are not connected here (cboMiddenPingle, the two counts, the random order, ledMix) do not
// make the form dirty.
void frmItemsDetail::ConnectChanges() {
  using Self = frmItemsDetail;
  connect(ui_->txtNaam, &QLineEdit::textChanged, this, &Self::Changed);
  connect(ui_->chkAktief, &QCheckBox::toggled, this, &Self::Changed);
  OnOptionClick(ui_->opt1, [this] { FillingChanged(); });
  OnOptionClick(ui_->opt2, [this] { FillingChanged(); });
  connect(ui_->txtOpt2Directory, &QLineEdit::textChanged, this, &Self::PatternChanged);
  connect(ui_->txtOpt2VastNaamGedeelte, &QLineEdit::textChanged, this, &Self::PatternChanged);
  connect(ui_->cboOpt2VariabelNaamGedeelte, &QComboBox::currentIndexChanged, this, &Self::NamePartsChanged);
  connect(ui_->cboOpt2Eerstedagvanweek, &QComboBox::currentIndexChanged, this, &Self::PatternChanged);
  connect(ui_->txtOpt2FileExtensie, &QLineEdit::textChanged, this, &Self::PatternChanged);
  connect(ui_->txtAantalSpots, &QLineEdit::textChanged, this,
          [this] { example_.Look(PatternOnScreen(), ui_->txtAantalSpots->text().toInt()); });
  OnOptionClick(ui_->opt1Spot, [this] { NamePartsChanged(); });
  OnOptionClick(ui_->optMeerdereSpots, [this] { NamePartsChanged(); });
  for (const QCheckBox* jingle : {ui_->chkOpenerPingle, ui_->chkMiddenPingle, ui_->chkSluiterPingle})
    connect(jingle, &QCheckBox::toggled, this, &Self::JinglesChanged);
  for (const QComboBox* jingle : {ui_->cboOpenerPingle, ui_->cboSluiterPingle})
    connect(jingle, &QComboBox::currentIndexChanged, this, &Self::Changed);
}

void frmItemsDetail::ConnectList() {
  const auto* list = ui_->lstOpt1ItemSpots;
  connect(list, &controls::ListBox::clicked, this, &frmItemsDetail::InitCommands);
  connect(list, &controls::ListBox::selectionLost, this, &frmItemsDetail::InitCommands);
  connect(list, &controls::ListBox::doubleClicked, this, &frmItemsDetail::cmdOpt1Wijzigen_Click);
  connect(list, &controls::ListBox::lineMoved, this, &frmItemsDetail::Changed);
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

void frmItemsDetail::FillingChanged() {
  Changed();
  InitControls();
  InitCommands();
}

void frmItemsDetail::PatternChanged() {
  Changed();
  ShowOpt2Voorbeeld();
}

// The date part and the number of spots enable other fields and change the example.
void frmItemsDetail::NamePartsChanged() {
  Changed();
  InitControls();
  ShowOpt2Voorbeeld();
}

void frmItemsDetail::JinglesChanged() {
  Changed();
  InitControls();
}

void frmItemsDetail::ShowOpt2Voorbeeld() {
  Trapped(__func__, [this] {
    const FileNamePattern pattern = PatternOnScreen();
    ui_->txtOpt2Voorbeeld->setText(FileNameExample(pattern, runtime::Now()));
    example_.Look(pattern, ui_->txtAantalSpots->text().toInt());
  });
}

void frmItemsDetail::cmdOpt1Toevoegen_Click() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    lengths_.Forget();
    InitControls();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Wijzigen_Click() {
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const desktop::FocusFallback list(*ui_->lstOpt1ItemSpots);
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::number(ui_->lstOpt1ItemSpots->ItemData(ui_->lstOpt1ItemSpots->ListIndex()));
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Verwijderen_Click() {
  Trapped(__func__, [this] {
    const desktop::FocusFallback list(*ui_->lstOpt1ItemSpots);
    const int line = ui_->lstOpt1ItemSpots->ListIndex();
    if (line != -1) {
      ui_->lstOpt1ItemSpots->RemoveItem(line);
      Changed();
    }
    InitControls();
    InitCommands();
  });
}

void frmItemsDetail::cmdNormalizeItem_Click() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    const int spots = ui_->lstOpt1ItemSpots->ListCount();
    int failed = 0;
    {
      const desktop::WaitPointer wait;
      for (int line = 0; line < spots; ++line) {
        const auto spot = static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line));
        global.lastResult = Reset_tblItemSpots_AantalGedraaid(spot, catalogue.databasePath, catalogue.itemSpots);
        if (!global.lastResult) ++failed;
      }
    }
    ShowItemsMessage(ResetText(spots, failed), kStyleInformation);
  });
}

void frmItemsDetail::cmdDirectory_Click() {
  Trapped(__func__, [this] {
    global.gstrSelectedID = QString();
    frmDirectory(this).ShowModal();
    if (global.gstrSelectedID.isEmpty()) return;
    ui_->txtOpt2Directory->setText(global.gstrSelectedID);
    PatternChanged();  // also if the same folder was chosen again
  });
}

void frmItemsDetail::ledMix_Click() {
  Trapped(__func__, [this] {
    const auto answer =
        desktop::AskText(this, u"Geef een numerische waarde ..."_s, u"Items"_s, QString::number(ui_->ledMix->Value()));
    global.lastAnswer = answer.value_or(QString());
    if (!answer || !runtime::IsNumeric(*answer)) return;
    ui_->ledMix->SetValue(runtime::ToLong(*answer));
    storedMix_ = shownMix_ = ui_->ledMix->Value();  // entered by the user, even if the panel already showed it
  });
}

void frmItemsDetail::cmdShowItemSpots_Click() {
  Trapped(__func__, [this] { ShowScreen(Screen::ItemSpots, this); });
}

void frmItemsDetail::cmdShowItemPingles_Click() {
  Trapped(__func__, [this] {
    ShowScreen(Screen::ItemPingles, this);
    FillCboPingles();
  });
}

void frmItemsDetail::cmdBeluisteren_Click() {
  Trapped(__func__, [this] {
    {
      const desktop::WaitPointer wait;
      SetBlockToHear(BlockOnScreen());
    }
    ShowScreen(Screen::Beluisteren, this);
  });
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
