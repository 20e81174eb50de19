// SPDX-License-Identifier: MIT
#include "catalogue/OverviewForm.h"

#include "catalogue/OverviewActions.h"
#include "catalogue/OverviewBar.h"
#include "catalogue/OverviewKeys.h"
#include "catalogue/OverviewMenu.h"
#include "catalogue/OverviewSort.h"
#include "catalogue/WaitingLine.h"
#include "data/Globals.h"
#include "data/WaitingChanges.h"
#include "data/forms/DroppedAudio.h"
#include "data/forms/SavedRecords.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/QuietLine.h"
#include "platform/dao/Database.h"
#include "platform/desktop/FileDrop.h"
#include "platform/desktop/FocusFallback.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// The ID and the text of each row.
std::vector<controls::ListBox::Line> LinesOf(const QString& databasePath, const QString& select) {
  std::vector<controls::ListBox::Line> lines;
  dao::OpenDatabase(databasePath).Visit(select, [&](const dao::Row& row) {
    lines.push_back({row.Text(1).toString(), row.Field(0).toLongLong()});
    return true;
  });
  return lines;
}

// Opens a screen above this one, with the normal pointer until the screen sets its own.
void OpenScreen(Screen screen, QWidget* owner) {
  const desktop::ArrowPointer arrow;
  ShowScreen(screen, owner);
}

}  // namespace

OverviewForm::OverviewForm(QWidget* owner, RecordKind kind, const QString& one, const QString& many,
                           Screen detailEditor)
    : Form(owner), kind_(kind), one_(one), many_(many), detailEditor_(detailEditor) {}

void OverviewForm::WireControls(const Controls& controls) {
  controls_ = controls;
  SetUpIcons();
  connect(&List(), &controls::ListBox::clicked, this, &OverviewForm::lstOverzicht_Click);
  connect(&List(), &controls::ListBox::selectionLost, this, &OverviewForm::lstOverzicht_Click);
  connect(&List(), &controls::ListBox::doubleClicked, this, &OverviewForm::lstOverzicht_DblClick);
  connect(controls_.txtZoek, &QLineEdit::textChanged, this, &OverviewForm::txtZoek_Change);
  connect(controls_.cmdOpen, &QPushButton::clicked, this, &OverviewForm::cmdOpen_Click);
  connect(controls_.cmdNieuw, &QPushButton::clicked, this, &OverviewForm::cmdNieuw_Click);
  connect(controls_.cmdVerwijder, &QPushButton::clicked, this, &OverviewForm::cmdVerwijder_Click);
  connect(controls_.cmdSluiten, &QPushButton::clicked, this, &OverviewForm::cmdSluiten_Click);
  connect(controls_.linWachten, &WaitingLine::showAsked, this, &OverviewForm::cmdTonen_Click);
  if (controls_.cmdDesaktiveer != nullptr) {
    connect(controls_.cmdDesaktiveer, &QPushButton::clicked, this, &OverviewForm::cmdDesaktiveer_Click);
    connect(controls_.chkAktieve, &QCheckBox::toggled, this, &OverviewForm::chkAktieve_Click);
    connect(controls_.chkNietAktieve, &QCheckBox::toggled, this, &OverviewForm::chkNietAktieve_Click);
  }
  const auto* keys = new OverviewKeys(
      {controls_.lstOverzicht, controls_.txtZoek, controls_.cmdNieuw, controls_.cmdOpen, controls_.cmdVerwijder}, this);
  connect(keys, &OverviewKeys::refillRequested, this, &OverviewForm::Refill);
  WireMarked();
  sort_ = new OverviewSort(
      many_, Captions(), [this](controls::LineColumn column) { return SortKeys(column); }, List());
}

void OverviewForm::Sort() {
  sort_->Apply();
}

