// SPDX-License-Identifier: MIT
#include "data/AudioList.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "data/Text.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

using namespace Qt::StringLiterals;

namespace {

// Reports a missing folder as such, instead of a failure to write the list in it.
void RequireExportFolder(const QString& list) {
  if (IsKull(global.exportPath)) {
    throw runtime::Error(
        u"Er is geen exportmap ingesteld, dus kan Audio.tae niet aangevuld worden. Vul ExportPath in "
        u"bij [Files] in ovalis.ini."_s);
  }
  switch (runtime::Probe(global.exportPath)) {
    case runtime::Presence::NotReachable:
      throw runtime::Error(u"Kan '%1' niet aanvullen: de schijf of netwerkmap is niet bereikbaar."_s.arg(list));
    case runtime::Presence::NotThere:
      throw runtime::Error(
          u"De exportmap '%1' bestaat niet, dus kan Audio.tae niet aangevuld worden. Maak de map, of "
          u"wijzig ExportPath in ovalis.ini."_s.arg(global.exportPath));
    default:
      break;
  }
}

}  // namespace

void AppendToAudioList(const QString& path) {
  const QString list = global.exportPath + u"\\Audio.tae"_s;
  RequireExportFolder(list);
  runtime::AppendLine(list, path);
  QByteArray written;
  if (runtime::AppendCodePage(path, written)) return;
  ShowItemsMessage(
      u"In '%1' zijn tekens die het bestand niet kan bevatten vervangen door een vraagteken, in:\n\n%2"_s.arg(list,
                                                                                                              path),
      kStyleExclamation);
}
