// SPDX-License-Identifier: MIT
#include "export/frmOfflineLog.h"

#include "data/Globals.h"
#include "data/LogQueue.h"
#include "export/ui_frmOfflineLog.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QScreen>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::Counted;
using runtime::Trapped;

namespace {

constexpr QSize kLogSize(860, 600);

controls::LineDetails DetailsOf(const LogChange& change) {
  using controls::LineMark;
  using controls::LineTone;
  controls::LineDetails details;
  details.trailing = change.summary;
  details.toolTip = change.details.isEmpty() ? change.record : change.details.join(u'\n');
  switch (change.kind) {
    case LogChange::Kind::New:
      details.mark = LineMark::Circle;
      details.tone = LineTone::Runs;
      details.word = u"nieuw"_s;
      break;
    case LogChange::Kind::Changed:
      details.mark = LineMark::Clock;
      details.tone = LineTone::Begins;
      details.word = u"gewijzigd"_s;
      break;
    case LogChange::Kind::Deleted:
      details.mark = LineMark::Cross;
      details.tone = LineTone::Wrong;
      details.word = u"verwijderd"_s;
      break;
    case LogChange::Kind::Unknown:
      details.mark = LineMark::Dash;
      details.word = u"onbekend"_s;
  }
  return details;
}

// The number is that of the main window, which counts the changes that are not in the log yet too.
QString CountTextOf(const QList<LogChange>& changes) {
  const int queued = QueuedStatementCount();
  if (changes.isEmpty() && queued == 0) return {};
  QString text = Counted(changes.size() + queued, u"wijziging"_s, u"wijzigingen"_s) + u" in de volgende export"_s;
  if (queued > 0)
    text += u", %1 niet in het logboek"_s.arg(Counted(queued, u"daarvan staat nog"_s, u"daarvan staan nog"_s));
  return text;
}

}  // namespace

frmOfflineLog::frmOfflineLog(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmOfflineLog>()), task_(this) {
  ui_->setupUi(this);
  ui_->txtSql->hide();
  connect(ui_->lstWijzigingen, &controls::ListBox::clicked, this, &frmOfflineLog::ShowChosen);
  connect(ui_->lstWijzigingen, &controls::ListBox::selectionLost, this, &frmOfflineLog::ShowChosen);
  connect(ui_->chkSql, &QCheckBox::toggled, ui_->txtSql, &QWidget::setVisible);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { Unload(); });
  resize(kLogSize.boundedTo(screen()->availableSize()));
}

frmOfflineLog::~frmOfflineLog() = default;

void frmOfflineLog::Form_Load() {
  Trapped(__func__, [&] {
    ui_->lstWijzigingen->setFocus();
    Read();
  });
}

// In the background: a log may be long.
void frmOfflineLog::Read() {
  ui_->lstWijzigingen->SetEmptyText(u"Het logboek wordt gelezen ..."_s);
  task_.Send([this, local = global.localDatabasePath](const LatestTask::Token& token) {
    try {
      token.Post([this, changes = ReadLogChanges(local)] { ShowChanges(changes); });
    } catch (const runtime::Error& error) {
      token.Post([this, reason = error.Description()] {
        read_ = true;
        ui_->lstWijzigingen->SetEmptyText(u"Het logboek kan niet gelezen worden.\n"_s + reason);
      });
    }
  });
}

void frmOfflineLog::ShowChanges(QList<LogChange> changes) {
  Trapped(__func__, [&] {
    changes_ = std::move(changes);
    read_ = true;
    ui_->lstWijzigingen->SetEmptyText(u"Er wacht niets op een export."_s);
    std::vector<controls::ListBox::Line> lines;
    for (const LogChange& change : std::as_const(changes_))
      lines.push_back({change.record, 0});
    ui_->lstWijzigingen->AddItems(std::move(lines));
    for (qsizetype i = 0; i < changes_.size(); ++i)
      ui_->lstWijzigingen->SetDetails(static_cast<int>(i), DetailsOf(changes_[i]));
    ui_->lblAantal->setText(CountTextOf(changes_));
    if (!changes_.isEmpty()) ui_->lstWijzigingen->SetListIndex(0);
  });
}

void frmOfflineLog::ShowChosen() {
  const int line = ui_->lstWijzigingen->ListIndex();
  const LogChange chosen = line < 0 ? LogChange() : changes_[line];
  const QString nothing = line < 0 ? QString() : u"Geen enkel veld is anders dan ervoor."_s;
  ui_->txtVelden->setPlainText(chosen.details.isEmpty() ? nothing : chosen.details.join(u'\n'));
  ui_->txtSql->setPlainText(chosen.statements.join(u'\n'));
}
