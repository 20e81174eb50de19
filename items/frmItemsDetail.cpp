#include "items/frmItemsDetail.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/OptionButton.h"
#include "data/Screens.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "items/FileNameExample.h"
#include "items/frmDirectory.h"
#include "items/frmItemsDetailOpt1.h"
#include "items/ui_frmItemsDetail.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/InputBox.h"
#include "platform/desktop/Trapped.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Numbers.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using desktop::Trapped;

frmItemsDetail::frmItemsDetail(QWidget* owner) : EditorForm(owner), ui_(std::make_unique<Ui::frmItemsDetail>()) {
  ui_->setupUi(this);
  ui_->cmdOpt1Toevoegen->setIcon(desktop::Icon(u"nieuw"_s));
  ui_->cmdOpt1Wijzigen->setIcon(desktop::Icon(u"open"_s));
  ui_->cmdOpt1Verwijderen->setIcon(desktop::Icon(u"verwijder"_s, desktop::IconTint::Danger));
  ui_->cmdNormalizeItem->setIcon(desktop::Icon(u"nul"_s));
  ui_->cmdDirectory->setIcon(desktop::Icon(u"map"_s));
  ui_->cmdShowItemSpots->setIcon(desktop::Icon(u"item-spots"_s));
  ui_->cmdShowItemPingles->setIcon(desktop::Icon(u"item-pingles"_s));
  ConnectEvents();
}

frmItemsDetail::~frmItemsDetail() = default;

// What has no handler here (cboMiddenPingle, the two counts, the random order, ledMix) does not make the form dirty.
void frmItemsDetail::ConnectEvents() {
  const auto changed = [this] { Changed(); };
  connect(ui_->txtNaam, &QLineEdit::textChanged, this, changed);
  connect(ui_->chkAktief, &QCheckBox::toggled, this, changed);
  connect(ui_->cboOpenerPingle, &QComboBox::currentIndexChanged, this, changed);
  connect(ui_->cboSluiterPingle, &QComboBox::currentIndexChanged, this, changed);
  for (QLineEdit* box : {ui_->txtOpt2Directory, ui_->txtOpt2FileExtensie, ui_->txtOpt2VastNaamGedeelte}) {
    connect(box, &QLineEdit::textChanged, this, &frmItemsDetail::txtOpt2_Change);
  }
  connect(ui_->cboOpt2Eerstedagvanweek, &QComboBox::currentIndexChanged, this, &frmItemsDetail::txtOpt2_Change);
  connect(ui_->cboOpt2VariabelNaamGedeelte, &QComboBox::currentIndexChanged, this,
          &frmItemsDetail::cboOpt2VariabelNaamGedeelte_Click);
  OnOptionClick(ui_->opt1Spot, [this] { optSpots_Click(); });
  OnOptionClick(ui_->optMeerdereSpots, [this] { optSpots_Click(); });
  OnOptionClick(ui_->opt1, [this] { opt_Click(); });
  OnOptionClick(ui_->opt2, [this] { opt_Click(); });
  for (QCheckBox* box : {ui_->chkOpenerPingle, ui_->chkMiddenPingle, ui_->chkSluiterPingle}) {
    connect(box, &QCheckBox::toggled, this, &frmItemsDetail::chkPingle_Click);
  }
  connect(ui_->ledMix, &controls::LedPanel::clicked, this, &frmItemsDetail::ledMix_Click);
  connect(ui_->lstOpt1ItemSpots, &controls::ListBox::clicked, this, &frmItemsDetail::lstOpt1ItemSpots_Click);
  connect(ui_->lstOpt1ItemSpots, &controls::ListBox::selectionLost, this, &frmItemsDetail::InitCommands);
  connect(ui_->lstOpt1ItemSpots, &controls::ListBox::doubleClicked, this, &frmItemsDetail::cmdOpt1Wijzigen_Click);
  connect(ui_->lstOpt1ItemSpots, &controls::ListBox::lineMoved, this, changed);
  connect(ui_->cmdOpt1Toevoegen, &QPushButton::clicked, this, &frmItemsDetail::cmdOpt1Toevoegen_Click);
  connect(ui_->cmdOpt1Wijzigen, &QPushButton::clicked, this, &frmItemsDetail::cmdOpt1Wijzigen_Click);
  connect(ui_->cmdOpt1Verwijderen, &QPushButton::clicked, this, &frmItemsDetail::cmdOpt1Verwijderen_Click);
  const auto* remove = new QShortcut(QKeySequence::Delete, ui_->lstOpt1ItemSpots, nullptr, nullptr, Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, ui_->cmdOpt1Verwijderen, &QPushButton::click);
  connect(ui_->cmdDirectory, &QPushButton::clicked, this, &frmItemsDetail::cmdDirectory_Click);
  connect(ui_->cmdShowItemSpots, &QPushButton::clicked, this, &frmItemsDetail::cmdShowItemSpots_Click);
  connect(ui_->cmdShowItemPingles, &QPushButton::clicked, this, &frmItemsDetail::cmdShowItemPingles_Click);
  connect(ui_->cmdNormalizeItem, &QPushButton::clicked, this, &frmItemsDetail::cmdNormalizeItem_Click);
  connect(ui_->cmdOk, &QPushButton::clicked, this, &frmItemsDetail::cmdOk_Click);
  connect(ui_->cmdAnnuleren, &QPushButton::clicked, this, &frmItemsDetail::cmdAnnuleren_Click);
}

void frmItemsDetail::Form_Load() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    TakeSelectedID();
    InitForm();
    FillForm();
    InitControls();
    InitCommands();
  });
}

