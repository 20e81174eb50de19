// SPDX-License-Identifier: MIT
#include "catalogue/frmItems.h"

#include "catalogue/BlockSurvey.h"
#include "catalogue/LocalCopy.h"
#include "data/Globals.h"
#include "data/Writes.h"
#include "export/playout/BlockReader.h"
#include "export/playout/BlockToHear.h"
#include "export/playout/PlanTexts.h"
#include "platform/desktop/Icons.h"
#include "platform/desktop/WaitPointer.h"
#include "platform/runtime/Trapped.h"
#include "ui_frmItems.h"

#include <QShortcut>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

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
  connect(survey_.get(), &BlockSurvey::finished, this, &frmItems::ShowCount);
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
  survey_->Start();
}

void frmItems::SurveyChanged(const QList<qint64>& ids) {
  for (const qint64 id : ids) {
    const auto line = lines_.constFind(id);
    if (line != lines_.constEnd()) List().SetDetails(*line, DetailsOf(*survey_->Find(id)));
  }
  ShowCount();
}

QString frmItems::CountText() const {
  const QString count = OverviewForm::CountText();
  if (!survey_->IsFinished() || survey_->ProblemCount() == 0) return count;
  return count + u", "_s + QString::number(survey_->ProblemCount()) + u" nu stil of te kort"_s;
}
