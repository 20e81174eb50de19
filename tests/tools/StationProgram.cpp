// SPDX-License-Identifier: MIT
#include "tests/tools/StationProgram.h"

#include "data/Catalogue.h"
#include "platform/audio/Synth.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <stdexcept>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

constexpr char kSettings[] =
    "[Files]\r\nDatabasePath=D:\\server\r\nExportPath=D:\\export\r\n"
    "[Audio Players]\r\nCard=-1\r\nBuffers=20\r\nBuffer_Size=2048\r\nCallback=0\r\n"
    "[Drives]\r\nD=.\r\n";

}  // namespace

StationProgram::StationProgram(Station::Mode mode) : station_(mode) {
  runtime::WriteFile(runtime::PathText(At(u"ovalis.ini"_s)), kSettings);
  const bool online = mode == Station::Mode::Online;
  station_.OnLocal(u"UPDATE cdeInstellingen SET InitValue = \"%1\""_s.arg(online ? u"-1"_s : u"0"_s));
}

QString StationProgram::Table() const {
  return CurrentCatalogue().itemSpots;
}

ToolRun StationProgram::Run(const QString& command, const QStringList& words) const {
  QProcess program;
  program.start(QStringLiteral(SPOTROOSTER_DB), QStringList{command, Folder()} + words);
  if (!program.waitForFinished(-1)) throw std::runtime_error(program.errorString().toStdString());
  if (program.exitStatus() != QProcess::NormalExit) throw std::runtime_error("spotrooster-db crashed");
  return {program.exitCode(), program.readAllStandardOutput().toStdString(),
          program.readAllStandardError().toStdString()};
}

QString StationProgram::MakeSound(const QString& name, double seconds) const {
  QString path = At(name);
  if (!QDir().mkpath(QFileInfo(path).path())) throw std::runtime_error("no folder for " + path.toStdString());
  audio::ToneOptions options;
  options.seconds = seconds;
  options.sampleRate = 8000;
  audio::WriteToneFile(path.toStdString(), options);
  return path;
}
