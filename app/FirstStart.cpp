// SPDX-License-Identifier: MIT
#include "app/FirstStart.h"

#include "app/frmEersteStart.h"
#include "data/Globals.h"
#include "export/StationMemory.h"
#include "platform/files/Error.h"
#include "platform/files/FileSystem.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::Presence;
using runtime::Probe;

namespace {

// The lock of the running program is made before the first station.
bool HasOnlyTheLock(const QString& folder) {
  try {
    const auto names = files::CurrentFileSystem().NamesIn(runtime::NativePath(runtime::HostPath(folder)));
    return std::all_of(names.begin(), names.end(), [](const auto& name) { return name == "spotrooster.lock"; });
  } catch (const files::Error&) {
    return false;
  }
}

}  // namespace

bool IsFirstStart() {
  const QString data = global.programFolder + u"\\data"_s;
  if (Probe(global.programFolder) != Presence::There) return false;
  if (Probe(global.programFolder + u"\\ovalis.ini"_s) != Presence::NotThere) return false;
  const Presence presence = Probe(data);
  return presence == Presence::NotThere || (presence == Presence::There && HasOnlyTheLock(data));
}

bool OfferFirstStation(QWidget* owner) {
  frmEersteStart offer(owner);
  offer.ShowModal();
  if (offer.Made()) StationMemory::Chosen(0);
  return offer.Made();
}
