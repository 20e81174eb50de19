// SPDX-License-Identifier: MIT
#include "items/SpotLengths.h"

#include "data/Catalogue.h"
#include "data/SpotState.h"
#include "data/forms/SpotDetails.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/Database.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

SpotLengths::SpotLengths(QObject* receiver, std::function<void()> changed)
    : changed_(std::move(changed)),
      checker_(receiver,
               [this](const std::vector<FilePresenceChecker::Result>& found, bool last) { TakeFiles(found, last); }) {}

void SpotLengths::Read() {
  spots_.clear();
  requested_.clear();
  checker_.Cancel();
  const Catalogue catalogue = CurrentCatalogue();
  try {
    dao::Database database = dao::OpenDatabase(catalogue.databasePath);
    dao::Recordset rows = database.OpenRecordset(
        u"SELECT ID, Path, LengteSec, StartDatum, StartUur, EindDatum, EindUur, Aktief FROM "_s + catalogue.itemSpots);
    for (; !rows.Eof(); rows.MoveNext())
      spots_.insert(rows.Field(u"ID"_s).toLongLong(), FactsOf(rows));
  } catch (const runtime::Error&) {
    spots_.clear();
  }
}

void SpotLengths::Show(controls::ListBox& list) {
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
