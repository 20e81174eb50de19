// SPDX-License-Identifier: MIT
#include "data/Catalogue.h"
#include "export/playout/BlockReader.h"
#include "export/playout/PlanTexts.h"
#include "export/playout/PlayoutFolder.h"
#include "export/playout/SoundFiles.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/StationSession.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

PlayoutForm FormOf(const Arguments& arguments) {
  const QString name = arguments.Value(u"--form"_s);
  if (const auto form = PlayoutFormOf(name)) return *form;
  throw UseError(name.isEmpty() ? u"Zeg met --form in welke vorm: liquidsoap, rivendell of m3u."_s
                                : u"'%1' is geen vorm: kies liquidsoap, rivendell of m3u."_s.arg(name));
}

QString TargetOf(const Arguments& arguments) {
  const QString folder = arguments.Value(u"--to"_s);
  if (folder.isEmpty()) throw UseError(u"Zeg met --to in welke map de bestanden komen."_s);
  return QFileInfo(folder).absoluteFilePath();
}

QDateTime MomentOf(const Arguments& arguments) {
  if (!arguments.Has(u"--at"_s)) return runtime::Now();
  const QString text = arguments.Value(u"--at"_s);
  for (const QString& form : {u"yyyy-MM-dd HH:mm"_s, u"yyyy-MM-ddTHH:mm"_s, u"dd-MM-yyyy HH:mm"_s}) {
    QDateTime moment = QDateTime::fromString(text, form);
    if (moment.isValid()) return moment;
  }
  throw UseError(u"'%1' is geen moment: geef bijvoorbeeld \"2025-03-11 14:00\"."_s.arg(text));
}

// A sound that cannot be written counts as missing, so that the rule plans without it, and is listed in the block's
// line.
SoundFiles WritableFiles(const std::vector<Block>& blocks, const QDateTime& moment) {
  SoundFiles files;
  QStringList writable;
  for (const QString& path : FilesOf(blocks, moment)) {
    if (CanBeWritten(path)) {
      writable += path;
    } else {
      files.insert(path, {runtime::Presence::NotThere});
    }
  }
  files.insert(LookAtFiles(writable, Look::Measure));
  return files;
}

QString RemarkOn(const BlockPlan& plan) {
  QStringList remarks{TroubleText(plan)};
  for (const PlannedSound& sound : plan.sounds) {
    if (!sound.reachable) remarks += sound.naam + u": schijf of map niet bereikbaar"_s;
  }
  remarks.removeAll(QString());
  return remarks.join(u"; "_s);
}

void ShowLine(const PlannedBlock& planned, PlayoutForm form, std::ostream& out) {
  const std::optional<qint64> length = planned.plan.LengthMs();
  const QString remark = planned.block.aktief ? RemarkOn(planned.plan) : SilenceText(Silence::BlockNotActive);
  WriteCsvLine({QString::number(planned.block.id), CsvField(planned.block.naam),
                PlayoutFileName(form, planned.block.id), QString::number(planned.plan.spots),
                length ? CsvField(DurationText(*length)) : QString(), remark.isEmpty() ? QString() : CsvField(remark)},
               out);
}

int Playout(const Arguments& arguments, const Streams& streams) {
  const PlayoutForm form = FormOf(arguments);
  const QString target = TargetOf(arguments);
  const QDateTime moment = MomentOf(arguments);
  const StationSession station(arguments, streams.err);
  const std::vector<Block> blocks = ReadBlocks(CurrentCatalogue());
  const SoundFiles files = WritableFiles(blocks, moment);
  std::vector<PlannedBlock> planned;
  planned.reserve(blocks.size());
  for (const Block& block : blocks)
    planned.push_back({block, PlanBlock(block, moment, SeedOf(block.id, moment), In(files))});
  UpdatePlayoutFolder(target, form, PlayoutFilesOf(form, planned));
  WriteCsvLine({u"ID"_s, u"Naam"_s, u"Bestand"_s, u"Spots"_s, u"Duur"_s, u"Melding"_s}, streams.out);
  for (const PlannedBlock& block : planned)
    ShowLine(block, form, streams.out);
  return kDone;
}

}  // namespace

Command PlayoutCommand() {
  return {
      .name = u"playout"_s,
      .usage = u"MAP --form VORM --to DOELMAP [--at MOMENT] [--station N]"_s,
      .summary = u"Schrijft per item een bestand waaruit een uitzendsysteem het blok speelt."_s,
      .run = Playout,
      .details =
          u"VORM is liquidsoap, rivendell of m3u. Een blok bevat wat op MOMENT (\"2025-03-11 14:00\"; anders nu)\n"
          "mag spelen: niets wat verlopen, niet aktief of zonder bestand is. De namen zijn blok-NUMMER.m3u of .sh. "
          "Wat\n"
          "niet veranderd is, wordt niet herschreven; bestanden van verdwenen items gaan weg. Toont als CSV elk item\n"
          "met wat er mis is: een blok dat stil blijft, staat er met de reden. Een gewone m3u kent geen\n"
          "mixpunten. Draai dit elk uur, want bestanden en spots wisselen met het uur."_s,
      .examples = {u"playout /tmp/proef --form liquidsoap --to /tmp/proef/blokken"_s,
                   u"playout /tmp/proef --form rivendell --to /tmp/proef/rivendell --at \"2025-03-11 14:00\""_s}};
}
