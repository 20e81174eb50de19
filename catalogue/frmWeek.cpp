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
constexpr QSize kWeekSize(1040, 620);

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
  if (!day.withoutFile.empty()) parts += counted(day.withoutFile.size(), u"zonder bestand"_s, u"zonder bestand"_s);
  if (!day.silent.empty()) parts += counted(day.silent.size(), u"item stil"_s, u"items stil"_s);
  return parts.join(u", "_s);
}

controls::LineDetails DetailsOf(const DayPlan& day) {
  controls::LineDetails details;
  const bool complete = day.silent.empty() && day.withoutFile.empty();
  details.mark = complete ? controls::LineMark::Circle : controls::LineMark::Cross;
  details.tone = complete ? controls::LineTone::Runs : controls::LineTone::Wrong;
  details.word = CountsText(day);
  details.toolTip = DayText(day.date) + u": "_s + details.word;
  return details;
}

using Ids = QSet<qint32>;

Ids SetOf(const std::vector<qint32>& ids) {
  return {ids.begin(), ids.end()};
}

QStringList FilesOf(const std::vector<BlockSpot>& spots) {
  QSet<QString> paths;
  for (const BlockSpot& spot : spots) {
    if (!spot.facts.path.isEmpty()) paths.insert(spot.facts.path);
  }
  return paths.values();
}

// The spots with these IDs, which are in the order of the spots.
std::vector<const BlockSpot*> Chosen(const std::vector<BlockSpot>& spots, const std::vector<qint32>& ids) {
  std::vector<const BlockSpot*> chosen;
  chosen.reserve(ids.size());
  for (const BlockSpot& spot : spots) {
    if (chosen.size() < ids.size() && spot.id == ids[chosen.size()]) chosen.push_back(&spot);
  }
  return chosen;
}

template <class Record>
const Record* Find(const std::vector<Record>& records, qint32 id) {
  const auto found = std::ranges::find(records, id, &Record::id);
  return found == records.end() ? nullptr : &*found;
}

}  // namespace

frmWeek::frmWeek(QWidget* owner) : Form(owner), ui_(std::make_unique<Ui::frmWeek>()), task_(this) {
  ui_->setupUi(this);
  filler_ = new controls::ListFiller(*ui_->lstDag, this);
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
  ui_->lstDagen->SetEmptyText(u"De planning wordt gelezen en de geluidsbestanden worden nagekeken ..."_s);
  task_.Send([this, catalogue = CurrentCatalogue()](const LatestTask::Token& token) {
    try {
      auto records = std::make_shared<Records>();
      records->spots = BlockParts(catalogue).Spots();
      records->blocks = ReadBlocks(catalogue);
      records->files = LookAtFiles(FilesOf(records->spots), Look::Presence);
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
    token.Post(
        [this, records, plans = PlanDays(records->spots, records->blocks, first, kDaysShown, In(records->files))] {
          ShowPlans(records, plans);
        });
  });
}

void frmWeek::ShowPlans(std::shared_ptr<const Records> records, std::vector<DayPlan> plans) {
  lines_.clear();
  shown_ = std::move(records);
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
  lines_.clear();
  shown_.reset();
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

void frmWeek::ShowDay() {
  const int line = ui_->lstDagen->ListIndex();
  lines_.clear();
  ui_->cmdOpen->setEnabled(false);
  ui_->lblAantal->setText({});
  if (line >= 0 && shown_) {
    const DayPlan& day = plans_[static_cast<std::size_t>(line)];
    lines_ = LinesOf(day);
    ui_->lblAantal->setText(DayText(day.date) + u": "_s + CountsText(day));
  }
  filler_->Fill(static_cast<int>(lines_.size()), [lines = lines_, records = shown_](int index) {
    return LineOf(lines[static_cast<std::size_t>(index)]);
  });
}

// First what needs a hand, then what changes that day, then the rest.
std::vector<frmWeek::Line> frmWeek::LinesOf(const DayPlan& day) const {
  std::vector<Line> lines;
  for (const qint32 id : day.silent)
    lines.push_back({Kind::SilentItem, Find(shown_->blocks, id), nullptr});
  for (const BlockSpot* spot : Chosen(shown_->spots, day.withoutFile))
    lines.push_back({Kind::WithoutFile, nullptr, spot});
  const Ids begins = SetOf(day.begins);
  const Ids ends = SetOf(day.ends);
  std::vector<Line> rest;
  for (const BlockSpot* spot : Chosen(shown_->spots, day.running)) {
    const bool first = begins.contains(spot->id);
    const bool last = ends.contains(spot->id);
    if (!first && !last) {
      rest.push_back({Kind::Runs, nullptr, spot});
      continue;
    }
    lines.push_back({!last ? Kind::Begins : first ? Kind::OneDay : Kind::Ends, nullptr, spot});
  }
  lines.insert(lines.end(), rest.begin(), rest.end());
  return lines;
}

controls::ListBox::Line frmWeek::LineOf(const Line& line) {
  controls::LineDetails details = LookOf(line.kind);
  if (line.item != nullptr) {
    details.toolTip = u"Op geen enkel uur van deze dag heeft dit item iets om te spelen."_s;
    return {line.item->naam, line.item->id, details};
  }
  if (line.kind == Kind::WithoutFile) details.toolTip = line.spot->facts.path;
  details.trailing = LengthText(line.spot->facts.lengteSec);
  return {line.spot->naam, line.spot->id, details};
}

controls::LineDetails frmWeek::LookOf(Kind kind) {
  using controls::LineMark;
  using controls::LineTone;
  switch (kind) {
    case Kind::SilentItem:
      return {LineMark::Cross, LineTone::Wrong, true, false, u"item stil"_s, {}, {}};
    case Kind::WithoutFile:
      return {LineMark::Cross, LineTone::Wrong, true, false, u"geluidsbestand ontbreekt"_s, {}, {}};
    case Kind::Begins:
      return {LineMark::Clock, LineTone::Begins, true, false, u"begint"_s, {}, {}};
    case Kind::OneDay:
      return {LineMark::Triangle, LineTone::Ends, true, false, u"alleen deze dag"_s, {}, {}};
    case Kind::Ends:
      return {LineMark::Triangle, LineTone::Ends, true, false, u"eindigt"_s, {}, {}};
    case Kind::Runs:
      break;
  }
  return {LineMark::Circle, LineTone::Runs, false, false, {}, {}, {}};
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
    const Line& line = lines_[static_cast<std::size_t>(index)];
    const Screen editor = line.item != nullptr ? Screen::ItemsDetail : Screen::ItemSpotsDetail;
    if (!HasScreen(editor)) return;
    global.gstrSelectedID = QString::number(line.item != nullptr ? line.item->id : line.spot->id);
    ShowScreen(editor, this);
    Read();
  });
}