void frmItemsDetail::InitForm() {
  Trapped(__func__, [this] {
    setWindowTitle(isNew_ ? u"Item ... nieuw"_s : u"Item ... detail"_s);
    lengths_.Read();
    FillCboOpt2VariabelNaamGedeelte();
    FillCboOpt2Eerstedagvanweek();
    FillCboPingles();
  });
}

void frmItemsDetail::txtOpt2_Change() {
  Trapped(__func__, [this] {
    Changed();
    ShowOpt2Voorbeeld();
  });
}

void frmItemsDetail::cboOpt2VariabelNaamGedeelte_Click() {
  Trapped(__func__, [this] {
    Changed();
    InitControls();
    ShowOpt2Voorbeeld();
  });
}

void frmItemsDetail::optSpots_Click() {
  Trapped(__func__, [this] {
    Changed();
    InitControls();
    ShowOpt2Voorbeeld();
  });
}

void frmItemsDetail::opt_Click() {
  Trapped(__func__, [this] {
    Changed();
    InitControls();
    InitCommands();
  });
}

void frmItemsDetail::chkPingle_Click() {
  Trapped(__func__, [this] {
    Changed();
    InitControls();
  });
}

void frmItemsDetail::ledMix_Click() {
  Trapped(__func__, [this] {
    const auto answer = desktop::AskText(this, u"Geef een numerische waarde ..."_s, u"Items"_s,
                                         QString::number(ui_->ledMix->Value()));
    global.lastAnswer = answer.value_or(QString());
    if (answer && runtime::IsNumeric(*answer)) ui_->ledMix->SetValue(runtime::ToLong(*answer));
  });
}

void frmItemsDetail::lstOpt1ItemSpots_Click() { InitCommands(); }

void frmItemsDetail::cmdOpt1Toevoegen_Click() {
  Trapped(__func__, [this] {
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    lengths_.Read();
    InitControls();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Wijzigen_Click() {
  Trapped(__func__, [this] {
    if (isLocked_) return;
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::number(ui_->lstOpt1ItemSpots->ItemData(ui_->lstOpt1ItemSpots->ListIndex()));
    frmItemsDetailOpt1(this, *ui_->lstOpt1ItemSpots).ShowModal();
    InitCommands();
    Changed();
  });
}

void frmItemsDetail::cmdOpt1Verwijderen_Click() {
  Trapped(__func__, [this] {
    const int line = ui_->lstOpt1ItemSpots->ListIndex();
    if (line != -1) {
      ui_->lstOpt1ItemSpots->RemoveItem(line);
      Changed();
    }
    InitControls();
    InitCommands();
  });
}

void frmItemsDetail::cmdDirectory_Click() {
  Trapped(__func__, [this] {
    global.gstrSelectedID = QString();
    frmDirectory(this).ShowModal();
    if (global.gstrSelectedID.isEmpty()) return;
    ui_->txtOpt2Directory->setText(global.gstrSelectedID);
    txtOpt2_Change();  // the same folder, chosen again, counts as well
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

void frmItemsDetail::cmdNormalizeItem_Click() {
  Trapped(__func__, [this] {
    const Catalogue catalogue = CurrentCatalogue();
    {
      const desktop::WaitPointer wait;
      for (int line = 0; line < ui_->lstOpt1ItemSpots->ListCount(); ++line) {
        const auto spot = static_cast<qint32>(ui_->lstOpt1ItemSpots->ItemData(line));
        global.lastResult = Reset_tblItemSpots_AantalGedraaid(spot, catalogue.databasePath, catalogue.itemSpots);
      }
    }
    ShowItemsMessage(u"Het 'Aantal gedraaid' van de item-spots verbonden met dit item werden op nul gezet,\r\n"
                     u"zodat elke item-spot voortaan gelijkwaardig behandeld wordt."_s,
                     64);
  });
}

void frmItemsDetail::cmdOk_Click() {
  Trapped(__func__, [this] { SaveAndClose(); });
}

// A locked item has nothing to save, so there is nothing to ask.
void frmItemsDetail::cmdAnnuleren_Click() {
  Trapped(__func__, [this] {
    if (isLocked_) isDirty_ = false;
    CancelAndClose();
  });
}

bool frmItemsDetail::IsWeekChosen() const {
  constexpr int kWeek = 2;  // the third entry
  return ui_->cboOpt2VariabelNaamGedeelte->ListIndex() == kWeek;
}

void frmItemsDetail::ShowOpt2Voorbeeld() {
  Trapped(__func__, [this] {
    const auto chosen = [](const controls::ComboBox& combo) {
      return combo.ListIndex() == -1 ? 0 : static_cast<int>(combo.ItemData(combo.ListIndex()));
    };
    FileNamePattern pattern;
    pattern.directory = ui_->txtOpt2Directory->text();
    pattern.fixedPart = ui_->txtOpt2VastNaamGedeelte->text();
    pattern.variableCode = chosen(*ui_->cboOpt2VariabelNaamGedeelte);
    pattern.format = runtime::TrimBlanks(ui_->cboOpt2VariabelNaamGedeelte->currentText());
    pattern.firstDayOfWeek = chosen(*ui_->cboOpt2Eerstedagvanweek);
    pattern.extension = ui_->txtOpt2FileExtensie->text();
    pattern.severalSpots = ui_->optMeerdereSpots->isChecked();
    ui_->txtOpt2Voorbeeld->setText(FileNameExample(pattern, runtime::Now()));
  });
}
