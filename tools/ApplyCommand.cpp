// SPDX-License-Identifier: MIT
#include "data/IniFile.h"
#include "data/SettingsFile.h"
#include "export/apply/Apply.h"
#include "export/apply/AudioFiles.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/StagedFile.h"
#include "tools/Commands.h"
#include "tools/Csv.h"
#include "tools/DatabaseArgument.h"

#include <QFileInfo>
#include <QSet>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString kFrom = u"--from"_s;
const QString kFolder = u"--folder"_s;
const QString kDryRun = u"--dry-run"_s;
const QString kReport = u"--report"_s;
const QString kAudioTo = u"--audio-to"_s;
const QString kProgram = u"--program"_s;
const QString kOutOfOrder = u"--out-of-order"_s;

QString Absolute(const QString& word) {
  return QFileInfo(word).absoluteFilePath();
}

std::vector<apply::ExportFile> FilesOf(const Arguments& arguments) {
  QStringList paths;
  for (const QString& word : arguments.Plain().mid(1))
    paths += Absolute(word);
  const bool hasFolder = arguments.Has(kFolder);
  if (hasFolder == !paths.isEmpty()) throw UseError(u"Geef bestanden, of %1 MAP."_s.arg(kFolder));
  if (hasFolder) paths = apply::ExportsIn(Absolute(arguments.Value(kFolder)));
  std::vector<apply::ExportFile> files;
  for (const QString& path : std::as_const(paths))
    files.push_back(apply::ReadExport(path));
  apply::SortByStamp(files);
  return files;
}

// The drives of the program folder that made the exports: its ovalis.ini, or that file itself.
void SetDrivesOf(const QString& program) {
  const QFileInfo given(Absolute(program));
  const QString path = given.isDir() ? given.filePath() + u"/ovalis.ini"_s : given.filePath();
  if (!QFileInfo::exists(path)) throw runtime::Error(u"'%1' bestaat niet."_s.arg(path));
  IniFile settings;
  settings.SetPath(path);
  settings.SetSection(settings::kDrives.toString());
  runtime::SetDrives(settings.Values(), QFileInfo(path).path());
}

void Show(const apply::Result& result, bool isPlan, std::ostream& out) {
  const auto line = [&](const QString& text) { out << text.toStdString() << '\n'; };
  if (result.doneBefore) {
    return line(u"%1: eerder verwerkt, op %2 als %3; niets gewijzigd"_s.arg(
        result.path, result.processed.toString(u"dd-MM-yyyy HH:mm:ss"_s), result.processedName));
  }
  line(result.path + (isPlan ? u": zou doen: "_s : u": "_s) + result.Summary());
  for (const apply::ReportLine& one : result.lines) {
    const bool isOrdinary =
        one.what == apply::What::New || one.what == apply::What::Changed || one.what == apply::What::Deleted;
    if (!isOrdinary) line(u"  "_s + (one.line > 0 ? u"regel %1: "_s.arg(one.line) : QString()) + one.text);
  }
  if (result.LooksCarriedOutElsewhere()) {
    line(
        u"  De meeste wijzigingen stonden er al: dit bestand lijkt al met een ander programma verwerkt. Een bestand is "
        "voor een van de twee."_s);
  }
}

void WriteReport(runtime::StagedFile& report, const std::vector<apply::Result>& results) {
  const auto write = [&](const QStringList& fields) {
    QStringList quoted;
    for (const QString& field : fields)
      quoted += CsvField(field.isEmpty() ? QVariant() : QVariant(field));
    report.Write((quoted.join(u',') + u"\r\n").toUtf8());
  };
  write(apply::ReportHeader());
  for (const apply::Result& result : results) {
    for (const QStringList& row : apply::ReportRows(result))
      write(row);
  }
  report.Complete();
  report.Place();
}

void ShowAudio(const apply::AudioFiles& files, std::ostream& out) {
  out << "Audio: " << files.Summary().toStdString() << '\n';
  for (const QString& path : files.missing)
    out << "  ontbreekt: " << path.toStdString() << '\n';
  for (const QString& path : files.different)
    out << "  andere inhoud: " << path.toStdString() << '\n';
}

