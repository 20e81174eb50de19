// SPDX-License-Identifier: MIT
// Starting the program, from the call to its windows on an X display without screen (Xvfb): the station window, and
// from its closing the main window, with 0, 10 000 and 100 000 item-spots in the catalogue. Compared with sqlitebrowser
// opening the same rows, up to its window. Elapsed time, median of the rounds. usage: StartBench [PROGRAM]
#include "bench/Figures.h"
#include "bench/Plain.h"
#include "bench/SpotStation.h"
#include "bench/XWindows.h"
#include "data/Globals.h"
#include "data/Schema.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <sys/prctl.h>

#include <csignal>
#include <cstdio>
#include <vector>

using namespace Qt::StringLiterals;
using bench::Median;
using bench::Require;
using bench::XWindows;

namespace {

constexpr int kRounds = 5;
constexpr int kEndMs = 10000;

// Ends with this process, also when that ends early.
void EndWithUs(QProcess& process) {
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

// An X server that ends with this object.
class Display {
 public:
  Display() {
    server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    EndWithUs(server_);
    server_.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1920x1200x24"_s, u"-noreset"_s,
                              u"-nolisten"_s, u"tcp"_s});
    Require(server_.waitForReadyRead(kEndMs), "Xvfb starts");
    name_ = u':' + QString::fromLatin1(server_.readLine().trimmed());
  }
  ~Display() {
    server_.terminate();
    server_.waitForFinished(kEndMs);
  }
  const QString& Name() const { return name_; }

 private:
  QProcess server_;
  QString name_;
};

// A program on that display; ends with this object.
class Program {
 public:
  Program(const QString& display, const QString& home, const QString& path, const QStringList& words) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, display);
    environment.insert(u"HOME"_s, home);
    environment.remove(u"XDG_CONFIG_HOME"_s);
    environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    EndWithUs(process_);
    process_.start(path, words);
  }
  ~Program() {
    process_.kill();
    process_.waitForFinished(kEndMs);
  }

 private:
  QProcess process_;
};

struct Start {
  double station = 0;  // ms
  double main = 0;
};

double Ms(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

Start StartOurs(const Display& display, const QString& program, const QString& folder) {
  XWindows windows(display.Name());
  Start start;
  QElapsedTimer timer;
  timer.start();
  const Program running(display.Name(), folder, program, {u"--folder"_s, folder});
  const xcb_window_t station = windows.WaitFor(u"Spotrooster"_s);
  start.station = Ms(timer);
  timer.restart();
  windows.Close(station);
  windows.WaitFor(u"Spotrooster "_s);
  start.main = Ms(timer);
  return start;
}

double StartBrowser(const Display& display, const QString& folder, const QString& file) {
  XWindows windows(display.Name());
  QElapsedTimer timer;
  timer.start();
  const Program running(display.Name(), folder, u"sqlitebrowser"_s, {u"-t"_s, u"tblItemSpots"_s, file});
  windows.WaitFor(u"DB Browser for SQLite"_s);
  return Ms(timer);
}

void WriteSettings(const bench::SpotStation& station) {
  QFile file(station.File(u"ovalis.ini"_s));
  Require(file.open(QIODevice::WriteOnly), "write the settings");
  file.write("[Files]\nDatabasePath=" + global.databasePath.toLatin1() + "\nExportPath=" +
             global.databasePath.toLatin1() + "\n[Audio Players]\nCard=-1\nBuffers=20\nBuffer_Size=2048\nCallback=0\n");
  schema::AddStation(global.localDatabasePath, 0, u"Radio Proef"_s);
}

void FillPlain(const bench::SpotStation& station, const QString& path) {
  bench::Plain plain(path);
  plain.Run(
      "CREATE TABLE tblItemSpots (ID INTEGER PRIMARY KEY, Path TEXT, Naam TEXT, LengteSec INTEGER, Aktief INTEGER)");
  plain.Run("BEGIN");
  for (const auto& spot : station.Spots()) {
    plain.Run(u"INSERT INTO tblItemSpots VALUES (%1, 'Z:\\a.wav', '%2', 30, 1)"_s
                  .arg(QString::number(spot.itemData), spot.text)
                  .toUtf8());
  }
  plain.Run("COMMIT");
}

void Bench(const Display& display, const QString& program, int rows) {
  const bench::SpotStation station(rows);
  const QString folder = station.Folder();
  WriteSettings(station);
  const QString plain = station.File(u"plain.sqlite"_s);
  FillPlain(station, plain);
  const bool beside = !QStandardPaths::findExecutable(u"sqlitebrowser"_s).isEmpty();
  std::vector<double> stations;
  std::vector<double> mains;
  std::vector<double> browsers;
  for (int round = 0; round < kRounds; ++round) {
    const Start start = StartOurs(display, program, folder);
    stations.push_back(start.station);
    mains.push_back(start.main);
    if (beside) browsers.push_back(StartBrowser(display, folder, plain));
  }
  const double first = Median(stations);
  std::printf("%6d item-spots: station's window %7.1f ms, then main window %7.1f ms", rows, first, Median(mains));
  if (beside) {
    const double browser = Median(browsers);
    std::printf("; sqlitebrowser %7.1f ms: ratio %.2f (first), %.2f (both)", browser, first / browser,
                (first + Median(mains)) / browser);
    bench::ReportTimes("start-" + std::to_string(rows), first + Median(mains), "sqlitebrowser", browser);
  }
  std::printf("\n");
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const QString program =
      argc > 1 ? QString::fromLocal8Bit(argv[1]) : QCoreApplication::applicationDirPath() + u"/../spotrooster"_s;
  if (QStandardPaths::findExecutable(u"Xvfb"_s).isEmpty()) {
    std::printf("no Xvfb here: not measured\n");
    return 0;
  }
  const Display display;
  for (const int rows : {0, 10000, 100000})
    Bench(display, program, rows);
  return 0;
}
