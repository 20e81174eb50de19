// SPDX-License-Identifier: MIT
#include "export/reports/frmOverzichten.h"

#include "data/Catalogue.h"
#include "export/reports/ReportCsv.h"
#include "export/reports/ReportPages.h"
#include "export/reports/ReportParts.h"
#include "export/reports/ui_frmOverzichten.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/FolderMemory.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "platform/runtime/Trapped.h"

#include <QDir>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardPaths>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using runtime::Presence;
using runtime::Trapped;

namespace {

constexpr qreal kPageMargin = 20;
// How long the first paint waits for the file checks.
constexpr std::chrono::milliseconds kPatience{200};
const QString kFolderKind = u"Overzicht"_s;

}  // namespace

frmOverzichten::frmOverzichten(QWidget* owner)
    : Form(owner),
      ui_(std::make_unique<Ui::frmOverzichten>()),
      checker_(this, [this](const std::vector<FilePresenceChecker::Result>& found, bool last) {
        OnFilesChecked(found, last);
      }) {
  ui_->setupUi(this);
  for (QRadioButton* choice : {ui_->optItemSpots, ui_->optItems, ui_->optVerlopen, ui_->optUitzendingen})
    connect(choice, &QRadioButton::toggled, this, [this](bool chosen) {
      if (chosen) optSoort_Click();
    });
  ui_->fraPeriode->hide();
  connect(ui_->cboSpot, &QComboBox::currentIndexChanged, this, &frmOverzichten::Periode_Change);
  for (const controls::DateCombo* day : {ui_->datVan, ui_->datTot})
    connect(day, &controls::DateCombo::textChanged, this, &frmOverzichten::Periode_Change);
  connect(ui_->cmdPdf, &QPushButton::clicked, this, &frmOverzichten::cmdPdf_Click);
  connect(ui_->cmdCsv, &QPushButton::clicked, this, &frmOverzichten::cmdCsv_Click);
  connect(ui_->cmdAfdrukken, &QPushButton::clicked, this, &frmOverzichten::cmdAfdrukken_Click);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, &frmOverzichten::cmdSluiten_Click);
  constexpr QSize kOpeningSize(820, 620);
  resize(kOpeningSize.boundedTo(screen()->availableSize()));
}

frmOverzichten::~frmOverzichten() = default;

void frmOverzichten::Form_Load() {
  Trapped(__func__, [&] {
    ShowReport();
    FillPeriod();
  });
}

// Presets: all spots, from the first of this month until today.
void frmOverzichten::FillPeriod() {
  const QSignalBlocker spots(ui_->cboSpot);
  const QSignalBlocker first(ui_->datVan);
  const QSignalBlocker last(ui_->datTot);
  const QDate today = runtime::Now().date();
  ui_->datVan->SetDate(QDate(today.year(), today.month(), 1));
  ui_->datTot->SetDate(today);
  std::vector<controls::ComboBox::Line> lines{{u"Alle item-spots"_s, 0}};
  for (dao::Recordset row = Rows(u"SELECT ID, Naam FROM %1 ORDER BY Naam"_s.arg(CurrentCatalogue().itemSpots));
       !row.Eof(); row.MoveNext())
    lines.push_back({TextOf(row, u"Naam"_s), row.Field(u"ID"_s).toLongLong()});
  ui_->cboSpot->Refill(lines);
  ui_->cboSpot->SetListIndex(0);
}

void frmOverzichten::Periode_Change() {
  Trapped(__func__, [&] {
    // Keep the report while a date is incomplete.
    if (ui_->optUitzendingen->isChecked() && ui_->datVan->HoldsDate() && ui_->datTot->HoldsDate()) ShowReport();
  });
}

void frmOverzichten::optSoort_Click() {
  Trapped(__func__, [&] {
    ui_->fraPeriode->setVisible(ui_->optUitzendingen->isChecked());
    ShowReport();
  });
}

// A report that could not be read cannot be saved either.
void frmOverzichten::ShowReport() {
  const desktop::WaitPointer wait;
  for (QPushButton* button : {ui_->cmdPdf, ui_->cmdCsv, ui_->cmdAfdrukken})
    button->setEnabled(false);
  ui_->txtOverzicht->clear();
  checker_.Cancel();
  report_ = ChosenReport();
  CheckFiles();
  ShowPages();
  for (QPushButton* button : {ui_->cmdPdf, ui_->cmdCsv, ui_->cmdAfdrukken})
    button->setEnabled(true);
}

