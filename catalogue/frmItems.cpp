// SPDX-License-Identifier: MIT
#include "catalogue/frmItems.h"

#include "catalogue/BlockSurvey.h"
#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "export/playout/BlockReader.h"
#include "export/playout/BlockToHear.h"
#include "export/playout/PlanTexts.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItems.h"

#include <QLocale>
#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// What needs a person comes first.
qint64 RankOf(BlockMark::State state) {
  switch (state) {
    case BlockMark::State::Silent:
      return 0;
    case BlockMark::State::Short:
      return 1;
    case BlockMark::State::Remark:
      return 2;
    case BlockMark::State::Complete:
      return 3;
    case BlockMark::State::NotActive:
      break;
  }
  return 4;
}

void SetMark(controls::LineDetails& details, BlockMark::State state) {
  switch (state) {
    case BlockMark::State::NotActive:
      details.mark = controls::LineMark::Dash;
      details.quietText = true;
      return;
    case BlockMark::State::Silent:
      details.mark = controls::LineMark::Cross;
      details.tone = controls::LineTone::Wrong;
      details.wordInTone = true;
      return;
    case BlockMark::State::Short:
    case BlockMark::State::Remark:
      details.mark = controls::LineMark::Triangle;
      details.tone = controls::LineTone::Ends;
      details.wordInTone = true;
      return;
    case BlockMark::State::Complete:
      details.mark = controls::LineMark::Circle;
      details.tone = controls::LineTone::Runs;
      return;
  }
}

controls::LineDetails DetailsOf(const BlockMark& mark) {
  controls::LineDetails details;
  SetMark(details, mark.state);
  details.word = mark.word;
  if (mark.lengthMs && mark.spots > 0) details.trailing = DurationText(*mark.lengthMs);
  details.toolTip = mark.trouble.isEmpty() ? mark.word : mark.trouble;
  return details;
}

}  // namespace

frmItems::frmItems(QWidget* owner)
    : OverviewForm(owner, RecordKind::Item, u"item"_s, u"items"_s, Screen::ItemsDetail),
      ui_(std::make_unique<Ui::frmItems>()),
      survey_(std::make_unique<BlockSurvey>()) {
  ui_->setupUi(this);
  Wire(*ui_);
  connect(survey_.get(), &BlockSurvey::changed, this, &frmItems::SurveyChanged);
  connect(survey_.get(), &BlockSurvey::finished, this, &frmItems::SurveyFinished);
  ui_->cmdBeluisteren->setIcon(desktop::Icon(u"geluid"_s));
  connect(ui_->cmdBeluisteren, &QPushButton::clicked, this, &frmItems::cmdBeluisteren_Click);
  const auto* listen = new QShortcut(Qt::CTRL | Qt::Key_B, this);
  connect(listen, &QShortcut::activated, ui_->cmdBeluisteren, &QPushButton::click);
}

frmItems::~frmItems() = default;

void frmItems::InitCommands() {
  OverviewForm::InitCommands();
  Trapped(__func__,
          [&] { ui_->cmdBeluisteren->setEnabled(List().ListIndex() != -1 && HasScreen(Screen::Beluisteren)); });
}

QList<QPushButton*> frmItems::LineButtons() const {
  return {ui_->cmdBeluisteren};
}

void frmItems::cmdBeluisteren_Click() {
  Trapped(__func__, [&] {
    {
      const desktop::WaitPointer wait;
      SetBlockToHear(ReadBlock(CurrentCatalogue(), SelectedID()));
    }
    ShowScreen(Screen::Beluisteren, this);
  });
}

void frmItems::cmdVerwijder_Click() {
  Trapped(__func__, [&] { OpenCleanup(Screen::ItemOpruimen); });
}

OverviewForm::SetAktief frmItems::Deactivator() const {
  return Update_tblItems_Aktief;
}

void frmItems::Form_Unload() {
  Trapped(__func__, [&] {
    if (!global.online) return;
    RefreshLocalCopies(
        {{u"tblCopie_Items"_s, TransItemsToLocal}, {u"tblCopie_ItemsItemSpots"_s, TransItemsItemSpotsToLocal}});
  });
}

void frmItems::OnRefilled() {
  lines_.clear();
  for (int line = 0; line < List().ListCount(); ++line)
    lines_.insert(List().ItemData(line), line);
  sorted_ = false;
  survey_->Start();
}

void frmItems::SurveyChanged(const QList<qint64>& ids) {
  for (const qint64 id : ids) {
    const auto line = lines_.constFind(id);
    if (line != lines_.constEnd()) List().SetDetails(*line, DetailsOf(*survey_->Find(id)));
  }
  if (survey_->IsRead() && !std::exchange(sorted_, true)) Sort();
  ShowCount();
}

void frmItems::SurveyFinished() {
  Sort();
  ShowCount();
}

controls::ColumnTexts frmItems::Captions() const {
  return {u"Naam"_s, u"Status"_s, {}, u"Lengte"_s};
}

std::vector<qint64> frmItems::SortKeys(controls::LineColumn column) const {
  if (!survey_->IsRead()) return {};
  std::vector<qint64> keys(static_cast<std::size_t>(List().ListCount()), controls::ListBox::kNoKey);
  for (std::size_t line = 0; line < keys.size(); ++line) {
    const BlockMark* mark = survey_->Find(List().ItemData(static_cast<int>(line)));
    if (mark == nullptr) continue;
    if (column == controls::LineColumn::Word) keys[line] = RankOf(mark->state);
    if (column == controls::LineColumn::Trailing && mark->lengthMs && mark->spots > 0) keys[line] = *mark->lengthMs;
  }
  return keys;
}

QString frmItems::CountText() const {
  QString count = OverviewForm::CountText();
  if (List().ListCount() == 0) return count;
  if (!survey_->IsFinished()) return count + u", wordt nagekeken"_s;
  if (survey_->ProblemCount() == 0) return count;
  return count + u", "_s + QLocale(QLocale::Dutch).toString(survey_->ProblemCount()) + u" nu stil of te kort"_s;
}
