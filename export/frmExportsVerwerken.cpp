// SPDX-License-Identifier: MIT
#include "export/frmExportsVerwerken.h"

#include "data/Globals.h"
#include "export/FolderSelect.h"
#include "export/ui_frmExportsVerwerken.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/desktop/Windows.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"

#include <QHeaderView>
#include <QScreen>
#include <QTabBar>

using namespace Qt::StringLiterals;
using apply::What;
using runtime::Counted;
using runtime::Trapped;

namespace {

constexpr QSize kApplySize(940, 640);

controls::LineDetails ExplanationOf(const apply::ReportLine& line) {
  controls::LineDetails details;
  details.word = apply::WordFor(line.what);
  details.toolTip = line.text;
  switch (line.what) {
    case What::Conflict:
      details.mark = controls::LineMark::Cross;
      details.tone = controls::LineTone::Wrong;
      details.wordInTone = true;
      break;
    case What::Renumbered:
    case What::Note:
      details.mark = controls::LineMark::Triangle;
      details.tone = controls::LineTone::Ends;
      break;
    case What::Unchanged:
      details.mark = controls::LineMark::Dash;
      details.quietText = true;
      break;
    default:
      details.mark = controls::LineMark::Circle;
      details.tone = controls::LineTone::Runs;
  }
  return details;
}

void AddExplanation(controls::ListBox& list, const QString& text, controls::LineMark mark = controls::LineMark::None) {
  const int line = list.AddItem(text);
  controls::LineDetails details;
  details.mark = mark;
  details.toolTip = text;
  if (mark == controls::LineMark::Cross) details.tone = controls::LineTone::Wrong;
  if (mark == controls::LineMark::Triangle) details.tone = controls::LineTone::Ends;
  list.SetDetails(line, details);
}

// As users count them: an item and its list of spots are one.
qint64 ChangesIn(const apply::ExportFile& file) {
  return std::ranges::count_if(
      file.statements, [](const apply::ExportStatement& statement) { return statement.table != apply::Table::Links; });
}

}  // namespace

frmExportsVerwerken::frmExportsVerwerken(QWidget* owner)
    : Form(owner),
      ui_(std::make_unique<Ui::frmExportsVerwerken>()),
      isFolder_(new FolderSelect(this, u"isFolder"_s)),
      task_(this) {
  ui_->setupUi(this);
  isFolder_->SetPrompt(u"Kies de map met exports"_s);
  SetUpIcons();
  ConnectEvents();
  ui_->lblVoortgang->hide();
  // The tabs take the focus, not the frame around them.
  ui_->tabVerwerken->tabBar()->setFocusPolicy(Qt::TabFocus);
  ui_->tabVerwerken->tabBar()->setAccessibleName(ui_->tabVerwerken->accessibleName());
  ui_->tblVelden->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  ui_->tblVelden->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  ui_->tblVelden->verticalHeader()->hide();
  resize(kApplySize.boundedTo(screen()->availableSize()));
}

frmExportsVerwerken::~frmExportsVerwerken() = default;

void frmExportsVerwerken::SetUpIcons() {
  ui_->cmdMap->setIcon(desktop::Icon(u"map"_s));
}

void frmExportsVerwerken::ConnectEvents() {
  connect(ui_->cmdMap, &QPushButton::clicked, this, &frmExportsVerwerken::cmdMap_Click);
  connect(ui_->txtBron, &QLineEdit::editingFinished, this, [this] { Trapped("txtBron_Change", [&] { Read(); }); });
  connect(ui_->lstBestanden, &controls::ListBox::clicked, this, &frmExportsVerwerken::lstBestanden_Click);
  connect(ui_->lstBotsingen, &controls::ListBox::clicked, this, &frmExportsVerwerken::lstBotsingen_Click);
  connect(ui_->cmdVerwerken, &QPushButton::clicked, this, &frmExportsVerwerken::cmdVerwerken_Click);
  connect(ui_->cmdServer, &QPushButton::clicked, this, [this] { Settle(apply::Side::Server); });
  connect(ui_->cmdOffline, &QPushButton::clicked, this, [this] { Settle(apply::Side::Offline); });
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { CloseAsked(); });
}

void frmExportsVerwerken::Form_Load() {
  Trapped(__func__, [&] {
    folder_ = runtime::TrimBlanks(global.exportPath);
    isFolder_->SetFolder(folder_);
    ui_->lstBestanden->setFocus();
    Read();
  });
}

// A file that is being carried out is finished first.
void frmExportsVerwerken::CloseAsked() {
  if (!busy_) Unload();
}