Report frmOverzichten::ChosenReport() const {
  if (ui_->optUitzendingen->isChecked()) return ChosenAirings();
  if (ui_->optItems->isChecked()) return BlocksReport(presences_);
  return ui_->optVerlopen->isChecked() ? EndingReport() : CatalogueReport(presences_);
}

Report frmOverzichten::ChosenAirings() const {
  const QDate today = runtime::Now().date();
  const qint64 spot = ui_->cboSpot->ListIndex() > 0 ? ui_->cboSpot->ItemData(ui_->cboSpot->ListIndex()) : 0;
  const std::optional<qint32> only = spot == 0 ? std::nullopt : std::optional(static_cast<qint32>(spot));
  return AiringsReport(only, ui_->datVan->Date().value_or(today), ui_->datTot->Date().value_or(today));
}

void frmOverzichten::ShowPages() {
  FillDocument(*ui_->txtOverzicht->document(), report_);
  ui_->txtOverzicht->document()->setDocumentMargin(kPageMargin);
  ui_->txtOverzicht->moveCursor(QTextCursor::Start);
}

void frmOverzichten::CheckFiles() {
  files_ = report_.files;
  files_.removeDuplicates();
  stale_ = false;
  if (files_.isEmpty()) return;
  std::vector<FilePresenceChecker::Request> wanted;
  for (const QString& file : std::as_const(files_))
    wanted.push_back({static_cast<qint64>(wanted.size()), file});
  checker_.Start(std::move(wanted));
  checker_.WaitFor(kPatience);
}

void frmOverzichten::OnFilesChecked(const std::vector<FilePresenceChecker::Result>& found, bool last) {
  for (const FilePresenceChecker::Result& file : found) {
    const QString& path = files_.at(file.id);
    const bool wasMissing = presences_.value(path, Presence::There) == Presence::NotThere;
    if (wasMissing != (file.presence == Presence::NotThere)) stale_ = true;
    presences_.insert(path, file.presence);
  }
  if (!last || !stale_) return;
  try {
    report_ = ChosenReport();
  } catch (const runtime::Error&) {
    return;  // a background update: keep the shown report
  }
  if (ui_->txtOverzicht->document()->isEmpty()) return;  // shown with the first paint
  const int place = ui_->txtOverzicht->verticalScrollBar()->value();
  ShowPages();
  ui_->txtOverzicht->verticalScrollBar()->setValue(place);
}

QString frmOverzichten::Folder() const {
  if (!folder_.isEmpty()) return folder_;
  QString before = desktop::FolderMemory::FolderOf(kFolderKind);
  if (!before.isEmpty()) return before;
  // Qt returns this folder even if it does not exist.
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo::exists(documents) ? documents : QDir::homePath();
}

void frmOverzichten::Save(const QString& title, const QString& filter, const QString& suffix,
                          QByteArray (*bytesOf)(const Report&)) {
  const QString day = runtime::Now().date().toString(u"yyyy-MM-dd"_s);
  const QString proposal = Folder() + u'/' + report_.title + u' ' + day + suffix;
  const QString file = desktop::ChooseSaveFile(this, title, filter, proposal);
  if (file.isEmpty()) return;
  const desktop::WaitPointer wait;
  runtime::WriteFile(file, bytesOf(report_));
  folder_ = QFileInfo(file).path();
  desktop::FolderMemory::Chosen(kFolderKind, file);
  ui_->lblBewaard->setText(u"Bewaard: "_s + file);
}

void frmOverzichten::cmdPdf_Click() {
  Trapped(__func__, [&] { Save(u"Overzicht bewaren als PDF"_s, u"PDF (*.pdf)|*.pdf"_s, u".pdf"_s, PdfOf); });
}

void frmOverzichten::cmdCsv_Click() {
  Trapped(__func__,
          [&] { Save(u"Overzicht bewaren voor een spreadsheet"_s, u"CSV (*.csv)|*.csv"_s, u".csv"_s, CsvOf); });
}

void frmOverzichten::cmdAfdrukken_Click() {
  Trapped(__func__, [&] {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(report_.title);
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(u"Overzicht afdrukken"_s);
    if (dialog.exec() != QDialog::Accepted) return;
    const desktop::WaitPointer wait;
    PrintReport(report_, printer);
  });
}

void frmOverzichten::cmdSluiten_Click() {
  Trapped(__func__, [&] { Unload(); });
}
