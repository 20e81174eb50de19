#include "media/FilePresence.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent>

using namespace Qt::StringLiterals;
using runtime::Presence;

Presence LookFor(const QString& path) {
  QEventLoop loop;
  QFutureWatcher<Presence> watcher;
  QObject::connect(&watcher, &QFutureWatcher<Presence>::finished, &loop, &QEventLoop::quit);
  watcher.setFuture(QtConcurrent::run([path] { return runtime::Probe(path); }));
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  return watcher.result();
}

void RequirePresent(const QString& path, Presence presence) {
  if (presence == Presence::There) return;
  if (presence == Presence::NotThere) throw runtime::Error(u"Het geluidsbestand '%1' bestaat niet."_s.arg(path));
  runtime::HostRoot(path);  // its own error tells a drive that is not mapped
  throw runtime::Error(
      u"Het geluidsbestand '%1' is niet bereikbaar: de schijf of netwerkmap antwoordt niet."_s.arg(path));
}
