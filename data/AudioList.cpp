#include "data/AudioList.h"

#include "data/Globals.h"
#include "platform/runtime/TextFile.h"

using namespace Qt::StringLiterals;

void AppendToAudioList(const QString& path) {
  runtime::AppendLine(global.exportPath + u"\\Audio.tae"_s, path);
}