void OverviewForm::WireMarked() {
  actions_ = new OverviewActions(
      {kind_, one_, many_}, List(), *controls_.barRegel, [this] { Refill(); }, this);
  const bool aktief = controls_.cmdDesaktiveer != nullptr;
  QWidget* before = aktief ? static_cast<QWidget*>(controls_.chkNietAktieve) : controls_.cmdVerwijder;
  controls_.barRegel->Choose(aktief, kind_ == RecordKind::ItemSpot, before, controls_.cmdSluiten);
  QList<QPushButton*> own{controls_.cmdOpen};
  if (aktief) own += controls_.cmdDesaktiveer;
  own += LineButtons();
  own += controls_.cmdVerwijder;
  new OverviewMenu(List(), own, controls_.barRegel->findChildren<QPushButton*>());
}

void OverviewForm::SetUpIcons() {
  controls_.txtZoek->addAction(desktop::Icon(u"zoek"_s, desktop::IconTint::Quiet), QLineEdit::LeadingPosition);
  controls_.cmdNieuw->setIcon(desktop::Icon(u"nieuw"_s));
  controls_.cmdNieuw->setToolTip(tr("Nieuw (Insert)"));
  controls_.cmdOpen->setIcon(desktop::Icon(u"open"_s));
  controls_.cmdOpen->setToolTip(tr("Open (Enter)"));
  controls_.cmdVerwijder->setIcon(desktop::Icon(u"verwijder"_s, desktop::IconTint::Danger));
  controls_.cmdVerwijder->setToolTip(tr("Verwijder (Delete)"));
  if (controls_.cmdDesaktiveer != nullptr) controls_.cmdDesaktiveer->setIcon(desktop::Icon(u"desaktiveer"_s));
  List().setFocus();
  constexpr QSize kOpeningSize(920, 600);
  resize(kOpeningSize.boundedTo(screen()->availableSize()));
}

void OverviewForm::Form_Load() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    InitForm();
    FillLstOverzicht();
    ShowCount();
    InitCommands();
  });
}

void OverviewForm::InitForm() {
  Trapped(__func__, [&] {
    // Already checked in the .ui, so this does not fill the list a second time.
    if (controls_.chkAktieve != nullptr) controls_.chkAktieve->setChecked(true);
  });
}

void OverviewForm::InitCommands() {
  Trapped(__func__, [&] {
    const bool selected = List().ListIndex() != -1;
    controls_.cmdOpen->setEnabled(selected);
    controls_.cmdVerwijder->setEnabled(selected);
  });
}

QString OverviewForm::Filter(const QString& table) const {
  const bool both =
      controls_.chkAktieve == nullptr || (controls_.chkAktieve->isChecked() && controls_.chkNietAktieve->isChecked());
  if (both) return BothFilter(table);
  if (controls_.chkAktieve->isChecked()) return u"WHERE "_s + table + u".Aktief = 1 "_s;
  if (controls_.chkNietAktieve->isChecked()) return u"WHERE "_s + table + u".Aktief = 0 "_s;
  // No record has this value, so the query returns no rows.
  return u"WHERE "_s + table + u".Aktief = "_s + u"-10000"_s + u" "_s;
}

void OverviewForm::FillLstOverzicht() {
  Trapped(__func__, [&] {
    const Catalogue catalogue = CurrentCatalogue();
    const QString table = TableOf(catalogue);
    std::vector<controls::ListBox::Line> lines =
        LinesOf(catalogue.databasePath, u"SELECT "_s + table + u".ID, "_s + table + u".Naam As Code "_s + u"From "_s +
                                            table + u" "_s + Filter(table) + u"ORDER BY "_s + table + u".Naam"_s);
    List().Clear();
    List().AddItems(std::move(lines));
    read_ = true;
    OnRefilled();
    Sort();
    ShowCount();
    actions_->UpdateMarked();
  });
  ShowWaiting();
}

// A local database that cannot be read is reported by what needs it.
void OverviewForm::ShowWaiting() noexcept {
  try {
    controls_.linWachten->Show(HasScreen(Screen::OfflineLog) ? CountWaitingChanges() : 0, WaitingNote());
  } catch (const runtime::Error&) {
    controls_.linWachten->hide();
  }
}