// The workstation of a file: what its basis says, else what the user typed.
frmExportsVerwerken::Contents frmExportsVerwerken::ReadContents(const QString& folder, const QString& database,
                                                                const QString& source) {
  Contents contents;
  try {
    const QList<apply::Processed> ledger = apply::ReadLedger(dao::OpenDatabase(database));
    contents.conflicts = apply::ReadConflicts(database);
    for (const QString& path : apply::ExportsIn(folder)) {
      Entry entry{path, {}, {}, {}, {}};
      try {
        entry.file = apply::ReadExport(path);
        const QString from = apply::SourceOf(*entry.file);
        entry.processed = apply::FindProcessed(ledger, *entry.file, from.isEmpty() ? source : from);
      } catch (const runtime::Error& error) {
        entry.trouble = error.Description();
      }
      contents.files.push_back(std::move(entry));
    }
  } catch (const runtime::Error& error) {
    contents.trouble = error.Description();
  }
  return contents;
}

// In the background: the folder or the server may be slow or away.
void frmExportsVerwerken::Read() {
  read_ = false;
  ui_->lblMap->setText(folder_.isEmpty() ? u"Er is geen exportmap."_s : folder_);
  ui_->lstBestanden->Clear();
  ui_->lstBestanden->SetEmptyText(u"De map wordt gelezen ..."_s);
  InitCommands();
  task_.Send([this, folder = folder_, database = global.serverDatabasePath,
              source = runtime::TrimBlanks(ui_->txtBron->text())](const LatestTask::Token& token) {
    token.Post([this, contents = ReadContents(folder, database, source)] { ShowContents(contents); });
  });
}

void frmExportsVerwerken::ShowContents(Contents contents) {
  contents_ = std::move(contents);
  read_ = true;
  if (ui_->txtBron->text().isEmpty()) {
    for (const Entry& entry : contents_.files) {
      if (entry.file && !apply::SourceOf(*entry.file).isEmpty()) ui_->txtBron->setText(apply::SourceOf(*entry.file));
    }
  }
  ui_->lstBestanden->SetEmptyText(contents_.trouble.isEmpty() ? u"In deze map staat geen export."_s
                                                              : contents_.trouble);
  ShowFiles();
  ShowConflicts();
}

bool frmExportsVerwerken::IsDue(const Entry& entry) const {
  return entry.file && !entry.processed;
}

void frmExportsVerwerken::ShowFiles() {
  ui_->lstBestanden->Clear();
  for (std::size_t i = 0; i < contents_.files.size(); ++i) {
    ui_->lstBestanden->AddItem(contents_.files[i].path.section(u'\\', -1).section(u'/', -1), qint64(i));
    ShowLine(static_cast<int>(i));
  }
  ShowCounts();
  ShowExplanation();
}

// What is left to do; in sight on both tabs.
void frmExportsVerwerken::ShowCounts() {
  const auto due = std::ranges::count_if(contents_.files, [this](const Entry& entry) { return IsDue(entry); });
  QStringList texts;
  if (due > 0)
    texts += Counted(due, u"bestand te verwerken"_s, u"bestanden te verwerken"_s);
  else if (!contents_.files.empty())
    texts += u"alle bestanden zijn verwerkt"_s;
  const auto conflicts = contents_.conflicts.size();
  if (conflicts > 0) texts += Counted(conflicts, u"botsing wacht"_s, u"botsingen wachten"_s) + u" op uw keuze"_s;
  QString text = texts.join(u"; "_s);
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  ui_->lblAantal->setText(text);
}

void frmExportsVerwerken::ShowLine(int line) {
  const Entry& entry = contents_.files[static_cast<std::size_t>(line)];
  controls::LineDetails details;
  details.mark = controls::LineMark::Clock;
  details.tone = controls::LineTone::Begins;
  details.word = u"niet verwerkt"_s;
  details.toolTip = entry.path;
  if (entry.file) {
    details.trailing = Counted(ChangesIn(*entry.file), u"wijziging"_s, u"wijzigingen"_s);
  } else {
    details.mark = controls::LineMark::Cross;
    details.tone = controls::LineTone::Wrong;
    details.word = u"niet te lezen"_s;
    details.wordInTone = true;
  }
  if (entry.processed) {
    details.mark = controls::LineMark::Circle;
    details.tone = controls::LineTone::Runs;
    details.quietText = true;
    details.word = u"verwerkt op "_s + entry.processed->moment.toString(u"dd-MM-yyyy HH:mm"_s);
  }
  ui_->lstBestanden->SetDetails(line, details);
}

apply::Options frmExportsVerwerken::OptionsFor(const Entry& entry) {
  apply::Options options;
  options.source = apply::SourceOf(*entry.file);
  if (options.source.isEmpty()) options.source = runtime::TrimBlanks(ui_->txtBron->text());
  options.who = qEnvironmentVariable("USER");
  options.progress = [this](int done, int all) {
    ShowProgress(u"%1 % verwerkt ..."_s.arg(all > 0 ? qint64{100} * done / all : 100));
  };
  return options;
}

void frmExportsVerwerken::PlanChosen(Entry& entry) {
  if (!IsDue(entry) || entry.result || OptionsFor(entry).source.isEmpty()) return;
  const desktop::WaitPointer wait;
  try {
    entry.result = apply::Plan(global.serverDatabasePath, {*entry.file}, OptionsFor(entry)).front();
  } catch (const runtime::Error& error) {
    entry.trouble = error.Description();
  }
  ui_->lblVoortgang->hide();
}

