// SPDX-License-Identifier: MIT
#include "catalogue/frmWeek.h"

#include "catalogue/ui_frmWeek.h"
#include "data/Globals.h"
#include "data/forms/Screens.h"
#include "data/forms/SpotDetails.h"
#include "export/playout/BlockReader.h"
#include "platform/desktop/Icons.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Counted.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Trapped.h"

#include <QLocale>
#include <QScreen>
#include <QSet>
#include <QShortcut>

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr int kWeek = 7;
constexpr int kDaysShown = 2 * kWeek;
constexpr QSize kWeekSize(900, 620);

QString DayText(QDate day) {
  return QLocale(QLocale::Dutch).toString(day, u"dddd d MMMM"_s);
}

QString CountsText(const DayPlan& day) {
  const auto counted = [](std::size_t count, const QString& one, const QString& many) {
    return runtime::Counted(static_cast<qint64>(count), one, many);
  };
  QStringList parts{counted(day.running.size(), u"loopt"_s, u"lopen"_s)};
  if (!day.begins.empty()) parts += counted(day.begins.size(), u"begint"_s, u"beginnen"_s);
  if (!day.ends.empty()) parts += counted(day.ends.size(), u"eindigt"_s, u"eindigen"_s);
  if (!day.silent.empty()) parts += counted(day.silent.size(), u"item stil"_s, u"items stil"_s);
  return parts.join(u", "_s);
}

controls::LineDetails DetailsOf(const DayPlan& day) {
  controls::LineDetails details;
  details.mark = day.silent.empty() ? controls::LineMark::Circle : controls::LineMark::Cross;
  details.tone = day.silent.empty() ? controls::LineTone::Runs : controls::LineTone::Wrong;
  details.word = CountsText(day);
  details.toolTip = DayText(day.date) + u": "_s + details.word;
  return details;
}

using Ids = QSet<qint32>;

Ids SetOf(const std::vector<qint32>& ids) {
  return {ids.begin(), ids.end()};
}

// Of the item-spots in the blocks, whatever the day.
QStringList FilesIn(const std::vector<Block>& blocks) {
  QSet<QString> paths;
  for (const Block& block : blocks) {
    for (const BlockSpot& spot : block.spots) {
      if (!spot.facts.path.isEmpty()) paths.insert(spot.facts.path);
    }
  }
  return paths.values();
}

template <class Record>
const Record* Find(const std::vector<Record>& records, qint32 id) {
  const auto found = std::ranges::find(records, id, &Record::id);
  return found == records.end() ? nullptr : &*found;
}

}  // namespace

frmWeek::frmWeek(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmWeek>()), task_(this) {
  ui_->setupUi(this);
  SetUpIcons();
  ConnectEvents();
  resize(kWeekSize.boundedTo(screen()->availableSize()));
}

frmWeek::~frmWeek() = default;

void frmWeek::SetUpIcons() {
  ui_->cmdOpen->setIcon(desktop::Icon(u"open"_s));
}

void frmWeek::ConnectEvents() {
  connect(ui_->cmdVorige, &QPushButton::clicked, this, [this] { MoveBy(-kWeek); });
  connect(ui_->cmdVolgende, &QPushButton::clicked, this, [this] { MoveBy(kWeek); });
  connect(ui_->cmdVandaag, &QPushButton::clicked, this, [this] { MoveBy(0); });
  connect(ui_->lstDagen, &controls::ListBox::clicked, this, [this] { Trapped("lstDagen_Click", [&] { ShowDay(); }); });
  connect(ui_->lstDag, &controls::ListBox::clicked, this, [this] { ui_->cmdOpen->setEnabled(true); });
  connect(ui_->lstDag, &controls::ListBox::selectionLost, this, [this] { ui_->cmdOpen->setEnabled(false); });
  connect(ui_->lstDag, &controls::ListBox::doubleClicked, this, &frmWeek::OpenRecord);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    const auto* enter = new QShortcut(QKeySequence(key), ui_->lstDag, nullptr, nullptr, Qt::WidgetShortcut);
    connect(enter, &QShortcut::activated, this, &frmWeek::OpenRecord);
  }
  connect(ui_->cmdOpen, &QPushButton::clicked, this, &frmWeek::OpenRecord);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmWeek::Form_Load() {
  Trapped(__func__, [&] {
    const QDate today = runtime::Now().date();
    first_ = today.addDays(1 - today.dayOfWeek());
    ui_->lstDagen->setFocus();
    Read();
  });
}

// Reads the catalogue and looks at its files in the background: a drive that does not answer must not hold the window.
void frmWeek::Read() {
  planned_ = false;
  ShowPeriod();
  ui_->lstDagen->SetEmptyText(u"Wordt gelezen ..."_s);
  task_.Send([this, catalogue = CurrentCatalogue()](const LatestTask::Token& token) {
    try {
      auto records = std::make_shared<Records>();
      records->spots = BlockParts(catalogue).Spots();
      records->blocks = ReadBlocks(catalogue);
      records->files = LookAtFiles(FilesIn(records->blocks), Look::Presence);
      token.Post([this, records] {
        records_ = records;
        Plan();
      });
    } catch (const runtime::Error& error) {
      token.Post([this, reason = error.Description()] { ShowFailure(reason); });
    }
  });
}

