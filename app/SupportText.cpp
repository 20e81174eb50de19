// SPDX-License-Identifier: MIT
#include "app/SupportText.h"

#include "app/Version.h"
#include "data/Globals.h"
#include "platform/desktop/ErrorHistory.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"

#include <QSysInfo>

using namespace Qt::StringLiterals;
using desktop::WithoutPasswords;

namespace {

const QString kTimeFormat = u"dd-MM-yyyy HH:mm:ss"_s;

QString Station() {
  const QString name = global.stationName.isEmpty() ? u"geen"_s : global.stationName;
  return global.stationNumber == 0 ? name : u"%1 (zender %2)"_s.arg(name).arg(global.stationNumber);
}

QString ErrorList() {
  const auto& errors = desktop::RecentErrors();
  if (errors.isEmpty()) return u"Geen fouten sinds de start.\n"_s;
  QString text = u"Fouten sinds de start, de laatste %1:\n"_s.arg(errors.size());
  for (const auto& error : errors) {
    QString description = error.text;
    description.replace(u"\r\n"_s, u"\n"_s).replace(u"\n"_s, u"\n    "_s);
    text += u"\n%1  %2\n    %3\n"_s.arg(error.time.toString(kTimeFormat), error.title, description);
  }
  return text;
}

}  // namespace

QString InstallationText() {
  const QStringList lines{VersionText(),
                          u"Programmamap: %1"_s.arg(runtime::HostPath(global.programFolder)),
                          u"Zender: %1, %2"_s.arg(Station(), global.online ? u"online"_s : u"offline"_s),
                          u"Lokale database: %1"_s.arg(global.localDatabasePath),
                          u"Gedeelde database: %1"_s.arg(global.serverDatabasePath),
                          u"Werkdatabase: %1"_s.arg(global.workDatabasePath)};
  return WithoutPasswords(lines.join(u'\n'));
}

QString SupportText() {
  const QString head = u"Spotrooster, %1\n%2\nSysteem: %3, Qt %4\n\n"_s.arg(
      runtime::Now().toString(kTimeFormat), InstallationText(), QSysInfo::prettyProductName(),
      QString::fromLatin1(qVersion()));
  return WithoutPasswords(head + ErrorList());
}
