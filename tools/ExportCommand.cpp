// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "data/LogQueue.h"
#include "data/ProgramLock.h"
#include "data/Text.h"
#include "export/ExportChecks.h"
#include "export/InterruptedExport.h"
#include "export/OfflineLogExport.h"
#include "export/SameNumbers.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "tools/Commands.h"
#include "tools/StationSession.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

const QString kProcessed = u"--vorige-verwerkt"_s;
const QString kFileProcessed = u"--bestand-verwerkt"_s;
const QString kFileNotProcessed = u"--bestand-niet-verwerkt"_s;

// The answer of the options about the missing file; only an option with this very file name counts.
MissingFile SaidOf(const QString& path, const Arguments& arguments) {
  const QString file = GetFile(path);
  const bool processed = QFileInfo(GetFile(arguments.Value(kFileProcessed))).fileName() == file;
  const bool notProcessed = QFileInfo(GetFile(arguments.Value(kFileNotProcessed))).fileName() == file;
  if (processed != notProcessed) return processed ? MissingFile::Processed : MissingFile::NotProcessed;
  throw runtime::Error(
      u"Een export werd onderbroken toen het bestand al klaar was, maar het staat er niet meer:\n%1\n"
      u"Er is niets veranderd. Staat het op een schijf die niet gekoppeld is, koppel die dan eerst. Zeg anders wat "
      u"ermee gebeurde:\n"
      u"  %2 %3 als het verwerkt is (de wijzigingen gaan uit het logboek)\n"
      u"  %4 %3 als het verloren is (de wijzigingen gaan mee met de nieuwe export)"_s.arg(path, kFileProcessed, file,
                                                                                          kFileNotProcessed));
}

void ReportExport(const QString& path, const OfflineLogExport& logExport, const Streams& streams) {
  if (logExport.Altered().count > 0) streams.err << AlteredWarning(logExport.Altered(), path).toStdString() << '\n';
  const QString sameNumber = SameNumbersWarning(logExport.RecordsWithSameNumber(), path);
  if (!sameNumber.isEmpty()) streams.err << sameNumber.toStdString() << '\n';
  streams.out << runtime::HostPath(path).toStdString() << '\n';
}

// The steps of the export window, in their order.
int Export(const Arguments& arguments, const Streams& streams) {
  const StationSession station(arguments, streams.err,
                               {EarlierExportsQuestion(), kProcessed, arguments.Has(kProcessed)});
  const ProgramLock lock(global.programFolder + u"\\data"_s);
  const QString folder = runtime::TrimBlanks(global.exportPath);
  if (!MayExport(folder)) return kFailed;
  FinishInterruptedExport(global.localDatabasePath, [&](const QString& path) { return SaidOf(path, arguments); });
  OfflineLogExport logExport(global.localDatabasePath);
  const QString path = logExport.WriteFile(folder);
  logExport.EmptyLog();
  if (!path.isEmpty()) ReportExport(path, logExport, streams);
  LogQueuedStatements();
  AddQueuedAudioLines();
  return kDone;
}

}  // namespace

Command ExportCommand() {
  return {
      .name = u"export"_s,
      .usage = u"MAP [--vorige-verwerkt] [--bestand-verwerkt NAAM] [--bestand-niet-verwerkt NAAM] [--station N]"_s,
      .summary = u"Exporteert het offline-logboek van een zender en toont het pad van het bestand."_s,
      .run = Export,
      .details =
          u"Doet wat het venster Exporteren doet. Wie offline werkt, zegt met --vorige-verwerkt dat de vorige\n"
          "exportbestanden verwerkt zijn, met apply, met het venster Exports verwerken of met Kadrovia; anders komt\n"
          "er geen export. Elke export krijgt een eigen\n"
          "seconde, zodat geen bestand een ander vervangt. Is het logboek leeg, dan komt er geen bestand; dat is\n"
          "geen fout. Het programma mag intussen niet op dezelfde programmamap lopen.\n"
          "Is het bestand van een onderbroken export weg, dan gebeurt er niets tot u zegt wat ermee gebeurde:\n"
          "--bestand-verwerkt NAAM of --bestand-niet-verwerkt NAAM, met de naam die de melding noemt."_s,
      .examples = {u"export /tmp/proef --vorige-verwerkt"_s}};
}
