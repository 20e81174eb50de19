#include "catalogue/SpotSurvey.h"

#include "catalogue/FileFinder.h"
#include "data/Catalogue.h"
#include "data/SpotFacts.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

using namespace Qt::StringLiterals;

namespace {

// Rows read between two turns of the event loop: a few milliseconds' work.
constexpr int kSlice = 2000;

QString Query(const QString& table) {
  QString fields;
  for (const auto* name : {u"ID", u"Path", u"LengteSec", u"StartDatum", u"StartUur", u"EindDatum", u"EindUur"}) {
    fields += table + u'.' + QString::fromUtf16(name) + u", "_s;
  }
  return u"SELECT "_s + fields + table + u".Aktief From "_s + table;
}

}  // namespace

SpotSurvey::SpotSurvey(QObject* parent) : QObject(parent) {
  connect(&slices_, &QTimer::timeout, this, &SpotSurvey::ReadSlice);
}

SpotSurvey::~SpotSurvey() = default;

void SpotSurvey::Start(Reading reading) {
  finder_.reset();
  slices_.stop();
  spots_.clear();
  counts_ = SpotCounts();
  rows_ = dao::Recordset();
  opened_ = read_ = finished_ = false;
  now_ = runtime::Now();
  if (reading == Reading::InSlices) {
    slices_.start(0);
    return;
  }
  while (!read_ && !finished_)
    ReadSlice();
}

const SpotSurvey::Spot* SpotSurvey::Find(qint64 id) const {
  const auto spot = spots_.constFind(id);
  return spot == spots_.constEnd() ? nullptr : &*spot;
}

void SpotSurvey::Open() {
  const Catalogue catalogue = CurrentCatalogue();
  dao::Database database = dao::OpenDatabase(catalogue.databasePath);
  rows_ = database.OpenRecordset(Query(catalogue.itemSpots));
  spots_.reserve(rows_.RecordCount());
  opened_ = true;
}

void SpotSurvey::ReadSlice() {
  QList<qint64> ids;
  try {
    if (!opened_) Open();
    while (!rows_.Eof() && ids.size() < kSlice)
      ids += ReadRow();
  } catch (const runtime::Error&) {
    // Whoever wanted the told list has been told already; marks are an extra.
    slices_.stop();
    finished_ = true;
    Q_EMIT finished();
    return;
  }
  read_ = rows_.Eof();
  if (!ids.isEmpty()) Q_EMIT changed(ids);
  if (!read_) return;
  slices_.stop();
  rows_ = dao::Recordset();
  LookForFiles();
}

qint64 SpotSurvey::ReadRow() {
  const qint64 id = rows_.Field(u"ID"_s).toLongLong();
  Spot spot;
  spot.facts = FactsOf(rows_);
  const auto seen = lastSeen_.constFind(spot.facts.path);
  if (seen != lastSeen_.constEnd()) spot.facts.file = *seen;
  spot.state = StateOf(spot.facts, now_);
  rows_.MoveNext();
  if (!spots_.contains(id)) counts_.Add(spot.state);
  spots_.insert(id, std::move(spot));
  return id;
}

void SpotSurvey::LookForFiles() {
  std::vector<FileFinder::Wanted> wanted;
  wanted.reserve(static_cast<std::size_t>(spots_.size()));
  for (auto spot = spots_.constBegin(); spot != spots_.constEnd(); ++spot) {
    if (!spot->facts.path.isEmpty()) wanted.push_back({spot.key(), spot->facts.path});
  }
  finder_ = std::make_unique<FileFinder>(std::move(wanted), this,
                                         [this](const std::vector<FileFinder::Found>& found, bool last) {
                                           QList<qint64> ids;
                                           for (const FileFinder::Found& file : found) {
                                             if (Take(file.id, file.presence)) ids += file.id;
                                           }
                                           if (!ids.isEmpty()) Q_EMIT changed(ids);
                                           if (!last) return;
                                           finished_ = true;
                                           Q_EMIT finished();
                                         });
}

// Whether anything that is shown differs now.
bool SpotSurvey::Take(qint64 id, runtime::Presence presence) {
  const auto spot = spots_.find(id);
  if (spot == spots_.end()) return false;
  spot->facts.file = presence;
  lastSeen_.insert(spot->facts.path, presence);
  const SpotState state = StateOf(spot->facts, now_);
  const bool same = state == spot->state;
  if (!same) {
    counts_.Remove(spot->state);
    counts_.Add(state);
    spot->state = state;
  }
  return !same || presence == runtime::Presence::NotReachable;
}