void frmWeek::Plan() {
  if (!records_) return Read();
  planned_ = false;
  ShowPeriod();
  task_.Send([this, records = records_, first = first_](const LatestTask::Token& token) {
    token.Post([this, plans = PlanDays(records->spots, records->blocks, first, kDaysShown, In(records->files))] {
      ShowPlans(plans);
    });
  });
}

void frmWeek::ShowPlans(std::vector<DayPlan> plans) {
  plans_ = std::move(plans);
  planned_ = true;
  const QDate today = runtime::Now().date();
  int chosen = ui_->lstDagen->ListIndex();
  ui_->lstDagen->Clear();
  for (std::size_t i = 0; i < plans_.size(); ++i) {
    const bool isToday = plans_[i].date == today;
    ui_->lstDagen->AddItem(DayText(plans_[i].date) + (isToday ? u" (vandaag)"_s : QString()), qint64(i));
    ui_->lstDagen->SetDetails(static_cast<int>(i), DetailsOf(plans_[i]));
    if (chosen < 0 && isToday) chosen = static_cast<int>(i);
  }
  ui_->lstDagen->SetListIndex(std::max(chosen, 0));
}

void frmWeek::ShowFailure(const QString& reason) {
  planned_ = true;
  records_.reset();
  plans_.clear();
  ui_->lstDagen->Clear();
  ui_->lstDagen->SetEmptyText(u"De planning kan niet gelezen worden.\n"_s + reason);
  ShowDay();
}

void frmWeek::ShowPeriod() {
  const QDate last = first_.addDays(kDaysShown - 1);
  ui_->lblPeriode->setText(u"Week %1 en %2: %3 tot en met %4"_s.arg(first_.weekNumber())
                               .arg(last.weekNumber())
                               .arg(DayText(first_), DayText(last) + last.toString(u" yyyy"_s)));
}

// First what needs a hand, then what changes that day, then the rest.
void frmWeek::ShowDay() {
  const int line = ui_->lstDagen->ListIndex();
  ui_->lstDag->Clear();
  lines_.clear();
  ui_->cmdOpen->setEnabled(false);
  ui_->lblAantal->setText({});
  if (line < 0 || !records_) return;
  const DayPlan& day = plans_[static_cast<std::size_t>(line)];
  for (const qint32 id : day.silent)
    AddSilentItem(id);
  const Ids running = SetOf(day.running);
  const Ids begins = SetOf(day.begins);
  const Ids ends = SetOf(day.ends);
  for (const bool changing : {true, false}) {
    for (const BlockSpot& spot : records_->spots) {
      if (!running.contains(spot.id)) continue;
      const bool first = begins.contains(spot.id);
      const bool last = ends.contains(spot.id);
      if ((first || last) == changing) AddSpot(spot, first, last);
    }
  }
  ui_->lblAantal->setText(DayText(day.date) + u": "_s + CountsText(day));
}

void frmWeek::AddSilentItem(qint32 id) {
  const Block* block = Find(records_->blocks, id);
  const int line = ui_->lstDag->AddItem(block->naam, id);
  controls::LineDetails details;
  details.mark = controls::LineMark::Cross;
  details.tone = controls::LineTone::Wrong;
  details.word = u"item zonder geluid"_s;
  details.wordInTone = true;
  details.toolTip = u"Op geen enkel uur van deze dag heeft dit item iets om te spelen."_s;
  ui_->lstDag->SetDetails(line, details);
  lines_.push_back({true, id});
}

void frmWeek::AddSpot(const BlockSpot& spot, bool isFirstDay, bool isLastDay) {
  const int line = ui_->lstDag->AddItem(spot.naam, spot.id);
  controls::LineDetails details;
  details.mark = controls::LineMark::Circle;
  details.tone = controls::LineTone::Runs;
  if (isFirstDay) {
    details.mark = controls::LineMark::Clock;
    details.tone = controls::LineTone::Begins;
    details.word = u"begint"_s;
    details.wordInTone = true;
  }
  if (isLastDay) {
    details.mark = controls::LineMark::Triangle;
    details.tone = controls::LineTone::Ends;
    details.word = isFirstDay ? u"alleen deze dag"_s : u"eindigt"_s;
    details.wordInTone = true;
  }
  details.trailing = LengthText(spot.facts.lengteSec);
  ui_->lstDag->SetDetails(line, details);
  lines_.push_back({false, spot.id});
}

// 0: to the week of today.
void frmWeek::MoveBy(int days) {
  Trapped(__func__, [&] {
    const QDate today = runtime::Now().date();
    first_ = days == 0 ? today.addDays(1 - today.dayOfWeek()) : first_.addDays(days);
    if (days == 0) ui_->lstDagen->Clear();
    Plan();
  });
}

void frmWeek::OpenRecord() {
  Trapped(__func__, [&] {
    const int index = ui_->lstDag->ListIndex();
    if (index < 0) return;
    const Line line = lines_[static_cast<std::size_t>(index)];
    const Screen editor = line.isItem ? Screen::ItemsDetail : Screen::ItemSpotsDetail;
    if (!HasScreen(editor)) return;
    global.gstrSelectedID = QString::number(line.id);
    ShowScreen(editor, this);
    Read();
  });
}