QString OverviewForm::WaitingNote() const {
  return global.online ? tr("deze lijst toont de gedeelde database") : tr("deze lijst toont de kopie op deze computer");
}

void OverviewForm::cmdTonen_Click() {
  Trapped(__func__, [&] { OpenScreen(Screen::OfflineLog, this); });
}

void OverviewForm::Refill() {
  const desktop::FocusFallback list(List());
  FillLstOverzicht();
  InitCommands();
}

void OverviewForm::chkAktieve_Click() {
  Trapped(__func__, [&] { FillLstOverzicht(); });
}

void OverviewForm::chkNietAktieve_Click() {
  Trapped(__func__, [&] { FillLstOverzicht(); });
}

void OverviewForm::lstOverzicht_Click() {
  Trapped(__func__, [&] { InitCommands(); });
}

void OverviewForm::lstOverzicht_DblClick() {
  cmdOpen_Click();
}

void OverviewForm::cmdOpen_Click() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    global.gstrSelectedID = QString::number(SelectedID());
    ShowDetail();
  });
}

void OverviewForm::cmdNieuw_Click() {
  Trapped(__func__, [&] {
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    ShowDetail();
  });
}

void OverviewForm::AcceptAudio() {
  const auto* drop = new desktop::FileDrop(this);
  connect(drop, &desktop::FileDrop::dropped, this, &OverviewForm::Form_DropFiles);
  connect(drop, &desktop::FileDrop::hovering, &List(), &controls::ListBox::SetDropTarget);
}

void OverviewForm::Form_DropFiles(const QStringList& files) {
  Trapped(__func__, [&] {
    const QStringList audio = AcceptedAudio(files);
    if (audio.isEmpty()) return;
    QueueDroppedAudio(audio);
    global.gstrSelectedID = QString::fromUtf16(kNewRecord);
    ShowDetail();
  });
}

// Discards the queued files if the user stops before the last one.
void OverviewForm::ShowDetail() {
  const auto none = qScopeGuard(ForgetDroppedAudio);
  actions_->Forget();
  TakeSavedRecords();
  OpenScreen(detailEditor_, this);
  const QList<qint32> saved = TakeSavedRecords();
  Refill();
  actions_->ShowEdited(saved);
}

void OverviewForm::OpenCleanup(Screen cleanup) {
  const desktop::WaitPointer wait;
  global.gstrOpruimenID = QString::number(SelectedID());
  actions_->Forget();
  OpenScreen(cleanup, this);
  Refill();
}

void OverviewForm::cmdDesaktiveer_Click() {
  Trapped(__func__, [&] {
    const desktop::WaitPointer wait;
    const Catalogue catalogue = CurrentCatalogue();
    const qint32 id = SelectedID();
    const QString naam = List().Text(List().ListIndex());
    const std::optional<qint32> before = actions_->AktiefNow(id);
    global.lastResult = Deactivator()(id, 0, catalogue.databasePath, TableOf(catalogue));
    const bool written = global.lastResult;
    Refill();
    actions_->Deactivated(id, naam, before, written);
  });
}

void OverviewForm::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}

void OverviewForm::txtZoek_Change() {
  Trapped(__func__, [&] {
    List().SetFilterText(runtime::TrimBlanks(controls_.txtZoek->text()));
    ShowCount();
  });
}

qint32 OverviewForm::SelectedID() const {
  return static_cast<qint32>(List().ItemData(List().ListIndex()));
}

OverviewView OverviewForm::View() const {
  OverviewView view;
  view.one = one_;
  view.many = many_;
  view.read = read_;
  view.all = List().ListCount();
  view.shown = List().ShownCount();
  view.search = runtime::TrimBlanks(controls_.txtZoek->text());
  view.hasBoxes = controls_.chkAktieve != nullptr;
  view.aktieve = view.hasBoxes && controls_.chkAktieve->isChecked();
  view.nietAktieve = view.hasBoxes && controls_.chkNietAktieve->isChecked();
  return view;
}

void OverviewForm::ShowCount() {
  controls_.lblAantal->setText(CountText());
  List().SetEmptyText(EmptyText());
}
