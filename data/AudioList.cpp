#include "data/AudioList.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/runtime/CodePage.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Probe.h"
#include "platform/runtime/TextFile.h"

using namespace Qt::StringLiterals;

void AppendToAudioList(const QString& path) {
  const QString list = global.exportPath + u"\\Audio.tae"_s;
  if (runtime::Probe(global.exportPath) == runtime::Presence::NotReachable) {
    throw runtime::Error(u"Kan '%1' niet aanvullen: de schijf of netwerkmap is niet bereikbaar."_s.arg(list));
  }
  runtime::AppendLine(list, path);
  QByteArray written;
  if (runtime::AppendCodePage(path, written)) return;
  ShowItemsMessage(
      u"In '%1' zijn tekens die het bestand niet kan bevatten vervangen door een vraagteken, in:\n\n%2"_s.arg(list,
                                                                                                              path),
      kStyleExclamation);
}
