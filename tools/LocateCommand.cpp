// SPDX-License-Identifier: MIT
#include "data/AudioRules.h"
#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "data/Text.h"
#include "data/Writes.h"
#include "export/InterruptedExport.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tools/AudioSearch.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/MissingAudio.h"
#include "tools/StationSession.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString kWrite = u"--write"_s;

// One line of output: the result for one missing sound file.
struct Located {
  QString outcome;
  QString newPath;  // path text; empty unless found
};

QString OutcomeText(AudioSearch::Outcome outcome) {
  switch (outcome) {
    case AudioSearch::Outcome::Found:
      return u"gevonden"_s;
    case AudioSearch::Outcome::Several:
      return u"meerdere gevonden"_s;
    case AudioSearch::Outcome::OtherLength:
      return u"andere lengte"_s;
    case AudioSearch::Outcome::NotFound:
      return u"niet gevonden"_s;
  }
  return {};
}

Located Locate(const MissingAudio& sound, const AudioSearch& search) {
  if (sound.presence == runtime::Presence::NotReachable) return {u"niet bereikbaar"_s, {}};
  if (sound.presence == runtime::Presence::Denied) return {u"toegang geweigerd"_s, {}};
  const AudioSearch::Answer answer = search.Find(GetFile(sound.Path()), sound.LengteSec());
  if (answer.outcome != AudioSearch::Outcome::Found) return {OutcomeText(answer.outcome), {}};
  if (!runtime::IsMapped(answer.path)) return {u"buiten [Drives]"_s, {}};
  const QString path = runtime::PathText(answer.path);
  if (path.size() > kLongestAudioPath) return {u"pad te lang"_s, {}};
  return {OutcomeText(answer.outcome), path};
}

// After an error the path may be written all the same; the error itself was shown.
QString WriteOutcome(bool succeeded) {
  if (WaitsForLog()) return u"geschreven (nog niet in het logboek)"_s;
  return succeeded || WasExecuted() ? u"geschreven"_s : u"niet geschreven"_s;
}

void ShowLine(const MissingAudio& sound, const Located& located, std::ostream& out) {
  WriteCsvLine(
      {sound.IsSpot() ? u"item-spot"_s : u"item-pingle"_s, QString::number(sound.Id()), CsvField(sound.Naam()),
       located.outcome, CsvField(sound.Path()), located.newPath.isEmpty() ? QString() : CsvField(located.newPath)},
      out);
}

// An interrupted export is completed before the first statement is logged.
void SettleBeforeLogging() {
  if (global.online) return;
  FinishInterruptedExport(global.localDatabasePath, [](const QString& path) -> MissingFile {
    throw runtime::Error(
        u"Een export werd onderbroken en zijn bestand staat er niet meer: '%1'. Er is niets geschreven. Zeg eerst met "
        u"spotrooster-db export, of in het programma, wat ermee gebeurde."_s.arg(path));
  });
}

int LocateSounds(const Arguments& arguments, const Streams& streams) {
  const StationSession station(arguments, streams.err);
  std::optional<ProgramLock> lock;
  if (arguments.Has(kWrite)) {
    lock.emplace(global.programFolder + u"\\data"_s);
    SettleBeforeLogging();
  }
  QList<MissingAudio> missing = FindMissingAudio();
  const AudioSearch search(arguments.Plain().mid(1));
  int result = kDone;
  WriteCsvLine({u"Soort"_s, u"ID"_s, u"Naam"_s, u"Uitslag"_s, u"Oud"_s, u"Nieuw"_s}, streams.out);
  for (MissingAudio& sound : missing) {
    Located located = Locate(sound, search);
    const MissingAudio before = sound;
    if (located.newPath.isEmpty()) {
      result = kFailed;
    } else if (arguments.Has(kWrite)) {
      const bool succeeded = UpdatePath(sound, located.newPath);
      located.outcome = WriteOutcome(succeeded);
      if (!succeeded) result = kFailed;
    }
    ShowLine(before, located, streams.out);
  }
  return result;
}

}  // namespace

Command LocateCommand() {
  return {
      .name = u"locate"_s,
      .usage = u"MAP ZOEKMAP... [--write] [--station N]"_s,
      .summary = u"Zoekt verplaatste geluidsbestanden van een zender en toont als CSV waar ze nu staan."_s,
      .run = LocateSounds,
      .details =
          u"Bekijkt elke item-spot en jingle waarvan het bestand weg is, en zoekt onder de zoekmappen naar een\n"
          "bestand met dezelfde naam en dezelfde lengte. Verandert niets, tenzij met --write: dan krijgt het record\n"
          "het nieuwe pad, zoals bij een wijziging in het programma (offline komt ze dus ook in het logboek), en\n"
          "komt het pad in Audio.tae. Zijn er meerdere die passen, of past de lengte niet, dan wordt niets\n"
          "geschreven. Exitcode 0 als elk ontbrekend bestand gevonden is, anders 1."_s,
      .examples = {u"locate /tmp/proef /tmp/proef/audio"_s,
                   u"locate /tmp/proef /tmp/proef/audio/Spots /tmp/proef/audio/Jingles --write"_s}};
}
