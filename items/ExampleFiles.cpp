// SPDX-License-Identifier: MIT
#include "items/ExampleFiles.h"

#include "platform/runtime/Clock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::Presence;

namespace {

constexpr int kMaxFiles = 99;

QString TextOf(const std::vector<Presence>& files) {
  const auto in = [&](Presence presence) { return std::count(files.begin(), files.end(), presence); };
  if (in(Presence::NotReachable) > 0) return u"Nu niet bereikbaar: of het bestand bestaat, is niet bekend."_s;
  if (in(Presence::Denied) > 0) return u"Geen toegang tot de map: of het bestand bestaat, is niet bekend."_s;
  if (files.size() == 1)
    return in(Presence::There) == 1 ? u"Dit bestand bestaat nu."_s
                                    : u"Dit bestand bestaat nu niet: het blok is stil."_s;
  return u"%1 van %2 bestanden bestaan nu."_s.arg(in(Presence::There)).arg(files.size());
}

}  // namespace

ExampleFiles::ExampleFiles(QObject* receiver, std::function<void(const QString& text)> report)
    : report_(std::move(report)),
      checker_(receiver,
               [this](const std::vector<FilePresenceChecker::Result>& found, bool last) { TakeFiles(found, last); }) {}

void ExampleFiles::Look(const FileNamePattern& pattern, int count) {
  checker_.Cancel();
  found_.clear();
  report_({});
  std::vector<FilePresenceChecker::Request> wanted;
  const QDateTime now = runtime::Now();
  for (int number = 1; number <= (pattern.severalSpots ? std::clamp(count, 1, kMaxFiles) : 1); ++number) {
    const QString path = NumberedFileName(pattern, now, number);
    if (!path.isEmpty()) wanted.push_back({number, path});
  }
  if (!wanted.empty()) checker_.Start(std::move(wanted));
}

void ExampleFiles::TakeFiles(const std::vector<FilePresenceChecker::Result>& found, bool last) {
  for (const FilePresenceChecker::Result& file : found)
    found_.push_back(file.presence);
  if (last && !found_.empty()) report_(TextOf(found_));
}
