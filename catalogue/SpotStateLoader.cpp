// SPDX-License-Identifier: MIT
#include "catalogue/SpotStateLoader.h"

#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

// Rows taken over per turn of the event loop; with the marks that a list makes of them this takes a few milliseconds.
constexpr std::size_t kRowsPerBatch = 250;

QString Query(const QString& table) {
  const QString dot = table + u'.';
  return u"SELECT "_s + dot + u"ID, "_s + dot + SpotFactFields().join(u", "_s + dot) + u" From "_s + table;
}

}  // namespace

SpotStateLoader::SpotStateLoader(QObject* parent)
    : QObject(parent),
      reading_(this),
      checker_(this, [this](const std::vector<FilePresenceChecker::Result>& found, bool last) {
        OnFilesChecked(found, last);
      }) {
  connect(&batchTimer_, &QTimer::timeout, this, &SpotStateLoader::ProcessBatch);
}

void SpotStateLoader::Start(std::chrono::milliseconds maxWait) {
  checker_.Cancel();
  batchTimer_.stop();
  spots_.clear();
  counts_ = SpotCounts();
  unchecked_ = 0;
  rows_.clear();
  files_.clear();
  nextRow_ = 0;
  failure_ = {};
  read_ = finished_ = false;
  now_ = runtime::Now();
  const Catalogue catalogue = CurrentCatalogue();
  reading_.Send([this, path = catalogue.databasePath, table = catalogue.itemSpots,
                 whose = CatalogueWords()](const LatestTask::Token& token) {
    if (!token.IsCurrent()) return;
    try {
      token.Post([this, rows = ReadRows(path, table, token)]() mutable { OnRowsLoaded(std::move(rows)); });
    } catch (const runtime::Error& error) {
      token.Post([this, reason = ReasonFor(path, whose, error.Description())] { OnFailure(reason); });
    }
  });
  if (maxWait.count() == 0) return;
  reading_.WaitFor(maxWait);
  if (batchTimer_.isActive()) ProcessBatch();
}

std::vector<SpotStateLoader::Row> SpotStateLoader::ReadRows(const QString& databasePath, const QString& table,
                                                            const LatestTask::Token& token) {
  // Read-only: marks never change the catalogue.
  std::vector<Row> rows;
  dao::OpenDatabase(databasePath, {.readOnly = true}).Visit(Query(table), [&](const dao::Row& found) {
    rows.push_back({found.Field(0).toLongLong(), FactsOf(found, 1)});
    return token.IsCurrent();
  });
  return rows;
}

// Without a box: a list has already reported the error itself, and marks are optional.
void SpotStateLoader::OnFailure(const UnreadableReason& reason) {
  failure_ = reason;
  Finish();
}

void SpotStateLoader::OnRowsLoaded(std::vector<Row> rows) {
  rows_ = std::move(rows);
  spots_.reserve(static_cast<qsizetype>(rows_.size()));
  batchTimer_.start(0);
}

void SpotStateLoader::ProcessBatch() {
  QList<qint64> ids;
  for (; nextRow_ < rows_.size() && ids.size() < static_cast<qsizetype>(kRowsPerBatch); ++nextRow_) {
    ids += rows_[nextRow_].id;
    AddRow(std::move(rows_[nextRow_]));
  }
  read_ = nextRow_ == rows_.size();
  if (read_) batchTimer_.stop();
  if (!ids.isEmpty()) Q_EMIT changed(ids);
  if (!read_) return;
  rows_.clear();
  checker_.Start(std::exchange(files_, {}));
}

void SpotStateLoader::AddRow(Row row) {
  if (spots_.contains(row.id)) return;  // a local copy may contain an ID twice
  Spot spot{std::move(row.facts), {}};
  const auto last = lastPresence_.constFind(spot.facts.path);
  if (last != lastPresence_.constEnd()) spot.facts.file = *last;
  spot.state = StateOf(spot.facts, now_);
  counts_.Add(spot.state);
  if (!spot.facts.path.isEmpty()) {
    files_.push_back({row.id, spot.facts.path});
    if (!spot.facts.file) ++unchecked_;
  }
  spots_.emplace(row.id, std::move(spot));
}

const SpotStateLoader::Spot* SpotStateLoader::Find(qint64 id) const {
  const auto spot = spots_.constFind(id);
  return spot == spots_.constEnd() ? nullptr : &*spot;
}

void SpotStateLoader::OnFilesChecked(const std::vector<FilePresenceChecker::Result>& found, bool last) {
  QList<qint64> ids;
  for (const FilePresenceChecker::Result& file : found) {
    if (ApplyPresence(file.id, file.presence)) ids += file.id;
  }
  if (!ids.isEmpty()) Q_EMIT changed(ids);
  if (last) Finish();
}

// Returns whether anything visible changed.
bool SpotStateLoader::ApplyPresence(qint64 id, runtime::Presence presence) {
  const auto spot = spots_.find(id);
  if (spot == spots_.end()) return false;
  if (!spot->facts.file) --unchecked_;
  spot->facts.file = presence;
  lastPresence_.insert(spot->facts.path, presence);
  const SpotState state = StateOf(spot->facts, now_);
  const bool same = state == spot->state;
  if (!same) {
    counts_.Remove(spot->state);
    counts_.Add(state);
    spot->state = state;
  }
  // An unreachable file changes the tool tip only.
  return !same || presence == runtime::Presence::NotReachable || presence == runtime::Presence::Denied;
}

void SpotStateLoader::Finish() {
  finished_ = true;
  Q_EMIT finished();
}
