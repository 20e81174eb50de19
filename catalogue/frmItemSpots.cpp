// SPDX-License-Identifier: MIT
#include "catalogue/frmItemSpots.h"

#include "catalogue/LocalCopy.h"
#include "catalogue/SpotStateLoader.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "data/forms/SpotDetails.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItemSpots.h"

#include <algorithm>
#include <chrono>
#include <limits>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// Lists up to this length wait up to kFirstPaintWait for their marks, so that the first paint is complete. A longer
// list is painted first.
constexpr int kMaxLinesToWaitFor = 500;
constexpr std::chrono::milliseconds kFirstPaintWait{8};

// What needs a person comes first.
qint64 RankOf(SpotState state) {
  switch (state) {
    case SpotState::BestandOntbreekt:
      return 0;
    case SpotState::Verloopt:
      return 1;
    case SpotState::Loopt:
      return 2;
    case SpotState::BuitenUren:
      return 3;
    case SpotState::Begint:
      return 4;
    case SpotState::Verlopen:
      return 5;
    case SpotState::NietAktief:
      break;
  }
  return 6;
}

}  // namespace

frmItemSpots::frmItemSpots(QWidget* owner)
    : OverviewForm(owner, RecordKind::ItemSpot, u"item-spot"_s, u"item-spots"_s, Screen::ItemSpotsDetail),
      ui_(std::make_unique<Ui::frmItemSpots>()),
      survey_(std::make_unique<SpotStateLoader>()) {
  ui_->setupUi(this);
  Wire(*ui_);
  AcceptAudio();
  for (const SpotView view : kSpotViews)
    ui_->cboToestand->AddItem(TextOf(view), static_cast<qint64>(view));
  ui_->cboToestand->SelectWhereItemData(static_cast<qint64>(SpotView::Alle));
  connect(ui_->cboToestand, &QComboBox::currentIndexChanged, this, &frmItemSpots::cboToestand_Click);
  connect(survey_.get(), &SpotStateLoader::changed, this, &frmItemSpots::SurveyChanged);
  connect(survey_.get(), &SpotStateLoader::finished, this, &frmItemSpots::SurveyFinished);
}

frmItemSpots::~frmItemSpots() = default;

QString frmItemSpots::BothFilter(const QString& table) const {
  return u"WHERE "_s + table + u".Aktief = 1 OR "_s + table + u".Aktief = 0 "_s;
}

void frmItemSpots::InitCommands() {
  OverviewForm::InitCommands();
  Trapped(__func__, [&] { ui_->cmdDesaktiveer->setEnabled(List().ListIndex() != -1); });
}

void frmItemSpots::cmdVerwijder_Click() {
  Trapped(__func__, [&] { OpenCleanup(Screen::ItemSpotOpruimen); });
}

OverviewForm::SetAktief frmItemSpots::Deactivator() const {
  return Update_tblItemSpots_Aktief;
}

void frmItemSpots::Form_Unload() {
  // Required: both online and offline, unlike the other lists.
  Trapped(__func__, [&] { RefreshLocalCopies({{u"tblCopie_ItemSpots"_s, TransItemSpotsToLocal}}); });
}

QString frmItemSpots::WaitingNote() const {
  return global.online ? OverviewForm::WaitingNote() : tr("na het sluiten toont deze lijst weer de gedeelde database");
}

void frmItemSpots::OnRefilled() {
  IndexLines();
  if (ChosenView() != SpotView::Alle) List().Refilter();
  survey_->Start(List().ListCount() <= kMaxLinesToWaitFor ? kFirstPaintWait : std::chrono::milliseconds{});
}

void frmItemSpots::IndexLines() {
  states_.assign(static_cast<std::size_t>(List().ListCount()), std::nullopt);
  seconds_.assign(states_.size(), 0);
  sorted_ = false;
  counts_ = SpotCounts();
  lines_.clear();
  lines_.reserve(List().ListCount());
  for (int line = 0; line < List().ListCount(); ++line)
    lines_.insert(List().ItemData(line), line);
}

