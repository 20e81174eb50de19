// SPDX-License-Identifier: MIT
#include "media/FilePresence.h"

#include "platform/desktop/Background.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

using namespace Qt::StringLiterals;
using runtime::Presence;

Presence LookFor(const QString& path) {
  return desktop::InBackground([path] { return runtime::Probe(path); });
}

void RequirePresent(const QString& path, Presence presence) {
  if (presence == Presence::There) return;
  if (presence == Presence::NotThere) throw runtime::Error(u"Het geluidsbestand '%1' bestaat niet."_s.arg(path));
  if (presence == Presence::Denied) {
    throw runtime::Error(u"Het geluidsbestand '%1' is niet toegankelijk: toegang geweigerd."_s.arg(path));
  }
  runtime::HostRoot(path);  // throws for an unmapped drive
  throw runtime::Error(
      u"Het geluidsbestand '%1' is niet bereikbaar: de schijf of netwerkmap antwoordt niet."_s.arg(path));
}
