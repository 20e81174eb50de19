// SPDX-License-Identifier: MIT
#include "items/SpotLengths.h"

#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "data/forms/SpotDetails.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/dao/Prefetch.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kMaxLookups = 500;  // more spots are read faster by reading the table
const QStringList kFields = {u"ID"_s,       u"Path"_s,      u"LengteSec"_s, u"StartDatum"_s,
                             u"StartUur"_s, u"EindDatum"_s, u"EindUur"_s,   u"Aktief"_s};

QString Listed(const std::vector<std::int64_t>& ids) {
  QStringList numbers;
  for (const std::int64_t id : ids)
    numbers += QString::number(id);
  return numbers.join(u", "_s);
}

}  // namespace

SpotLengths::SpotLengths(QObject* receiver, std::function<void()> changed)
    : changed_(std::move(changed)),
      checker_(receiver,
               [this](const std::vector<FilePresenceChecker::Result>& found, bool last) { TakeFiles(found, last); }) {}

void SpotLengths::Forget() {
  spots_.clear();
  read_.clear();
  requested_.clear();
  checker_.Cancel();
}

void SpotLengths::ReadMissing(const controls::ListBox& list) {
  std::vector<std::int64_t> missing;
  for (int line = 0; line < list.ListCount(); ++line) {
    const qint64 id = list.ItemData(line);
    if (read_.contains(id)) continue;
    read_.insert(id);
    missing.push_back(id);
  }
  if (missing.empty()) return;
  const Catalogue catalogue = CurrentCatalogue();
  const QString fields = kFields.join(u", "_s);
  QString query = u"SELECT "_s + fields + u" FROM " + catalogue.itemSpots;
  if (missing.size() <= kMaxLookups) query += u" WHERE ID IN ("_s + Listed(missing) + u')';
  try {
    const dao::Prefetch rowsOfSpots(
        catalogue.databasePath,
        {catalogue.itemSpots, u"ID"_s, kFields, missing.size() <= kMaxLookups ? missing : std::vector<std::int64_t>()});
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(query);
    for (; !rows.Eof(); rows.MoveNext())
      spots_.insert(rows.Field(u"ID"_s).toLongLong(), FactsOf(rows));
  } catch (const runtime::Error&) {
    spots_.clear();
  }
}

void SpotLengths::Show(controls::ListBox& list) {
  ReadMissing(list);
  const QDateTime now = runtime::Now();
  std::vector<FilePresenceChecker::Request> wanted;
  bool unasked = false;
  for (int line = 0; line < list.ListCount(); ++line) {
    const auto spot = spots_.constFind(list.ItemData(line));
    list.SetDetails(line, spot == spots_.constEnd() ? controls::LineDetails() : DetailsOf(*spot, StateOf(*spot, now)));
    if (spot == spots_.constEnd() || spot->path.isEmpty() || spot->file) continue;
    wanted.push_back({spot.key(), spot->path});
    unasked = unasked || !requested_.contains(spot.key());
  }
  // A new check replaces a running one, so it includes the files that are not checked yet.
  if (!unasked) return;
  for (const FilePresenceChecker::Request& file : wanted)
    requested_.insert(file.id, true);
  checker_.Start(std::move(wanted));
}

void SpotLengths::TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last) {
  for (const FilePresenceChecker::Result& file : found) {
    const auto spot = spots_.find(file.id);
    if (spot != spots_.end()) spot->file = file.presence;
  }
  if (last || !found.empty()) changed_();
}

QString SpotLengths::Total(const controls::ListBox& list) const {
  const int count = list.ListCount();
  if (count == 0) return {};
  qint32 total = 0;
  for (int line = 0; line < count; ++line)
    total += std::max(0, spots_.value(list.ItemData(line)).lengteSec.value_or(0));
  return (count == 1 ? u"1 item-spot"_s : u"%1 item-spots"_s.arg(count)) + u", samen " + LengthText(total);
}