void CopyAudio(const Arguments& arguments, const std::vector<apply::ExportFile>& files, std::ostream& out) {
  if (!arguments.Has(kAudioTo)) return;
  if (arguments.Has(kProgram)) SetDrivesOf(arguments.Value(kProgram));
  QSet<QString> folders;
  for (const apply::ExportFile& file : files)
    folders += QFileInfo(file.path).path();
  for (const QString& folder : std::as_const(folders))
    ShowAudio(apply::CopyAudioFiles(folder, Absolute(arguments.Value(kAudioTo)), !arguments.Has(kDryRun)), out);
  runtime::SetDrives({});
}

int ApplyExports(const Arguments& arguments, const Streams& streams) {
  const QString source = arguments.Value(kFrom).trimmed();
  const QString database = DatabasePathOf(arguments.Plain().first());
  const std::vector<apply::ExportFile> files = FilesOf(arguments);
  for (const apply::ExportFile& file : files) {
    if (source.isEmpty() && apply::SourceOf(file).isEmpty())
      throw UseError(u"Zeg met %1 NAAM van welk werkstation '%2' komt."_s.arg(kFrom, file.path));
  }
  const bool isPlan = arguments.Has(kDryRun);
  const apply::Options options{source, qEnvironmentVariable("USER"), arguments.Has(kOutOfOrder), {}};
  // A report that cannot be written is known before anything is carried out.
  std::optional<runtime::StagedFile> report;
  if (arguments.Has(kReport)) report.emplace(Absolute(arguments.Value(kReport)));
  const std::vector<apply::Result> results =
      isPlan ? apply::Plan(database, files, options) : apply::CarryOut(database, files, options);
  int waiting = 0;
  for (const apply::Result& result : results) {
    Show(result, isPlan, streams.out);
    waiting += result.Count(apply::What::Conflict);
  }
  if (report) WriteReport(*report, results);
  CopyAudio(arguments, files, streams.out);
  if (waiting == 0) return kDone;
  streams.out << "Bekijk wat er wacht met: spotrooster-db conflicts " << database.toStdString() << '\n';
  return kWaits;
}

}  // namespace

Command ApplyCommand() {
  return {
      .name = u"apply"_s,
      .usage =
          u"DATABASE [BESTAND...] [--from NAAM] [--folder MAP] [--dry-run] [--report CSV] [--audio-to MAP] "
          "[--program MAP] [--out-of-order]"_s,
      .summary = u"Verwerkt exports van een werkstation dat offline werkte in de gedeelde database."_s,
      .run = ApplyExports,
      .details =
          u"Elk bestand wordt in zijn geheel verwerkt, en één keer: een tweede keer verandert niets, ook onder een\n"
          "andere naam. Geef --from alleen voor exports zonder bestand met .basis: het is de naam van het\n"
          "werkstation, telkens dezelfde. Zonder --from is dat de naam in het bestand met .basis, en die gebruikt\n"
          "ook het venster Exports verwerken. --folder neemt alle exports van een map, op volgorde, en verwerkt\n"
          "ze samen: na een fout is er niets van verwerkt. Een ouder bestand na een later wordt geweigerd,\n"
          "behalve met --out-of-order. Het bestand met .basis achter de naam hoort erbij: daardoor blijft staan\n"
          "wat anderen intussen wijzigden. Een nummer dat al in gebruik is, wordt een nieuw nummer. Wijzigden\n"
          "twee hetzelfde veld, dan wacht dat ene record op een keuze (conflicts); de rest gaat door. --dry-run\n"
          "toont wat er zou gebeuren. --report schrijft alles als CSV. --audio-to kopieert de geluidsbestanden\n"
          "die in Audio.tae staan; --program is de programmamap van het werkstation (of haar ovalis.ini), voor de\n"
          "stations van hun paden.\n"
          "Een bestand is voor deze opdracht of voor Kadrovia, niet voor beide.\n"
          "Geeft 0 als alles verwerkt is, 3 als er iets op een keuze wacht, 1 bij een fout (niets gewijzigd)."_s,
      .examples = {u"apply /tmp/proef/server/OvalistoServer.mdb --folder /tmp/proef/export --dry-run"_s,
                   u"apply /tmp/proef/server/OvalistoServer.mdb --folder /tmp/proef/export"_s,
                   u"apply /tmp/proef/server/OvalistoServer.mdb --from STUDIO2 --folder /tmp/proef/export"_s}};
}
