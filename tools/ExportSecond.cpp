#include "tools/ExportSecond.h"

#include "data/Text.h"
#include "export/ExportContent.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Probe.h"

#include <thread>

namespace {

QString NameOfNow() {
  return ExportContent::FileName(runtime::Now());
}

void SleepToNextSecond(const Sleep& sleep) {
  sleep(std::chrono::milliseconds(1000 - runtime::Now().time().msec()));
}

}  // namespace

void SleepFor(std::chrono::milliseconds time) {
  std::this_thread::sleep_for(time);
}

void WaitForFreeSecond(const QString& folder, const Sleep& sleep) {
  while (runtime::Probe(folder + u'\\' + NameOfNow()) == runtime::Presence::There)
    SleepToNextSecond(sleep);
}

void WaitOutSecond(const QString& path, const Sleep& sleep) {
  while (NameOfNow() == GetFile(path))
    SleepToNextSecond(sleep);
}
