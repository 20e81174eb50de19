// SPDX-License-Identifier: MIT
#include "app/TodayPanel.h"

#include "app/ui_TodayPanel.h"
#include "catalogue/BlockSurvey.h"
#include "catalogue/SpotStateLoader.h"
#include "platform/runtime/Counted.h"

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

namespace {

// A number and its words; without a number the plural, with a dash or the reason.
struct Row {
  QLabel* number;
  QLabel* words;
  QString one;
  QString many;
};

void Show(const Row& row, const std::optional<int>& count, const UnreadableReason& reason) {
  const bool failed = !count && !reason.brief.isEmpty();
  row.number->setText(count ? runtime::DutchNumber(*count) : failed ? u"?"_s : u"–"_s);
  row.words->setText(count == 1 ? row.one : failed ? row.many + u": "_s + reason.brief : row.many);
  row.words->setToolTip(failed ? reason.full : QString());
}

QFont NumberFont(QFont font) {
  font.setPointSizeF(font.pointSizeF() * 1.4);
  font.setWeight(QFont::DemiBold);
  return font;
}

}  // namespace

TodayPanel::TodayPanel(QWidget* parent)
    : QGroupBox(parent),
      ui_(std::make_unique<Ui::TodayPanel>()),
      survey_(std::make_unique<SpotStateLoader>()),
      blocks_(std::make_unique<BlockSurvey>()) {
  ui_->setupUi(this);
  connect(survey_.get(), &SpotStateLoader::changed, this, &TodayPanel::ShowCounts);
  connect(survey_.get(), &SpotStateLoader::finished, this, &TodayPanel::OnSpotsFinished);
  connect(blocks_.get(), &BlockSurvey::finished, this, &TodayPanel::ShowCounts);
  InitRows();
  ShowCounts();
  ShowNotExported(std::nullopt);
}

TodayPanel::~TodayPanel() = default;

void TodayPanel::InitRows() {
  ui_->mrkLopen->Show(LineMark::Circle, LineTone::Runs);
  ui_->mrkVerlopen->Show(LineMark::Triangle, LineTone::Ends);
  ui_->mrkZonderBestand->Show(LineMark::Cross, LineTone::Wrong);
  ui_->mrkBlokken->Show(LineMark::Cross, LineTone::Wrong);
  ui_->mrkExport->Show(LineMark::Clock, LineTone::Begins);
  // What the marks say to those who do not see them.
  ui_->mrkLopen->setAccessibleName(u"loopt"_s);
  ui_->mrkVerlopen->setAccessibleName(u"verloopt"_s);
  ui_->mrkZonderBestand->setAccessibleName(u"geluidsbestand ontbreekt"_s);
  ui_->mrkBlokken->setAccessibleName(u"stil of te kort"_s);
  ui_->mrkExport->setAccessibleName(u"wacht op export"_s);
  const QFont number = NumberFont(font());
  for (QLabel* label : {ui_->lblAantalLopen, ui_->lblAantalVerlopen, ui_->lblAantalZonderBestand, ui_->lblAantalBlokken,
                        ui_->lblAantalExport}) {
    label->setFont(number);
    label->setMinimumWidth(QFontMetrics(number).horizontalAdvance(u"8888"_s));
  }
  connect(ui_->cmdLopen, &QPushButton::clicked, this, [this] { Q_EMIT spotsAsked(SpotView::LopenVandaag); });
  connect(ui_->cmdVerlopen, &QPushButton::clicked, this, [this] { Q_EMIT spotsAsked(SpotView::VerlopenBinnenkort); });
  connect(ui_->cmdZonderBestand, &QPushButton::clicked, this, [this] { Q_EMIT spotsAsked(SpotView::ZonderBestand); });
  connect(ui_->cmdBlokken, &QPushButton::clicked, this, &TodayPanel::blocksAsked);
  connect(ui_->cmdWachten, &QPushButton::clicked, this, &TodayPanel::waitingAsked);
  connect(ui_->cmdExport, &QPushButton::clicked, this, &TodayPanel::exportAsked);
}

void TodayPanel::Count() {
  survey_->Start();
  blocks_->Start();
  ShowCounts();
}

void TodayPanel::OnSpotsFinished() {
  ShowCounts();
  Q_EMIT catalogueRead(survey_->Failure());
}

// A spot without its file does not run, so each count depends on the files.
void TodayPanel::ShowCounts() {
  const auto count = [this](SpotView view) {
    return survey_->AreCountsKnown() ? std::optional(CountIn(view, survey_->Counts())) : std::nullopt;
  };
  Show({ui_->lblAantalLopen, ui_->lblLopen, u"item-spot loopt vandaag"_s, u"item-spots lopen vandaag"_s},
       count(SpotView::LopenVandaag), survey_->Failure());
  Show({ui_->lblAantalVerlopen, ui_->lblVerlopen, u"item-spot verloopt binnen 7 dagen"_s,
        u"item-spots verlopen binnen 7 dagen"_s},
       count(SpotView::VerlopenBinnenkort), survey_->Failure());
  Show({ui_->lblAantalZonderBestand, ui_->lblZonderBestand, u"item-spot zonder geluidsbestand"_s,
        u"item-spots zonder geluidsbestand"_s},
       count(SpotView::ZonderBestand), survey_->Failure());
  Show({ui_->lblAantalBlokken, ui_->lblBlokken, u"item zou nu stil zijn of te kort"_s,
        u"items zouden nu stil zijn of te kort"_s},
       blocks_->IsRead() && blocks_->IsFinished() ? std::optional(blocks_->ProblemCount()) : std::nullopt,
       blocks_->Failure());
}

void TodayPanel::ShowNotExported(const std::optional<int>& count, const UnreadableReason& reason) {
  Show({ui_->lblAantalExport, ui_->lblExport, u"wijziging nog niet geëxporteerd"_s,
        u"wijzigingen nog niet geëxporteerd"_s},
       count, reason);
}

void TodayPanel::EnableButtons(bool spots, bool blocks, bool exporting, bool waiting) {
  for (QPushButton* button : {ui_->cmdLopen, ui_->cmdVerlopen, ui_->cmdZonderBestand})
    button->setEnabled(spots);
  ui_->cmdBlokken->setEnabled(blocks);
  ui_->cmdExport->setEnabled(exporting);
  ui_->cmdWachten->setEnabled(waiting);
}
