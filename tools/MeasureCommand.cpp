// SPDX-License-Identifier: MIT
#include "platform/audio/Error.h"
#include "platform/audio/Measure.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tools/Commands.h"

using namespace Qt::StringLiterals;

namespace {

int Measure(const Arguments& arguments, const Streams& streams) {
  int result = kDone;
  for (const QString& path : arguments.Plain()) {
    try {
      const auto milliseconds = audio::MeasureMs(runtime::HostPath(path).toStdString());
      streams.out << path.toStdString() << '\t' << milliseconds << '\n';
    } catch (const audio::Error& error) {
      streams.err << error.what() << '\n';
      result = kFailed;
    } catch (const runtime::Error& error) {
      streams.err << error.what() << '\n';
      result = kFailed;
    }
  }
  return result;
}

}  // namespace

Command MeasureCommand() {
  return {
      .name = u"measure"_s,
      .usage = u"BESTAND..."_s,
      .summary = u"Toont de juiste lengte van geluidsbestanden in milliseconden."_s,
      .run = Measure,
      .details = u"Per bestand een regel: pad, tab, lengte. Wat niet te meten is, wordt genoemd en geeft exitcode 1."_s,
      .examples = {u"measure /tmp/proef/audio/Spots/*.mp3 /tmp/proef/audio/Jingles/*.wav"_s}};
}
