#include "app/FirstStart.h"

#include "app/frmEersteStart.h"
#include "data/Globals.h"
#include "platform/runtime/HostPath.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

bool IsFirstStart() {
  const QString folder = runtime::HostPath(global.programFolder);
  const QStringList databases = QDir(folder + u"/data"_s).entryList({u"OvalistoLocal*.mdb"_s}, QDir::Files);
  return databases.isEmpty() && !QFile::exists(folder + u"/ovalis.ini"_s);
}

bool OfferFirstStation(QWidget* owner) {
  frmEersteStart offer(owner);
  offer.ShowModal();
  return offer.Made();
}
