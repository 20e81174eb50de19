// SPDX-License-Identifier: MIT
#include "data/stations/DemoStation.h"
#include "tools/Commands.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

int MakeDemo(const Arguments& arguments, const Streams& streams) {
  const QString folder = QFileInfo(arguments.Plain().first()).absoluteFilePath();
  MakeDemoStation(folder);
  streams.out << folder.toStdString() << '\n';
  return kDone;
}

}  // namespace

Command DemoCommand() {
  return {.name = u"demo"_s,
          .usage = u"MAP"_s,
          .summary = u"Maakt een gevulde zender om te proberen, met geluidsbestanden."_s,
          .run = MakeDemo,
          .examples = {u"demo /tmp/proef"_s}};
}
