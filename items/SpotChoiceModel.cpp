// SPDX-License-Identifier: MIT
#include "items/SpotChoiceModel.h"

#include "data/forms/SpotDetails.h"
#include "platform/controls/Marks.h"
#include "platform/desktop/ThemeColours.h"

#include <QGuiApplication>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

using namespace Qt::StringLiterals;
using controls::LineDetails;

namespace {

// Draws a mark where it is shown. Pixmaps instead would be made for each line at each painting, and Qt keeps a key of
// every pixmap of an icon in its cache.
class MarkEngine : public QIconEngine {
 public:
  MarkEngine(controls::LineMark mark, controls::LineTone tone) : mark_(mark), tone_(tone) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State /*state*/) override {
    const QPalette palette = QGuiApplication::palette();
    const QColor colour =
        mode == QIcon::Selected ? palette.color(QPalette::HighlightedText) : controls::ToneColour(tone_, palette);
    controls::PaintMark(*painter, place, mark_, colour);
  }
  QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    return size.boundedTo({controls::kMarkSize, controls::kMarkSize});
  }
  QIconEngine* clone() const override { return new MarkEngine(mark_, tone_); }

 private:
  controls::LineMark mark_;
  controls::LineTone tone_;
};

QVariant TextColour(const LineDetails& details, int column) {
  const QPalette palette = QGuiApplication::palette();
  if (column == SpotChoiceModel::kStatus && details.wordInTone) return controls::ToneColour(details.tone, palette);
  if (column != SpotChoiceModel::kNaam || details.quietText) return desktop::ThemeColoursFor(palette).hint;
  return {};
}

QVariant AlignmentOf(int column) {
  return QVariant::fromValue((column == SpotChoiceModel::kLengte ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

}  // namespace

void SpotChoiceModel::SetSpots(std::vector<Spot> spots) {
  beginResetModel();
  spots_ = std::move(spots);
  facts_.clear();
  checked_.clear();
  endResetModel();
}

void SpotChoiceModel::SetFacts(QHash<qint64, SpotFacts> facts, const QDateTime& now) {
  facts_ = std::move(facts);
  now_ = now;
  Q_EMIT statesChanged();
}

void SpotChoiceModel::SetPresences(const std::vector<FilePresenceChecker::Result>& files) {
  for (const FilePresenceChecker::Result& file : files) {
    const auto facts = facts_.find(file.id);
    if (facts != facts_.end()) facts->file = file.presence;
  }
  Q_EMIT statesChanged();
}

void SpotChoiceModel::Toggle(int row) {
  if (!checked_.removeOne(row)) checked_ += row;
  Q_EMIT dataChanged(index(row, kNaam), index(row, kNaam), {Qt::CheckStateRole});
  Q_EMIT checkedChanged();
}

std::vector<SpotChoiceModel::Spot> SpotChoiceModel::Checked() const {
  std::vector<Spot> checked;
  for (const int row : checked_)
    checked.push_back(spots_[static_cast<std::size_t>(row)]);
  return checked;
}

int SpotChoiceModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(spots_.size());
}

int SpotChoiceModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kColumns;
}

QVariant SpotChoiceModel::data(const QModelIndex& index, int role) const {
  const Spot& spot = spots_[static_cast<std::size_t>(index.row())];
  const bool isName = index.column() == kNaam;
  if (role == Qt::DisplayRole && isName) return spot.naam;  // read for every spot by a search
  if (role == Qt::CheckStateRole && isName) return checked_.contains(index.row()) ? Qt::Checked : Qt::Unchecked;
  const auto facts = facts_.constFind(spot.id);
  const LineDetails details = facts == facts_.constEnd() ? LineDetails() : DetailsOf(*facts, StateOf(*facts, now_));
  switch (role) {
    case Qt::DisplayRole:
      return index.column() == kStatus ? details.word : details.trailing;
    case Qt::DecorationRole:
      if (!isName || details.mark == controls::LineMark::None) return {};
      return QIcon(new MarkEngine(details.mark, details.tone));
    case Qt::ForegroundRole:
      return TextColour(details, index.column());
    case Qt::ToolTipRole:
      return details.toolTip;
    case Qt::TextAlignmentRole:
      return AlignmentOf(index.column());
    default:
      return {};
  }
}

bool SpotChoiceModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kNaam) return false;
  if ((value.toInt() == Qt::Checked) != checked_.contains(index.row())) Toggle(index.row());
  return true;
}

QVariant SpotChoiceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole) return AlignmentOf(section);
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QStringList headings{u"Naam"_s, u"Status"_s, u"Lengte"_s};
  return headings.at(section);
}

Qt::ItemFlags SpotChoiceModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return index.column() == kNaam ? flags | Qt::ItemIsUserCheckable : flags;
}
