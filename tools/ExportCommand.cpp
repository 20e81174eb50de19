#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "export/ExportChecks.h"
#include "export/InterruptedExport.h"
#include "export/OfflineLogExport.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "tools/Commands.h"
#include "tools/ExportSecond.h"
#include "tools/StationSession.h"

using namespace Qt::StringLiterals;

namespace {

const QString kProcessed = u"--vorige-verwerkt"_s;

// The steps of the export window, in their order.
int Export(const Arguments& arguments, const Streams& streams) {
  const StationSession station(arguments, streams.err,
                               {kProcessed, arguments.Has(kProcessed) ? runtime::kAnswerYes : 0});
  const ProgramLock lock(global.programFolder + u"\\data"_s);
  const QString folder = runtime::TrimBlanks(global.exportPath);
  if (!MayExport(folder)) return kFailed;
  FinishInterruptedExport(global.localDatabasePath);
  OfflineLogExport logExport(global.localDatabasePath);
  WaitForFreeSecond(folder);
  const QString path = logExport.WriteFile(folder);
  logExport.EmptyLog();
  if (path.isEmpty()) return kDone;
  if (logExport.Altered().count > 0) streams.err << AlteredWarning(logExport.Altered(), path).toStdString() << '\n';
  streams.out << runtime::HostPath(path).toStdString() << '\n';
  WaitOutSecond(path);
  return kDone;
}

}  // namespace

Command ExportCommand() {
  return {
      .name = u"export"_s,
      .usage = u"MAP [--vorige-verwerkt] [--station N]"_s,
      .summary = u"Exporteert het offline-logboek van een zender en toont het pad van het bestand."_s,
      .run = Export,
      .details =
          u"Doet wat het venster Exporteren doet. Wie offline werkt, zegt met --vorige-verwerkt dat de vorige\n"
          "exportbestanden met Kadrovia verwerkt zijn; anders komt er geen export. Elke export krijgt een seconde\n"
          "voor zich, zodat geen bestand een ander vervangt. Is het logboek leeg, dan komt er geen bestand; dat is\n"
          "geen fout. Het programma mag intussen niet op dezelfde programmamap lopen."_s,
      .examples = {u"export /tmp/proef --vorige-verwerkt"_s}};
}
