#include "paper/frmOverzichten.h"

#include "paper/ReportCsv.h"
#include "paper/ReportPages.h"
#include "paper/Reports.h"
#include "paper/ui_frmOverzichten.h"
#include "platform/desktop/FileChooser.h"
#include "platform/desktop/FolderMemory.h"
#include "platform/desktop/Trapped.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"

#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QStandardPaths>

using namespace Qt::StringLiterals;
using desktop::Trapped;

namespace {

constexpr QSize kOpeningSize(820, 620);
constexpr qreal kPageMargin = 20;
const QString kFolderKind = u"Overzicht"_s;

}  // namespace

frmOverzichten::frmOverzichten(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmOverzichten>()) {
  ui_->setupUi(this);
  for (QRadioButton* choice : {ui_->optItemSpots, ui_->optItems, ui_->optVerlopen})
    connect(choice, &QRadioButton::toggled, this, [this](bool chosen) {
      if (chosen) optSoort_Click();
    });
  connect(ui_->cmdPdf, &QPushButton::clicked, this, &frmOverzichten::cmdPdf_Click);
  connect(ui_->cmdCsv, &QPushButton::clicked, this, &frmOverzichten::cmdCsv_Click);
  connect(ui_->cmdAfdrukken, &QPushButton::clicked, this, &frmOverzichten::cmdAfdrukken_Click);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, &frmOverzichten::cmdSluiten_Click);
  resize(kOpeningSize.boundedTo(screen()->availableSize()));
}

frmOverzichten::~frmOverzichten() = default;

void frmOverzichten::Form_Load() {
  Trapped(__func__, [&] { ShowReport(); });
}

void frmOverzichten::optSoort_Click() {
  Trapped(__func__, [&] { ShowReport(); });
}

// What cannot be read cannot be saved either.
void frmOverzichten::ShowReport() {
  const desktop::WaitPointer wait;
  for (QPushButton* button : {ui_->cmdPdf, ui_->cmdCsv, ui_->cmdAfdrukken})
    button->setEnabled(false);
  ui_->txtOverzicht->clear();
  report_ = ui_->optItems->isChecked()      ? BlocksReport()
            : ui_->optVerlopen->isChecked() ? EndingReport()
                                            : CatalogueReport();
  FillDocument(*ui_->txtOverzicht->document(), report_);
  ui_->txtOverzicht->document()->setDocumentMargin(kPageMargin);
  ui_->txtOverzicht->moveCursor(QTextCursor::Start);
  for (QPushButton* button : {ui_->cmdPdf, ui_->cmdCsv, ui_->cmdAfdrukken})
    button->setEnabled(true);
}

QString frmOverzichten::Folder() const {
  if (!folder_.isEmpty()) return folder_;
  const QString before = desktop::FolderMemory::FolderOf(kFolderKind);
  return before.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) : before;
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
  Trapped(__func__, [&] { Save(u"Overzicht bewaren voor een rekenblad"_s, u"CSV (*.csv)|*.csv"_s, u".csv"_s, CsvOf); });
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
