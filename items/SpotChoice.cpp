// SPDX-License-Identifier: MIT
#include "items/SpotChoice.h"

#include "data/Catalogue.h"
#include "items/ui_SpotChoice.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <QHeaderView>
#include <QShortcut>
#include <QSortFilterProxyModel>

using namespace Qt::StringLiterals;

namespace {

// Empty when the catalogue cannot be read: the spots then have no states.
QHash<qint64, SpotFacts> FactsOfAll(const Catalogue& catalogue) {
  QHash<qint64, SpotFacts> facts;
  try {
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(
        u"SELECT ID, Path, LengteSec, StartDatum, StartUur, EindDatum, EindUur, Aktief FROM "_s + catalogue.itemSpots);
    for (; !rows.Eof(); rows.MoveNext())
      facts.insert(rows.Field(u"ID"_s).toLongLong(), FactsOf(rows));
  } catch (const runtime::Error&) {
    facts.clear();
  }
  return facts;
}

std::vector<FilePresenceChecker::Request> FilesOf(const QHash<qint64, SpotFacts>& facts) {
  std::vector<FilePresenceChecker::Request> files;
  for (auto spot = facts.constBegin(); spot != facts.constEnd(); ++spot) {
    if (!spot->path.isEmpty()) files.push_back({spot.key(), spot->path});
  }
  return files;
}

}  // namespace

SpotChoice::SpotChoice(QWidget* parent)
    : QWidget(parent),
      ui_(std::make_unique<Ui::SpotChoice>()),
      shown_(new QSortFilterProxyModel(this)),
      reading_(this),
      checker_(this,
               [this](const std::vector<FilePresenceChecker::Result>& found, bool) { model_.SetPresences(found); }) {
  ui_->setupUi(this);
  shown_->setSourceModel(&model_);
  shown_->setFilterCaseSensitivity(Qt::CaseInsensitive);
  ui_->lstMeerdere->setModel(shown_);
  QHeaderView& header = *ui_->lstMeerdere->header();
  header.setStretchLastSection(false);
  header.setSectionResizeMode(SpotChoiceModel::kNaam, QHeaderView::Stretch);
  header.resizeSection(SpotChoiceModel::kStatus, fontMetrics().horizontalAdvance(u"geluidsbestand ontbreekt"_s) + 24);
  header.resizeSection(SpotChoiceModel::kLengte, fontMetrics().horizontalAdvance(u"8:88:88"_s) + 24);
  ConnectEvents();
  ShowChecked();
}

SpotChoice::~SpotChoice() = default;

void SpotChoice::ConnectEvents() {
  connect(ui_->txtZoek, &QLineEdit::textChanged, this, [this](const QString& text) {
    shown_->setFilterFixedString(text);
    if (shown_->rowCount() > 0) ui_->lstMeerdere->setCurrentIndex(shown_->index(0, 0));
  });
  connect(&model_, &SpotChoiceModel::checkedChanged, this, &SpotChoice::ShowChecked);
  connect(&model_, &SpotChoiceModel::statesChanged, ui_->lstMeerdere->viewport(), qOverload<>(&QWidget::update));
  connect(ui_->cmdToevoegen, &QPushButton::clicked, this, &SpotChoice::addRequested);
  connect(ui_->lstMeerdere, &QTreeView::doubleClicked, this, &SpotChoice::ToggleCurrent);
  const auto on = [this](int key, QWidget* in, const auto& call) {
    const auto* shortcut = new QShortcut(QKeySequence(key), in, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, call);
  };
  on(Qt::Key_Space, ui_->lstMeerdere, &SpotChoice::ToggleCurrent);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    on(key, ui_->lstMeerdere, &SpotChoice::Enter);
    on(key, ui_->txtZoek, [this] { ui_->lstMeerdere->setFocus(Qt::ShortcutFocusReason); });
  }
  on(Qt::Key_Down, ui_->txtZoek, [this] { ui_->lstMeerdere->setFocus(Qt::ShortcutFocusReason); });
}

void SpotChoice::SetSpots(std::vector<SpotChoiceModel::Spot> spots) {
  model_.SetSpots(std::move(spots));
  if (shown_->rowCount() > 0) ui_->lstMeerdere->setCurrentIndex(shown_->index(0, 0));
  ShowChecked();
  ReadStates();
}

int SpotChoice::LabelWidth() const {
  return ui_->lblMeerdere->sizeHint().width();
}

void SpotChoice::ReadStates() {
  reading_.Send([this, catalogue = CurrentCatalogue(), now = runtime::Now()](const LatestTask::Token& token) {
    QHash<qint64, SpotFacts> facts = FactsOfAll(catalogue);
    std::vector<FilePresenceChecker::Request> files = FilesOf(facts);
    token.Post([this, facts = std::move(facts), files = std::move(files), now]() mutable {
      model_.SetFacts(std::move(facts), now);
      checker_.Start(std::move(files));
    });
  });
}

void SpotChoice::ShowChecked() {
  QStringList names;
  for (const SpotChoiceModel::Spot& spot : model_.Checked())
    names += QString::number(names.size() + 1) + u" "_s + spot.naam;
  ui_->lblGekozen->setText(names.isEmpty() ? u"Vink aan met spatie, in de volgorde van het blok."_s
                                           : names.join(u", "_s));
  ui_->cmdToevoegen->setText(names.isEmpty() ? u"&Toevoegen"_s : u"%1 &toevoegen"_s.arg(names.size()));
  ui_->cmdToevoegen->setEnabled(!names.isEmpty());
}

void SpotChoice::ToggleCurrent() {
  const QModelIndex current = shown_->mapToSource(ui_->lstMeerdere->currentIndex());
  if (current.isValid()) model_.Toggle(current.row());
}

// Adds what is checked; without a check mark it checks the line.
void SpotChoice::Enter() {
  if (model_.Checked().empty()) return ToggleCurrent();
  Q_EMIT addRequested();
}