// In plain words: what the chosen file did or would do.
void frmExportsVerwerken::ShowExplanation() {
  ui_->lstUitleg->Clear();
  InitCommands();
  const int line = ui_->lstBestanden->ListIndex();
  if (line < 0) return;
  const Entry& entry = contents_.files[static_cast<std::size_t>(line)];
  if (!entry.trouble.isEmpty()) AddExplanation(*ui_->lstUitleg, entry.trouble, controls::LineMark::Cross);
  if (entry.processed) {
    AddExplanation(*ui_->lstUitleg, u"Verwerkt als %1, van %2: %3"_s.arg(entry.processed->name, entry.processed->source,
                                                                         entry.processed->summary));
  }
  if (IsDue(entry) && ui_->txtBron->text().trimmed().isEmpty() && !entry.result)
    AddExplanation(*ui_->lstUitleg, u"Vul eerst het werkstation in dat dit bestand maakte."_s,
                   controls::LineMark::Triangle);
  if (!entry.result) return;
  if (!entry.processed) AddExplanation(*ui_->lstUitleg, u"Zou doen: "_s + entry.result->Summary());
  if (entry.result->LooksCarriedOutElsewhere()) {
    AddExplanation(*ui_->lstUitleg,
                   u"De meeste wijzigingen staan er al: dit bestand lijkt al verwerkt met een ander programma."_s,
                   controls::LineMark::Triangle);
  }
  for (const apply::ReportLine& one : entry.result->lines) {
    const int added = ui_->lstUitleg->AddItem(one.text);
    ui_->lstUitleg->SetDetails(added, ExplanationOf(one));
  }
}

void frmExportsVerwerken::InitCommands() {
  const bool hasDue =
      read_ && std::ranges::any_of(contents_.files, [this](const Entry& entry) { return IsDue(entry); });
  const bool hasConflict = ui_->lstBotsingen->ListIndex() >= 0;
  ui_->cmdVerwerken->setEnabled(hasDue && !busy_);
  ui_->cmdServer->setEnabled(hasConflict && !busy_);
  ui_->cmdOffline->setEnabled(hasConflict && !busy_);
  ui_->cmdSluiten->setEnabled(!busy_);
}

void frmExportsVerwerken::lstBestanden_Click() {
  Trapped(__func__, [&] {
    const int line = ui_->lstBestanden->ListIndex();
    if (line >= 0) PlanChosen(contents_.files[static_cast<std::size_t>(line)]);
    ShowExplanation();
  });
}

void frmExportsVerwerken::cmdMap_Click() {
  Trapped(__func__, [&] {
    const QString chosen = isFolder_->Browse();
    if (chosen.isEmpty()) return;
    folder_ = chosen;
    Read();
  });
}

void frmExportsVerwerken::cmdVerwerken_Click() {
  Trapped(__func__, [&] {
    busy_ = true;
    InitCommands();
    const int reported = Process();
    ui_->lblVoortgang->hide();
    busy_ = false;
    ShowFiles();
    if (reported >= 0) ui_->lstBestanden->SetListIndex(reported);
    contents_.conflicts = apply::ReadConflicts(global.serverDatabasePath);
    ShowConflicts();
  });
}

// In order; after a file that fails, the later ones of the folder are left for the next time. Returns the line of the
// file whose report the user must see: the one that failed, else the first with a conflict, else the last; -1 = none.
int frmExportsVerwerken::Process() {
  const desktop::WaitPointer wait;
  int reported = -1;
  bool hasConflict = false;
  for (std::size_t i = 0; i < contents_.files.size(); ++i) {
    Entry& entry = contents_.files[i];
    if (!IsDue(entry)) continue;
    ShowProgress(u"%1 wordt verwerkt ..."_s.arg(entry.file->name));
    const apply::Options options = OptionsFor(entry);
    try {
      if (options.source.isEmpty()) throw runtime::Error(u"Vul eerst het werkstation in dat dit bestand maakte."_s);
      entry.result = apply::CarryOut(global.serverDatabasePath, *entry.file, options);
      const QList<apply::Processed> ledger = apply::ReadLedger(dao::OpenDatabase(global.serverDatabasePath));
      entry.processed = apply::FindProcessed(ledger, *entry.file, options.source);
      entry.trouble.clear();
    } catch (const runtime::Error& error) {
      entry.trouble = error.Description();
      return static_cast<int>(i);
    }
    if (!hasConflict) reported = static_cast<int>(i);
    hasConflict = hasConflict || entry.result->Count(What::Conflict) > 0;
  }
  return reported;
}

void frmExportsVerwerken::ShowProgress(const QString& text) {
  ui_->lblVoortgang->setText(text);
  ui_->lblVoortgang->show();
  desktop::RepaintWindows();
}
