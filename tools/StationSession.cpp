// SPDX-License-Identifier: MIT
#include "tools/StationSession.h"

#include "data/DatabasePaths.h"
#include "data/Globals.h"
#include "data/Lookups.h"
#include "data/Settings.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

StationSession::StationSession(const Arguments& arguments, std::ostream& err, const SessionAnswer& answer)
    : messages_([&err, answer](const QString& text, int style, const QString&) {
        const bool isQuestion = runtime::IsQuestion(style);
        const bool isTheOne = isQuestion && text == answer.question;
        if (isTheOne && answer.given) return runtime::kAnswerYes;
        err << text.toStdString() << '\n';
        if (isTheOne) throw runtime::Error(u"Antwoord ja met de optie %1."_s.arg(answer.option));
        if (isQuestion) throw runtime::Error(u"Deze vraag kan alleen in het programma beantwoord worden."_s);
        return runtime::kAnswerOk;
      }) {
  const qint16 number = arguments.Station();
  const QString folder = QFileInfo(arguments.Plain().first()).absoluteFilePath();
  if (!runtime::IsThere(folder + u"/ovalis.ini"_s)) {
    throw runtime::Error(u"'%1' is geen programmamap: er staat geen ovalis.ini in."_s.arg(folder));
  }
  global = Globals();
  runtime::SetDrives({});
  global.programFolder = runtime::PathText(folder);
  GetSettings();
  global.stationNumber = number;
  FormDatabasePaths();
  if (!runtime::IsThere(global.localDatabasePath)) {
    throw runtime::Error(
        u"De zender %1 bestaat hier niet: '%2' ontbreekt."_s.arg(QString::number(number), global.localDatabasePath));
  }
  SetRadioNaam();
  SetOnlineYn();
}

StationSession::~StationSession() {
  global = Globals();
  runtime::SetDrives({});
}