void frmItemSpots::SurveyChanged(const QList<qint64>& ids) {
  for (const qint64 id : ids) {
    const auto line = lines_.constFind(id);
    if (line == lines_.constEnd()) continue;
    const SpotStateLoader::Spot* spot = survey_->Find(id);
    SetState(*line, spot->state);
    seconds_[static_cast<std::size_t>(*line)] = std::max(0, spot->facts.lengteSec.value_or(0));
    List().SetDetails(*line, DetailsOf(spot->facts, spot->state));
  }
  if (survey_->IsRead() && !sorted_) {
    sorted_ = true;
    Sort();
  } else if (ChosenView() != SpotView::Alle) {
    List().Refilter();
  }
  ShowCount();
}

// Files may have changed states, and the search finds paths now.
void frmItemSpots::SurveyFinished() {
  Sort();
  if (!View().search.isEmpty()) List().Refilter();
  ShowCount();
}

controls::ColumnTexts frmItemSpots::Captions() const {
  return {u"Naam"_s, u"Status"_s, u"Einddatum"_s, u"Lengte"_s};
}

std::vector<qint64> frmItemSpots::SortKeys(controls::LineColumn column) const {
  if (!survey_->IsRead()) return {};
  std::vector<qint64> keys(static_cast<std::size_t>(List().ListCount()), controls::ListBox::kNoKey);
  for (std::size_t line = 0; line < keys.size(); ++line) {
    const SpotStateLoader::Spot* spot = survey_->Find(List().ItemData(static_cast<int>(line)));
    if (spot == nullptr) continue;
    if (column == controls::LineColumn::Word) keys[line] = RankOf(spot->state);
    if (column == controls::LineColumn::Date && spot->facts.eindDatum)
      keys[line] = spot->facts.eindDatum->toJulianDay();
    if (column == controls::LineColumn::Trailing && spot->facts.lengteSec) keys[line] = *spot->facts.lengteSec;
  }
  return keys;
}

void frmItemSpots::SetState(int line, SpotState state) {
  std::optional<SpotState>& known = states_[static_cast<std::size_t>(line)];
  if (known) counts_.Remove(*known);
  known = state;
  counts_.Add(state);
}

void frmItemSpots::ShowOnly(SpotView view) {
  ui_->cboToestand->SelectWhereItemData(static_cast<qint64>(view));
}

void frmItemSpots::cboToestand_Click() {
  Trapped(__func__, [&] {
    if (ChosenView() == SpotView::Alle) {
      List().SetFilter({});
    } else {
      List().SetFilter([this](int line) { return IsInView(line); });
    }
    ShowCount();
  });
}

SpotView frmItemSpots::ChosenView() const {
  const int choice = ui_->cboToestand->ListIndex();
  return choice == -1 ? SpotView::Alle : static_cast<SpotView>(ui_->cboToestand->ItemData(choice));
}

bool frmItemSpots::IsInView(int line) const {
  const auto at = static_cast<std::size_t>(line);  // while the list is filled it may be longer than states_
  return at < states_.size() && states_[at] && Matches(ChosenView(), *states_[at]);
}

QString frmItemSpots::CountText() const {
  QString count = OverviewForm::CountText();
  if (List().ListCount() == 0) return count;
  if (!survey_->IsFinished()) return count + u", wordt nagekeken"_s;
  if (List().ShownCount() == 0 || !survey_->IsRead()) return count;
  if (List().ShownCount() == List().ListCount()) count += u": "_s + counts_.Text();
  return count + u", samen "_s + TotalLength();
}

QString frmItemSpots::TotalLength() const {
  qint64 total = 0;
  for (int row = 0; row < List().ShownCount(); ++row) {
    const auto line = static_cast<std::size_t>(List().ShownLine(row));
    if (line < seconds_.size()) total += seconds_[line];  // see IsInView
  }
  return LengthText(static_cast<qint32>(std::min<qint64>(total, std::numeric_limits<qint32>::max())));
}

QString frmItemSpots::EmptyText() const {
  if (ChosenView() == SpotView::Alle || List().ListCount() == 0 || !View().search.isEmpty()) {
    return OverviewForm::EmptyText();
  }
  if (!survey_->IsFinished()) return tr("Bezig met zoeken ...");
  return u"Geen item-spots met de status ‘"_s + TextOf(ChosenView()) + u"’.\nKies ‘"_s + TextOf(SpotView::Alle) +
         u"’ om alles te zien."_s;
}
