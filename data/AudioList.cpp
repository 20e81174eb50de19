#include "data/AudioList.h"

#include "data/Globals.h"
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
}
