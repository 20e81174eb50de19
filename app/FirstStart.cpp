// SPDX-License-Identifier: MIT
#include "app/FirstStart.h"

#include "app/frmEersteStart.h"
#include "data/Globals.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <QDir>

using namespace Qt::StringLiterals;

bool IsFirstStart() {
  // A folder that cannot be read is not considered empty.
  if (runtime::Probe(global.programFolder + u"\\ovalis.ini"_s) != runtime::Presence::NotThere) return false;
  const QDir data(runtime::HostPath(global.programFolder + u"\\data"_s));
  return data.entryList({u"OvalistoLocal*.mdb"_s}, QDir::Files).isEmpty();
}

bool OfferFirstStation(QWidget* owner) {
  frmEersteStart offer(owner);
  offer.ShowModal();
  return offer.Made();
}
