// SPDX-License-Identifier: MIT
#include "app/TodayPanel.h"

#include "app/ui_TodayPanel.h"
#include "catalogue/BlockSurvey.h"
#include "catalogue/SpotStateLoader.h"

using namespace Qt::StringLiterals;
using controls::LineMark;
using controls::LineTone;

namespace {

// A number and its words; without a number a dash and the plural.
struct Row {
  QLabel* number;
  QLabel* words;
  QString one;
  QString many;
};

void Show(const Row& row, const std::optional<int>& count) {
  row.number->setText(count ? QString::number(*count) : u"–"_s);
  row.words->setText(count == 1 ? row.one : row.many);
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
  connect(survey_.get(), &SpotStateLoader::finished, this, &TodayPanel::ShowCounts);
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
  connect(ui_->cmdExport, &QPushButton::clicked, this, &TodayPanel::exportAsked);
}

void TodayPanel::Count() {
  survey_->Start();
  blocks_->Start();
  ShowCounts();
}

// Missing files are known only after all files are checked.
void TodayPanel::ShowCounts() {
  const bool read = survey_->IsRead();
  const bool finished = read && survey_->IsFinished();
  const auto count = [&](SpotView view, bool known) {
    return known ? std::optional(CountIn(view, survey_->Counts())) : std::nullopt;
  };
  Show({ui_->lblAantalLopen, ui_->lblLopen, u"item-spot loopt vandaag"_s, u"item-spots lopen vandaag"_s},
       count(SpotView::LopenVandaag, read));
  Show({ui_->lblAantalVerlopen, ui_->lblVerlopen, u"item-spot verloopt binnen 7 dagen"_s,
        u"item-spots verlopen binnen 7 dagen"_s},
       count(SpotView::VerlopenBinnenkort, read));
  Show({ui_->lblAantalZonderBestand, ui_->lblZonderBestand, u"item-spot zonder geluidsbestand"_s,
        u"item-spots zonder geluidsbestand"_s},
       count(SpotView::ZonderBestand, finished));
  Show({ui_->lblAantalBlokken, ui_->lblBlokken, u"item zou nu stil zijn of te kort"_s,
        u"items zouden nu stil zijn of te kort"_s},
       blocks_->IsRead() && blocks_->IsFinished() ? std::optional(blocks_->ProblemCount()) : std::nullopt);
}

void TodayPanel::ShowNotExported(const std::optional<int>& count) {
  Show({ui_->lblAantalExport, ui_->lblExport, u"wijziging nog niet geëxporteerd"_s,
        u"wijzigingen nog niet geëxporteerd"_s},
       count);
}

void TodayPanel::EnableButtons(bool spots, bool blocks, bool exporting) {
  for (QPushButton* button : {ui_->cmdLopen, ui_->cmdVerlopen, ui_->cmdZonderBestand})
    button->setEnabled(spots);
  ui_->cmdBlokken->setEnabled(blocks);
  ui_->cmdExport->setEnabled(exporting);
}
